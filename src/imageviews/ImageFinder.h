// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "files/ByteBuffer.h"
#include "grid/GridMarks.h"
#include "imageviews/FindWords.h"
#include "inspect/HitIndex.h"

#include <QObject>
#include <QTimer>

#include <functional>
#include <optional>

class GridView;

/// Searches the image that the grid shows. Hits are marked as soon as they are in view; they are
/// counted in turns of the event loop, which hold nobody up, however long the image is. The count
/// follows the edits of the image, and begins anew when another one is shown.
class ImageFinder final : public QObject, public GridMarks {
    Q_OBJECT

public:
    /// Gives the image that the grid shows at the moment of the call, when it shows bytes.
    using Source = std::function<ByteBuffer()>;
    enum class Direction { Next, Previous };

    explicit ImageFinder(QObject *parent = nullptr);

    /// From now on searches what \a shown gives, and marks it in \a grid, which has its source.
    /// Both must last as long as the window's event loop.
    void follow(GridView &grid, Source shown);

    /// Counts from the beginning: another image is shown.
    void beginAnew();
    /// Counts the bytes of \a changed anew, which were edited.
    void forget(ByteRange changed);

    /// Searches for \a pattern; an empty one ends the search and takes the marks away.
    void setPattern(const BytePattern &pattern);
    /// Moves the grid's cursor to the nearest hit in \a direction, from the other end on if there
    /// is none; at once where that part of the image has been searched, else as soon as it has.
    void step(Direction direction);

    FindState state() const;

    ByteMark markAt(qint64 offset) const override;
    QString wordsAt(qint64 offset) const override;

signals:
    /// state() may be another one.
    void changed();
    /// A step has come to its end, at a hit or not.
    void stepped();

private:
    struct Step {
        HitAnswer answer;
        FindState::Wrap wrap = FindState::Wrap::None;
    };

    ByteBuffer bytes() const;
    std::optional<qint64> cursor() const;
    qint64 startOfCursorRow() const;
    void lookOn();
    void turn();
    void takeStep(QByteArrayView image);
    Step lookForNext(QByteArrayView image) const;
    Step lookForPrevious(QByteArrayView image) const;

    Source shown_;
    GridView *grid_ = nullptr;
    QTimer turns_;
    HitIndex index_;
    std::optional<Direction> wanted_;
    FindState::Wrap wrap_ = FindState::Wrap::None;
    qint64 wrappedTo_ = 0; ///< the hit at which wrap_ holds
};

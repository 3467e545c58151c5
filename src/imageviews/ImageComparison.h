// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "files/ByteBuffer.h"
#include "grid/GridMarks.h"
#include "grid/ShownTab.h"
#include "imageviews/KnownImage.h"
#include "inspect/ImageDifferences.h"

#include <QObject>
#include <QTimer>

#include <functional>
#include <optional>

/// The two images of the window, and which of them is shown.
struct ComparedImages {
    ByteBuffer read;      ///< the data read from the chip; may be null
    ByteBuffer toBurn;    ///< may be null
    quint64 revision = 0; ///< of the data to burn: other numbers for other bytes in one buffer
    ShownTab shown = ShownTab::None;
};

/// Compares the data read with the data to burn in turns of the event loop, and marks the bytes
/// of the one that is shown where the other one differs. A byte that only one has is not marked.
/// It keeps no image alive.
class ImageComparison final : public QObject, public GridMarks {
    Q_OBJECT

public:
    /// Gives the images as they are at the moment of the call.
    using Source = std::function<ComparedImages()>;

    explicit ImageComparison(Source source, QObject *parent = nullptr);

    /// Looks at the images anew, and compares them if one of them has changed.
    void refresh();

    /// True if the grid shows one of the images.
    bool isShown() const { return showsImage(shown_); }
    /// True if both images have bytes.
    bool hasBoth() const;
    /// How they differ; nothing until it is known, or if one of them has no bytes.
    std::optional<ImageDifferences> differences() const;
    /// How many bytes more the shown image has than the other; less than 0 if fewer.
    qint64 extraBytes() const;
    /// True if every byte to burn has one of the data read to be compared with.
    bool coversAllToBurn() const;
    /// Where they differ, as far as it is known.
    const ImageDifferencesReader &blocks() const { return reader_; }

    /// Marks the same bytes in the image that the tab does not show.
    const GridMarks &marksBeside() const { return beside_; }

    /// The place of differing bytes that follows \a offset, or precedes it; nothing if there is
    /// none. Once the images have been compared no look is taken at what is the same. nextFrom(-1)
    /// gives the first, previousFrom() the length of an image the last.
    std::optional<qint64> nextFrom(qint64 offset) const;
    std::optional<qint64> previousFrom(qint64 offset) const;

    ByteMark markAt(qint64 offset) const override;
    QString wordsAt(qint64 offset) const override;

signals:
    /// The images, or what is known about them, have changed.
    void changed();

private:
    void turn();
    bool isTheSame(const ComparedImages &images) const;
    /// The bytes of both images at one offset, where they differ.
    struct Pair {
        quint8 read = 0;
        quint8 toBurn = 0;
    };
    std::optional<Pair> pairAt(qint64 offset) const;
    static QString words(const Pair &pair, bool ofRead);

    /// What is said of the image that is not shown.
    class Beside final : public GridMarks {
    public:
        explicit Beside(const ImageComparison &comparison) : comparison_(comparison) {}
        ByteMark markAt(qint64 offset) const override { return comparison_.markAt(offset); }
        QString wordsAt(qint64 offset) const override;

    private:
        const ImageComparison &comparison_;
    };

    const Beside beside_{*this};

    Source source_;
    KnownImage read_;
    KnownImage toBurn_;
    ShownTab shown_ = ShownTab::None;
    ImageDifferencesReader reader_;
    bool isDone_ = false;
    QTimer turns_;
};

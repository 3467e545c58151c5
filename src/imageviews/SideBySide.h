// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "imageviews/KnownImage.h"
#include "imageviews/ReadOnlyImage.h"

#include <QAction>
#include <QObject>

#include <functional>
#include <optional>

class GridView;
class QLabel;
class QModelIndex;

/// Shows the other image beside the one that the tab shows, wherever the window has room for both
/// whole. They scroll together, and the cursor of one is the cursor of the other.
class SideBySide final : public QObject {
    Q_OBJECT

public:
    /// The image that the tab does not show.
    struct OtherImage {
        ByteBuffer bytes;
        quint64 revision = 0; ///< other numbers for other bytes in one buffer
        QString title;        ///< what it is, in words
    };
    /// Gives it; nothing if there is nothing to be seen beside the tab.
    using Source = std::function<std::optional<OtherImage>()>;

    /// What shows both; all must outlive it.
    struct Views {
        GridView &grid;   ///< of the tab
        GridView &beside; ///< in the same layout; nobody else gives it contents
        QLabel &heading;  ///< of the other image
    };

    SideBySide(const Views &views, Source source, QObject *parent = nullptr);

    /// Checkable, on at first: the other image is shown where there is room.
    QAction *action() { return &action_; }
    /// Looks at the images anew.
    void refresh();

    /// Follows the room that there is.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void followScrolling();
    void followCursor();
    void take(const OtherImage &other);
    bool hasRoom() const;
    void alignHeading();
    /// Does \a work on one view unless it is the answer to such work on the other.
    void lead(const std::function<void()> &work);

    Views views_;
    Source source_;
    QAction action_;
    ReadOnlyImage image_;
    KnownImage known_;
    bool leading_ = false;
};

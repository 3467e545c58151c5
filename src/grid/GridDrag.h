// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QPoint>
#include <QTimer>

class GridSelection;
class GridView;
class QMouseEvent;

/// Selects bytes of a grid with the mouse: a drag over bytes or their characters, which goes on
/// beyond the edge by scrolling, and a click with the shift key. A drag over addresses is the
/// view's own, and selects rows.
class GridDrag final : public QObject {
    Q_OBJECT

public:
    /// Follows the mouse over \a view, which this belongs to as \a selection does.
    GridDrag(GridView &view, GridSelection &selection);

    /// The byte at \a point of the viewport, or the one nearest to it among the rows in view; there
    /// may be none at this offset.
    qint64 byteAt(const QPoint &point) const;

protected:
    bool eventFilter(QObject *viewport, QEvent *event) override;

private:
    bool isOnBytes(const QPoint &point) const;
    bool press(const QMouseEvent &event);
    bool move(const QMouseEvent &event);
    void release();
    void extend();
    void scroll();

    GridView &view_;
    GridSelection &selection_;
    QTimer scrolling_;
    bool dragging_ = false;
    qint64 origin_ = 0; ///< the byte at which the button went down
    QPoint pointer_;
};

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "grid/GridDrag.h"

#include "grid/CharacterPlaces.h"
#include "grid/GridColumns.h"
#include "grid/GridSelection.h"
#include "grid/GridView.h"

#include <QGuiApplication>
#include <QHeaderView>
#include <QMouseEvent>
#include <QScrollBar>

#include <algorithm>
#include <chrono>
#include <utility>

namespace {

constexpr std::chrono::milliseconds scrollInterval{40};

/// How far \a at lies outside of 0 to \a size: negative before, 0 within.
int beyond(int at, int size) {
    return at < 0 ? at : std::max(0, at - size + 1);
}

} // namespace

GridDrag::GridDrag(GridView &view, GridSelection &selection)
    : QObject(&view), view_(view), selection_(selection) {
    scrolling_.setInterval(scrollInterval);
    connect(&scrolling_, &QTimer::timeout, this, &GridDrag::scroll);
    view.viewport()->installEventFilter(this);
}

qint64 GridDrag::byteAt(const QPoint &point) const {
    const QRect room = view_.viewport()->rect();
    const int y = std::clamp(point.y(), room.top(), room.bottom());
    const qint64 row = std::min<qint64>(view_.shownRows().at(y), view_.gridModel()->rowCount() - 1);
    const QHeaderView &header = *view_.header();
    const int x = point.x() + header.offset();
    const int characters = header.sectionPosition(charactersColumn);
    if (x >= characters)
        return row * bytesInRow + CharacterPlaces(view_.font()).placeAt(x - characters);
    const int column = x < 0 ? addressColumn : header.logicalIndexAt(point.x());
    return qint64(byteIndex(row, std::max(column, firstByteColumn)));
}

// An address is no byte, nor is what is beside the columns and below the rows.
bool GridDrag::isOnBytes(const QPoint &point) const {
    const QModelIndex cell = view_.indexAt(point);
    const GridModel *model = view_.gridModel();
    return cell.isValid() && cell.column() != addressColumn &&
           model->heading() == GridHeading::Bytes && model->byteCount() > 0;
}

bool GridDrag::eventFilter(QObject *viewport, QEvent *event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        return press(*static_cast<QMouseEvent *>(event));
    case QEvent::MouseMove:
        return move(*static_cast<QMouseEvent *>(event));
    case QEvent::MouseButtonRelease:
        release();
        break;
    default:
        break;
    }
    return QObject::eventFilter(viewport, event);
}

bool GridDrag::press(const QMouseEvent &event) {
    dragging_ = false;
    scrolling_.stop();
    pointer_ = event.position().toPoint();
    if (!isOnBytes(pointer_))
        return false;
    const qint64 byte = byteAt(pointer_);
    if (event.button() == Qt::RightButton) {
        // What the menu then does is meant for the block.
        const ByteRange block = selection_.bytes();
        return selection_.hasBlock() && byte >= block.offset && byte < block.end();
    }
    const bool extends = event.modifiers() == Qt::ShiftModifier;
    if (event.button() != Qt::LeftButton || (event.modifiers() != Qt::NoModifier && !extends))
        return false;
    dragging_ = true;
    origin_ = extends ? selection_.block().anchor : byte;
    if (extends)
        extend();
    return extends;
}

bool GridDrag::move(const QMouseEvent &event) {
    if (!dragging_ || view_.entries().editor())
        return false;
    if (!event.buttons().testFlag(Qt::LeftButton)) {
        release();
        return false;
    }
    pointer_ = event.position().toPoint();
    extend();
    if (view_.viewport()->rect().contains(pointer_))
        scrolling_.stop();
    else if (!scrolling_.isActive())
        scrolling_.start();
    return true;
}

void GridDrag::release() {
    scrolling_.stop();
    // A click on a character is where the next block begins, though its cell stands for sixteen.
    if (std::exchange(dragging_, false) && !selection_.hasBlock())
        selection_.beginAt(origin_);
}

void GridDrag::extend() {
    const qint64 byte = byteAt(pointer_);
    if (!selection_.hasBlock() && byte == origin_)
        return;
    // The view must not scroll by itself: scroll() does, and only beyond the edge.
    view_.setAutoScroll(false);
    selection_.extend(origin_, byte);
    view_.setAutoScroll(true);
}

void GridDrag::scroll() {
    // The release may have gone elsewhere, as where another window came up.
    if (!QGuiApplication::mouseButtons().testFlag(Qt::LeftButton))
        return release();
    const QSize room = view_.viewport()->size();
    const int rows = beyond(pointer_.y(), room.height());
    const int pixels = beyond(pointer_.x(), room.width());
    const int sign = (rows > 0) - (rows < 0);
    QScrollBar &down = *view_.verticalScrollBar();
    down.setValue(down.value() + rows / view_.rowHeight() + sign);
    view_.horizontalScrollBar()->setValue(view_.horizontalScrollBar()->value() + pixels);
    extend();
}

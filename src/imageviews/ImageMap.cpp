// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "imageviews/ImageMap.h"

#include "base/TurnOfWork.h"
#include "files/ByteBuffer.h"
#include "grid/GridColumns.h"
#include "grid/GridView.h"
#include "imageviews/MapPainting.h"
#include "imageviews/MapWords.h"
#include "widgets/Palette.h"

#include <QByteArrayView>
#include <QCoreApplication>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QToolTip>
#include <QWheelEvent>

#include <algorithm>
#include <utility>

namespace {

/// The width of the strip, in characters.
constexpr int stripCharacters = 3;
/// What the page keys pass over of a large image.
constexpr int pagesInImage = 16;
constexpr int minHeight = 24; // pixels

/// Shows \a widget while there are bytes. Without, its room is kept only where there may be a map.
void showOrKeepRoom(QWidget &widget, bool hasBytes, bool keepsRoom) {
    QSizePolicy policy = widget.sizePolicy();
    if (policy.retainSizeWhenHidden() != keepsRoom) {
        policy.setRetainSizeWhenHidden(keepsRoom);
        widget.setSizePolicy(policy);
    }
    widget.setVisible(hasBytes);
}

} // namespace

ImageMap::ImageMap(QWidget *parent) : QAbstractSlider(parent) {
    setOrientation(Qt::Vertical);
    setInvertedControls(true); // down is on
    setFocusPolicy(Qt::TabFocus);
    QSizePolicy policy(QSizePolicy::Fixed, QSizePolicy::Ignored);
    policy.setRetainSizeWhenHidden(true);
    setSizePolicy(policy);
    hide();
    connect(&turns_, &QTimer::timeout, this, &ImageMap::turn);
    connect(this, &QAbstractSlider::valueChanged, this, &ImageMap::goToValue);
}

void ImageMap::follow(GridView &grid, Source shown) {
    grid_ = &grid;
    shown_ = std::move(shown);
    const QScrollBar *bar = grid.verticalScrollBar();
    connect(bar, &QScrollBar::valueChanged, this, &ImageMap::followScrolling);
    connect(bar, &QScrollBar::rangeChanged, this, &ImageMap::followScrolling);
    refresh();
}

void ImageMap::refresh() {
    if (!turns_.isActive())
        turns_.start(0);
}

void ImageMap::setDiffering(const DifferingBlocks &differing) {
    differing_ = differing;
    showCells();
}

void ImageMap::turn() {
    const std::optional<ShownImage> image = shown_();
    takeImage(image);
    const QByteArrayView bytes = image ? viewOf(image->bytes) : QByteArrayView();
    if (map_.advance(bytes, maxBytesInTurn))
        turns_.stop();
    showOrKeepRoom(*this, !bytes.isEmpty(), image.has_value());
    showCells();
}

// An image with another revision, of which nobody said what changed, is counted anew; until then
// the map stays as it was.
void ImageMap::takeImage(const std::optional<ShownImage> &image) {
    const ShownImage now = image.value_or(ShownImage{});
    const qint64 size = lengthOf(now.bytes);
    if (!known_.isOf(now.bytes))
        map_.begin(size);
    else if (!known_.is(now.bytes, now.revision) || map_.size() != size)
        map_.change(0, size, size);
    known_ = {now.bytes, now.revision};
}

void ImageMap::takeChange(ByteRange changed) {
    const std::optional<ShownImage> image = shown_();
    if (image && known_.isOf(image->bytes)) {
        map_.change(changed.offset, changed.length, lengthOf(image->bytes));
        known_ = {image->bytes, image->revision};
    }
    refresh();
}

void ImageMap::followScrolling() {
    const QScopedValueRollback following(following_, true);
    const QScrollBar &bar = *grid_->verticalScrollBar();
    const int page = bar.pageStep() * bytesInRow;
    const int leap = int(map_.size() / pagesInImage / bytesInRow) * bytesInRow;
    const QRect before = viewFrame();
    setRange(0, bar.maximum() * bytesInRow);
    setSingleStep(page);
    setPageStep(std::max(page, leap));
    setValue(bar.value() * bytesInRow);
    setAccessibleDescription(valueWords());
    update(before);
    update(viewFrame());
}

// What assistive technology and keys ask for: the grid goes on from there.
void ImageMap::goToValue() {
    if (following_)
        return;
    const QModelIndex cell = grid_->model()->index(value() / bytesInRow, firstByteColumn);
    grid_->moveTo(cell);
    grid_->scrollTo(cell, QAbstractItemView::PositionAtTop);
    followScrolling();
}

std::optional<qint64> ImageMap::addressAt(int y) const {
    if (map_.size() == 0)
        return std::nullopt;
    return offsetAt(y - strip().top(), map_.size(), strip().height());
}

void ImageMap::goTo(int y) {
    if (const std::optional<qint64> address = addressAt(y))
        grid_->showAddress(*address / bytesInRow * bytesInRow);
}

void ImageMap::showCells() {
    if (!grid_)
        return;
    cells_ = mapCells(map_, differing_, strip().height());
    followScrolling();
    update();
}

QString ImageMap::valueWords() const {
    if (value() >= map_.size())
        return {};
    return positionWords(value(), map_.size(), blockAt(map_, differing_, value()));
}

QString ImageMap::wordsAt(int y) const {
    const std::optional<qint64> address = addressAt(y);
    if (!address)
        return {};
    const auto cell = std::find_if(cells_.begin(), cells_.end(),
                                   [&](const MapCell &piece) { return *address < piece.end; });
    return cell == cells_.end() ? QString() : cellWords(*cell);
}

// The frame of the view is drawn around the strip, and must find room above it, too.
QRect ImageMap::strip() const {
    const int margin = viewFrameWidth();
    const QRect inner = rect().adjusted(margin, margin, -margin, -margin);
    return {inner.topLeft(), inner.size().expandedTo(QSize(1, 1))};
}

QRect ImageMap::viewFrame() const {
    if (map_.size() == 0)
        return {};
    const int shown = grid_->verticalScrollBar()->pageStep() * bytesInRow;
    const qint64 end = std::min<qint64>(qint64(value()) + shown, map_.size());
    const int top = heightOf(value(), map_.size(), strip().height());
    const int bottom = heightOf(end, map_.size(), strip().height());
    const int outside = viewFrameWidth();
    return {0, strip().top() + top - outside, width(), bottom - top + 2 * outside};
}

QSize ImageMap::sizeHint() const {
    const int letters = stripCharacters * fontMetrics().averageCharWidth();
    return {letters + 2 * viewFrameWidth(), minHeight};
}

QSize ImageMap::minimumSizeHint() const {
    return sizeHint();
}

bool ImageMap::event(QEvent *event) {
    if (event->type() != QEvent::ToolTip)
        return QAbstractSlider::event(event);
    const auto *help = static_cast<QHelpEvent *>(event);
    // Asked for at each height: without a part that it holds for, the tool tip would stay.
    const QRect line(0, help->pos().y(), width(), 1);
    QToolTip::showText(help->globalPos(), wordsAt(help->pos().y()), this, line);
    return true;
}

// The whole would be drawn anew at each step of the grid; followScrolling() has it done for the
// frame alone.
void ImageMap::sliderChange(SliderChange) {}

void ImageMap::paintEvent(QPaintEvent *event) {
    QPainter painter(this);
    const QRect strip = this->strip();
    painter.setBrushOrigin(strip.topLeft());
    for (const MapCell &cell : std::as_const(cells_)) {
        const QRect place(strip.left(), strip.top() + cell.top, strip.width(), cell.height);
        if (place.intersects(event->rect()))
            paintCell(painter, place, cell, palette(), isRightToLeft());
    }
    painter.setPen(hasFocus() ? focusLineColor(palette()) : faintMarkColor(palette()));
    const int lines = hasFocus() ? 2 : 1;
    for (int line = 1; line <= lines; ++line)
        painter.drawRect(strip.adjusted(-line, -line, line - 1, line - 1));
    if (!cells_.isEmpty())
        paintViewFrame(painter, viewFrame(), palette());
}

void ImageMap::resizeEvent(QResizeEvent *event) {
    QAbstractSlider::resizeEvent(event);
    showCells();
}

void ImageMap::changeEvent(QEvent *event) {
    QAbstractSlider::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        updateGeometry();
}

void ImageMap::mousePressEvent(QMouseEvent *event) {
    if (event->button() == Qt::LeftButton)
        goTo(event->position().toPoint().y());
}

void ImageMap::mouseMoveEvent(QMouseEvent *event) {
    if (event->buttons().testFlag(Qt::LeftButton))
        goTo(event->position().toPoint().y());
}

void ImageMap::wheelEvent(QWheelEvent *event) {
    QCoreApplication::sendEvent(grid_->verticalScrollBar(), event);
}

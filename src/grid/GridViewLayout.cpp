// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

// Where the grid's rows and columns lie, and how they scroll.

#include "grid/GridView.h"

#include "grid/GridHeader.h"

#include <QEvent>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>
#include <limits>

namespace {

/// Space above and below the text of a row together, in pixels.
constexpr int rowPadding = 4;

/// Rows that a window of the preferred size shows.
constexpr int preferredRows = 16;

/// The farthest that a position is told from the viewport, with room within an int for adding
/// what a screen measures. With rows of up to 31 pixels all rows of the largest image lie closer.
constexpr qint64 farthest = std::numeric_limits<int>::max() - (1 << 20);

int clamped(qint64 position) {
    return int(std::clamp(position, -farthest, farthest));
}

} // namespace

void GridView::applyFont() {
    rowHeight_ = fontMetrics().height() + rowPadding;
    header_->setCellFont(font());
    updateGeometries();
}

int GridView::sizeHintForColumn(int column) const {
    return header_->neededWidth(column);
}

int GridView::sizeHintForRow(int) const {
    return rowHeight_;
}

QSize GridView::viewportSizeHint() const {
    return {header_->sectionPosition(charactersColumn) + sizeHintForColumn(charactersColumn),
            preferredRows * rowHeight_};
}

QSize GridView::sizeHint() const {
    const QSize chrome(2 * frameWidth() + verticalScrollBar()->sizeHint().width(),
                       2 * frameWidth() + header_->sizeHint().height());
    return viewportSizeHint() + chrome;
}

int GridView::rows() const {
    return model_ ? model_->rowCount() : 0;
}

int GridView::topRow() const {
    return verticalScrollBar()->value();
}

int GridView::rowsInPage() const {
    return std::max(1, viewport()->height() / rowHeight_);
}

qint64 GridView::rowAt(int y) const {
    const int rounding = y < 0 ? rowHeight_ - 1 : 0;
    return topRow() + (qint64(y) - rounding) / rowHeight_;
}

int GridView::rowTop(qint64 row) const {
    return clamped((row - topRow()) * rowHeight_);
}

QRect GridView::visualRect(const QModelIndex &index) const {
    if (!index.isValid() || index.model() != model_)
        return {};
    return {header_->sectionViewportPosition(index.column()), rowTop(index.row()),
            header_->sectionSize(index.column()), rowHeight_};
}

QModelIndex GridView::indexAt(const QPoint &point) const {
    const int column = header_->logicalIndexAt(point.x());
    const qint64 row = rowAt(point.y());
    if (column < 0 || row < 0 || row >= rows())
        return {};
    return model_->index(int(row), column);
}

int GridView::horizontalOffset() const {
    return header_->offset();
}

int GridView::verticalOffset() const {
    return clamped(qint64(topRow()) * rowHeight_);
}

bool GridView::isIndexHidden(const QModelIndex &) const {
    return false;
}

QRegion GridView::visualRegionForSelection(const QItemSelection &selection) const {
    const qint64 firstVisible = topRow();
    const qint64 lastVisible = rowAt(viewport()->height() - 1);
    QRegion region;
    for (const QItemSelectionRange &range : selection) {
        const qint64 first = std::max<qint64>(range.top(), firstVisible);
        const qint64 last = std::min<qint64>(range.bottom(), lastVisible);
        if (first <= last)
            region += QRect(QPoint(0, rowTop(first)),
                            QPoint(viewport()->width() - 1, rowTop(last + 1) - 1));
    }
    return region;
}

void GridView::scrollTo(const QModelIndex &index, ScrollHint hint) {
    if (!index.isValid())
        return;
    scrollToRow(index.row(), hint);
    scrollToColumn(index.column());
}

void GridView::scrollToRow(int row, ScrollHint hint) {
    const int page = rowsInPage();
    const int lowestTop = row - page + 1;
    int top = topRow();
    switch (hint) {
    case EnsureVisible:
        // With no row on top that lies below the wanted one, and none that leaves it beneath.
        top = std::clamp(top, lowestTop, row);
        break;
    case PositionAtTop:
        top = row;
        break;
    case PositionAtBottom:
        top = lowestTop;
        break;
    case PositionAtCenter:
        top = row - page / 2;
        break;
    }
    verticalScrollBar()->setValue(top);
}

void GridView::scrollToColumn(int column) {
    const int left = header_->sectionPosition(column);
    const int right = left + header_->sectionSize(column);
    const int offset = horizontalScrollBar()->value();
    // The left end wins where the viewport is narrower than the column.
    const int atLeast = std::max(offset, right - viewport()->width());
    horizontalScrollBar()->setValue(std::min(atLeast, left));
}

void GridView::updateGeometries() {
    if (layingOut_)
        return;
    const QScopedValueRollback<bool> layingOut(layingOut_, true);
    const int height = header_->sizeHint().height();
    setViewportMargins(0, height, 0, 0);
    const QRect area = viewport()->geometry();
    header_->setGeometry(area.left(), area.top() - height, area.width(), height);
    header_->fill(area.width());
    updateVerticalScrollBar();
    updateHorizontalScrollBar();
    QAbstractItemView::updateGeometries();
    updateEditorGeometries();
}

void GridView::updateVerticalScrollBar() {
    QScrollBar *bar = verticalScrollBar();
    const int page = rowsInPage();
    bar->setSingleStep(1);
    bar->setPageStep(page);
    bar->setRange(0, std::max(0, rows() - page));
}

void GridView::updateHorizontalScrollBar() {
    QScrollBar *bar = horizontalScrollBar();
    const int width = viewport()->width();
    bar->setSingleStep(header_->sectionSizeHint(firstByteColumn));
    bar->setPageStep(width);
    bar->setRange(0, std::max(0, header_->length() - width));
}

void GridView::scrollContentsBy(int, int) {
    header_->setOffset(horizontalScrollBar()->value());
    viewport()->update();
    updateEditorGeometries();
}

void GridView::resizeEvent(QResizeEvent *event) {
    QAbstractItemView::resizeEvent(event);
    updateGeometries();
}

void GridView::rowsInserted(const QModelIndex &parent, int start, int end) {
    QAbstractItemView::rowsInserted(parent, start, end);
    updateGeometries();
    viewport()->update();
}

// One byte may change how all the others read, so that all cells may be said to have changed; the
// toolkit would look for the place of each of them.
void GridView::dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight,
                           const QList<int> &roles) {
    const int lastInView = int(std::min<qint64>(qint64(topRow()) + rowsInPage(), rows() - 1));
    const int first = std::max(topLeft.row(), topRow());
    const int last = std::min(bottomRight.row(), lastInView);
    if (first <= last)
        QAbstractItemView::dataChanged(topLeft.siblingAtRow(first), bottomRight.siblingAtRow(last),
                                       roles);
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

// Where the grid's rows and columns lie, and how they scroll.

#include "grid/GridView.h"

#include "grid/GridColumns.h"
#include "grid/GridHeader.h"

#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>

namespace {

/// Space above and below the text of a row together, in pixels.
constexpr int rowPadding = 4;

/// Rows that a window of the preferred size shows.
constexpr int preferredRows = 16;

/// Lets \a bar reach \a all, of which \a page is in view at once.
void fit(QScrollBar &bar, int step, int page, int all) {
    bar.setSingleStep(step);
    bar.setPageStep(page);
    bar.setRange(0, std::max(0, all - page));
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

QSize GridView::minimumSizeHint() const {
    constexpr int minRows = 8;
    const int chrome = 2 * frameWidth() + header_->sizeHint().height() +
                       horizontalScrollBar()->sizeHint().height();
    return {QAbstractItemView::minimumSizeHint().width(), minRows * rowHeight_ + chrome};
}

QSize GridView::sizeHint() const {
    const QSize chrome(2 * frameWidth() + verticalScrollBar()->sizeHint().width(),
                       2 * frameWidth() + header_->sizeHint().height());
    return viewportSizeHint() + chrome;
}

int GridView::rows() const {
    return model_ ? model_->rowCount() : 0;
}

GridRows GridView::shownRows() const {
    return {verticalScrollBar()->value(), rowHeight_, viewport()->height()};
}

QRect GridView::visualRect(const QModelIndex &index) const {
    if (!index.isValid() || index.model() != model_)
        return {};
    return {header_->sectionViewportPosition(index.column()), shownRows().edgeOf(index.row()),
            header_->sectionSize(index.column()), rowHeight_};
}

QModelIndex GridView::indexAt(const QPoint &point) const {
    const int column = header_->logicalIndexAt(point.x());
    const qint64 row = shownRows().at(point.y());
    if (column < 0 || row < 0 || row >= rows())
        return {};
    return model_->index(int(row), column);
}

int GridView::horizontalOffset() const {
    return header_->offset();
}

int GridView::verticalOffset() const {
    return shownRows().offset();
}

bool GridView::isIndexHidden(const QModelIndex &) const {
    return false;
}

QRegion GridView::visualRegionForSelection(const QItemSelection &selection) const {
    QRegion region;
    for (const QItemSelectionRange &range : selection)
        region += shownRows().areaOf(range.top(), range.bottom(), viewport()->width());
    return region;
}

void GridView::scrollTo(const QModelIndex &index, ScrollHint hint) {
    if (!index.isValid())
        return;
    verticalScrollBar()->setValue(shownRows().topFor(index.row(), hint));
    horizontalScrollBar()->setValue(header_->offsetFor(index.column()));
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
    fit(*verticalScrollBar(), 1, shownRows().inPage(), rows());
    fit(*horizontalScrollBar(), header_->sectionSizeHint(firstByteColumn), viewport()->width(),
        header_->length());
    QAbstractItemView::updateGeometries();
    updateEditorGeometries();
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

// One byte may change how all the others read, so all cells may be said to have changed; the
// toolkit would look for the place of each of them.
void GridView::dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight,
                           const QList<int> &roles) {
    const GridRows shown = shownRows();
    const int lastInView = int(std::min<qint64>(qint64(shown.top) + shown.inPage(), rows() - 1));
    const int first = std::max(topLeft.row(), shown.top);
    const int last = std::min(bottomRight.row(), lastInView);
    if (first <= last)
        QAbstractItemView::dataChanged(topLeft.siblingAtRow(first), bottomRight.siblingAtRow(last),
                                       roles);
}

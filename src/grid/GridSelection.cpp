// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "grid/GridSelection.h"

#include "grid/GridColumns.h"
#include "grid/GridSteps.h"
#include "grid/GridView.h"
#include "widgets/ViewPlace.h"

#include <QKeyEvent>
#include <QScopedValueRollback>

#include <algorithm>

namespace {

std::optional<GridStep> stepOf(const QKeyEvent &key) {
    const bool toTheEnds = key.modifiers().testFlag(Qt::ControlModifier);
    switch (key.key()) {
    case Qt::Key_Left:
        return GridStep::Back;
    case Qt::Key_Right:
        return GridStep::On;
    case Qt::Key_Up:
        return GridStep::RowUp;
    case Qt::Key_Down:
        return GridStep::RowDown;
    case Qt::Key_PageUp:
        return GridStep::PageUp;
    case Qt::Key_PageDown:
        return GridStep::PageDown;
    case Qt::Key_Home:
        return toTheEnds ? GridStep::First : GridStep::RowStart;
    case Qt::Key_End:
        return toTheEnds ? GridStep::Last : GridStep::RowEnd;
    default:
        return std::nullopt;
    }
}

/// The bytes of \a rows in their order, of \a count that there are.
QList<ByteRange> bytesOf(const QItemSelection &rows, qint64 count) {
    QList<ByteRange> ranges;
    for (const QItemSelectionRange &range : rows) {
        const qint64 first = qint64(range.top()) * bytesInRow;
        const qint64 end = std::min(count, (qint64(range.bottom()) + 1) * bytesInRow);
        if (first < end)
            ranges.append({first, end - first});
    }
    std::sort(ranges.begin(), ranges.end(), [](const ByteRange &one, const ByteRange &other) {
        return one.offset < other.offset;
    });
    return ranges;
}

/// \a ranges, which are in order, with those joined that follow each other.
QList<ByteRange> joinedRanges(const QList<ByteRange> &ranges) {
    QList<ByteRange> joined;
    for (const ByteRange &range : ranges) {
        if (!joined.isEmpty() && joined.last().end() == range.offset)
            joined.last().length += range.length;
        else
            joined.append(range);
    }
    return joined;
}

bool isRowOf(const QModelIndex &cursor, const QItemSelection &rows) {
    return rows.size() == 1 && rows.first().height() == 1 && rows.first().top() == cursor.row();
}

} // namespace

GridSelection::GridSelection(GridView &view) : QObject(&view), view_(view) {}

qint64 GridSelection::byteCount() const {
    return view_.gridModel() ? view_.gridModel()->byteCount() : 0;
}

QList<ByteRange> GridSelection::ranges() const {
    if (hasBlock())
        return {block_.bytes()};
    const qint64 count = byteCount();
    if (count == 0)
        return {};
    const QItemSelection rows = view_.selectionModel()->selection();
    const auto byte = meantByte();
    if (!byte || !(rows.isEmpty() || isRowOf(view_.currentIndex(), rows)))
        return joinedRanges(bytesOf(rows, count));
    return *byte < count ? QList<ByteRange>{{*byte, 1}} : QList<ByteRange>();
}

ByteRange GridSelection::bytes() const {
    const QList<ByteRange> all = ranges();
    return all.size() == 1 ? all.first() : ByteRange();
}

qint64 GridSelection::rowCount() const {
    return view_.selectionModel() ? rowCountOf(view_.selectionModel()->selection()) : 0;
}

void GridSelection::select(ByteRange bytes) {
    const qint64 first = std::max<qint64>(bytes.offset, 0);
    const auto block = clipped({bytes.end() - 1, first}, byteCount());
    if (bytes.end() <= first || !block)
        return;
    const QRect cell = view_.visualRect(cellOfByte(*view_.gridModel(), block->lead));
    const bool isInView = view_.viewport()->rect().contains(cell);
    moveCursorTo(block->lead);
    if (!isInView)
        view_.scrollTo(view_.currentIndex(), GridView::PositionAtCenter);
    take(*block);
}

bool GridSelection::selectAll() {
    const qint64 count = byteCount();
    if (count > 0)
        take({0, count - 1});
    return count > 0;
}

void GridSelection::extend(qint64 anchor, qint64 lead) {
    const qint64 last = byteCount() - 1;
    if (last < 0)
        return;
    const ByteBlock block{std::clamp<qint64>(anchor, 0, last), std::clamp<qint64>(lead, 0, last)};
    moveCursorTo(block.lead);
    take(block);
}

void GridSelection::end() {
    if (hasBlock())
        takeRowOfCursor();
}

void GridSelection::beginAt(qint64 offset) {
    block_ = {offset, offset};
    pointed_ = offset;
    emit changed();
}

void GridSelection::restore(const ByteBlock &block) {
    if (block.isOneByte())
        return emit changed();
    const auto left = clipped(block, byteCount());
    if (!left)
        return takeRowOfCursor();
    if (!view_.currentIndex().isValid())
        moveCursorTo(left->lead);
    take(*left);
}

void GridSelection::takeCursor() {
    if (leading_)
        return;
    if (!isPointedAt(view_.currentIndex()))
        pointed_.reset();
    const qint64 byte = nearestByte();
    block_ = {byte, byte};
    emit changed();
}

void GridSelection::takeRows() {
    if (leading_)
        return;
    if (hasBlock() && view_.selectionModel()->hasSelection())
        takeCursor();
    else
        emit changed();
}

bool GridSelection::press(const QKeyEvent &key) {
    const auto step = stepOf(key);
    if (step && key.modifiers().testFlag(Qt::ShiftModifier) && byteCount() > 0) {
        const qint64 to = byteAfter(*step, block_.lead, view_.shownRows().inPage(), byteCount());
        extend(block_.anchor, to);
        return true;
    }
    const bool endsBlock = hasBlock() && (step || key.key() == Qt::Key_Escape);
    if (endsBlock)
        end();
    return endsBlock && !step;
}

bool GridSelection::isPointedAt(const QModelIndex &cell) const {
    return pointed_ && cell.column() == charactersColumn && cell.row() == *pointed_ / bytesInRow;
}

// The byte that the cursor is on, which need not exist; nothing where it stands for a row.
std::optional<qint64> GridSelection::meantByte() const {
    return isPointedAt(view_.currentIndex()) ? pointed_ : byteOfCell(view_.currentIndex());
}

// The byte under the cursor; where it stands for a row, the first of it.
qint64 GridSelection::nearestByte() const {
    const QModelIndex cell = view_.currentIndex();
    const qint64 first = cell.isValid() ? qint64(cell.row()) * bytesInRow : 0;
    return meantByte().value_or(first);
}

void GridSelection::take(const ByteBlock &block) {
    const bool isOther = block != block_;
    block_ = block;
    pointed_.reset();
    showRowsOrBlock();
    view_.viewport()->update();
    emit changed();
    if (isOther && hasBlock())
        emit blockChanged();
}

void GridSelection::takeRowOfCursor() {
    const qint64 byte = nearestByte();
    take({byte, byte});
}

void GridSelection::moveCursorTo(qint64 offset) {
    const QScopedValueRollback leading(leading_, true);
    view_.selectionModel()->setCurrentIndex(cellOfByte(*view_.gridModel(), offset),
                                            QItemSelectionModel::NoUpdate);
}

void GridSelection::showRowsOrBlock() {
    const QScopedValueRollback leading(leading_, true);
    QItemSelectionModel *rows = view_.selectionModel();
    if (!rows)
        return;
    if (hasBlock())
        rows->clearSelection();
    else if (!rows->hasSelection())
        rows->select(view_.currentIndex(),
                     QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

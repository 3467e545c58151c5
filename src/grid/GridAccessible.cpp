// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "grid/GridAccessible.h"

#include "grid/CellEditor.h"
#include "grid/GridAccessibleCell.h"
#include "grid/GridColumns.h"
#include "grid/GridSteps.h"
#include "grid/GridView.h"

#include <QHeaderView>
#include <QItemSelection>

#include <algorithm>
#include <utility>

namespace {

/// The most cells that are kept for those who hold on to them.
constexpr qsizetype maxCells = 16384;

/// The most rows, and cells, that are listed of a selection.
constexpr int maxListed = 4096;

qint64 placeKey(int row, int column) {
    return qint64(row) * gridColumns + column;
}

int childNumber(int row, int column) {
    return row * gridColumns + column;
}

QAccessibleInterface *createForGrid(const QString &className, QObject *object) {
    if (className != u"GridView")
        return nullptr;
    return new GridAccessible(static_cast<GridView *>(object));
}

} // namespace

void installGridAccessibility() {
    QAccessible::installFactory(createForGrid);
}

void tellCursor(GridView &view, const QModelIndex &cell) {
    if (!QAccessible::isActive())
        return;
    QAccessibleEvent event(&view, QAccessible::Focus);
    event.setChild(childNumber(cell.row(), cell.column()));
    QAccessible::updateAccessibility(&event);
}

void tellCursorSoon(GridView &view) {
    const auto tell = [&view] {
        if (view.hasFocus() && view.currentIndex().isValid())
            tellCursor(view, view.currentIndex());
    };
    QMetaObject::invokeMethod(&view, tell, Qt::QueuedConnection);
}

void tellSelection(GridView &view) {
    if (!QAccessible::isActive())
        return;
    QAccessibleEvent event(&view, QAccessible::SelectionWithin);
    QAccessible::updateAccessibility(&event);
}

GridAccessible::GridAccessible(GridView *view) : QAccessibleWidget(view, QAccessible::Table) {}

GridAccessible::~GridAccessible() {
    for (const HandedOut &cell : std::as_const(handedOut_))
        QAccessible::deleteAccessibleInterface(cell.id);
}

GridView *GridAccessible::view() const {
    return static_cast<GridView *>(widget());
}

void *GridAccessible::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::TableInterface)
        return static_cast<QAccessibleTableInterface *>(this);
    return QAccessibleWidget::interface_cast(type);
}

QAccessible::State GridAccessible::state() const {
    QAccessible::State state = QAccessibleWidget::state();
    state.multiSelectable = true;
    state.extSelectable = true;
    return state;
}

bool GridAccessible::isEditing() const {
    return view()->entries().editor() != nullptr;
}

int GridAccessible::rowCount() const {
    return view()->gridModel() ? view()->gridModel()->rowCount() : 0;
}

int GridAccessible::columnCount() const {
    return view()->gridModel() ? gridColumns : 0;
}

int GridAccessible::childCount() const {
    return (rowCount() + 1) * columnCount() + (isEditing() ? 1 : 0);
}

QAccessibleInterface *GridAccessible::child(int index) const {
    const int cells = rowCount() * columnCount();
    if (index < 0 || index >= childCount())
        return nullptr;
    if (index < cells)
        return placed(index / gridColumns, index % gridColumns);
    if (index < cells + columnCount())
        return headerCell(index - cells);
    return QAccessible::queryAccessibleInterface(view()->viewport());
}

int GridAccessible::indexOfChild(const QAccessibleInterface *child) const {
    const int cells = rowCount() * columnCount();
    if (child && isEditing() && child->object() == view()->viewport())
        return cells + columnCount();
    const auto *place = dynamic_cast<const GridAccessiblePlace *>(child);
    if (!place || !place->isValid())
        return -1;
    if (place->row() == GridAccessiblePlace::headerRow)
        return cells + place->column();
    return childNumber(place->row(), place->column());
}

QAccessibleInterface *GridAccessible::childAt(int x, int y) const {
    const QPoint inHeader = view()->header()->mapFromGlobal(QPoint(x, y));
    if (view()->header()->rect().contains(inHeader)) {
        const int column = view()->header()->logicalIndexAt(inHeader);
        return column >= 0 ? headerCell(column) : nullptr;
    }
    const QPoint inViewport = view()->viewport()->mapFromGlobal(QPoint(x, y));
    if (!view()->viewport()->rect().contains(inViewport))
        return nullptr;
    const CellEditor *editor = view()->entries().editor();
    if (editor && editor->geometry().contains(inViewport))
        return QAccessible::queryAccessibleInterface(view()->viewport());
    const QModelIndex index = view()->indexAt(inViewport);
    return index.isValid() ? placed(index.row(), index.column()) : nullptr;
}

QAccessibleInterface *GridAccessible::focusChild() const {
    if (CellEditor *editor = view()->entries().editor(); editor && editor->hasFocus())
        return QAccessible::queryAccessibleInterface(editor);
    const QModelIndex current = view()->currentIndex();
    return current.isValid() ? placed(current.row(), current.column()) : nullptr;
}

QAccessibleInterface *GridAccessible::cellAt(int row, int column) const {
    const bool exists = row >= 0 && row < rowCount() && column >= 0 && column < columnCount();
    return exists ? placed(row, column) : nullptr;
}

QAccessibleInterface *GridAccessible::headerCell(int column) const {
    return placed(GridAccessiblePlace::headerRow, column);
}

QAccessibleInterface *GridAccessible::placed(int row, int column) const {
    const qint64 key = placeKey(row, column);
    if (const auto cell = handedOut_.constFind(key); cell != handedOut_.constEnd())
        return QAccessible::accessibleInterface(cell->id);

    QAccessibleInterface *cell = nullptr;
    if (row == GridAccessiblePlace::headerRow)
        cell = new GridAccessibleTitle(*view(), column);
    else
        cell = new GridAccessibleCell(*view(), row, column);
    const QAccessible::Id id = QAccessible::registerAccessibleInterface(cell);
    handedOut_.insert(key, {id, cell->text(QAccessible::Name)});
    order_.enqueue(key);
    if (order_.size() > maxCells)
        dropOldest();
    return cell;
}

void GridAccessible::dropOldest() const {
    QAccessible::deleteAccessibleInterface(handedOut_.take(order_.dequeue()).id);
}

QString GridAccessible::columnDescription(int column) const {
    const bool exists = column >= 0 && column < columnCount();
    return exists ? view()->gridModel()->columnDescription(column) : QString();
}

QString GridAccessible::rowDescription(int row) const {
    const bool exists = row >= 0 && row < rowCount();
    return exists ? view()->gridModel()->cell(row, addressColumn).text : QString();
}

int GridAccessible::selectedRowCount() const {
    return int(view()->selection().rowCount());
}

int GridAccessible::selectedCellCount() const {
    if (view()->selection().hasBlock())
        return int(view()->selection().bytes().length);
    return selectedRowCount() * columnCount();
}

QList<int> GridAccessible::selectedRows() const {
    QList<int> rows;
    if (!view()->gridModel())
        return rows;
    for (const QItemSelectionRange &range : view()->selectionModel()->selection())
        for (int row = range.top(); row <= range.bottom() && rows.size() < maxListed; ++row)
            rows.append(row);
    return rows;
}

QList<QAccessibleInterface *> GridAccessible::cellsOfBlock() const {
    QList<QAccessibleInterface *> cells;
    const ByteRange block = view()->selection().bytes();
    const qint64 end = block.offset + std::min<qint64>(block.length, maxListed);
    for (qint64 byte = block.offset; byte < end; ++byte) {
        const QModelIndex cell = cellOfByte(*view()->gridModel(), byte);
        cells.append(placed(cell.row(), cell.column()));
    }
    return cells;
}

QList<QAccessibleInterface *> GridAccessible::selectedCells() const {
    if (view()->selection().hasBlock())
        return cellsOfBlock();
    QList<QAccessibleInterface *> cells;
    for (const int row : selectedRows())
        for (int column = 0; column < columnCount() && cells.size() < maxListed; ++column)
            cells.append(placed(row, column));
    return cells;
}

bool GridAccessible::isRowSelected(int row) const {
    return view()->gridModel() &&
           view()->selectionModel()->isSelected(view()->gridModel()->index(row, 0));
}

bool GridAccessible::selectRow(int row) {
    return changeRowSelection(row, true);
}

bool GridAccessible::unselectRow(int row) {
    return changeRowSelection(row, false);
}

bool GridAccessible::changeRowSelection(int row, bool selected) {
    if (!view()->isEnabled() || row < 0 || row >= rowCount())
        return false;
    const QModelIndex index = view()->gridModel()->index(row, 0);
    if (!index.flags().testFlag(Qt::ItemIsSelectable))
        return false;
    const auto change = selected ? QItemSelectionModel::Select : QItemSelectionModel::Deselect;
    view()->selectionModel()->select(index, change | QItemSelectionModel::Rows);
    return true;
}

bool GridAccessible::selectColumn(int column) {
    const bool exists = column >= 0 && column < columnCount();
    if (!exists || !view()->isEnabled() || !view()->gridModel()->maySelectColumn(column))
        return false;
    view()->selectionModel()->select(view()->gridModel()->index(0, column),
                                     QItemSelectionModel::ClearAndSelect |
                                         QItemSelectionModel::Columns);
    return true;
}

void GridAccessible::modelChange(QAccessibleTableModelChangeEvent *) {
    // Clients keep the names that they were told, so each that is no longer true is told anew.
    const QList<qint64> keys = handedOut_.keys();
    for (const qint64 key : keys) {
        HandedOut &known = handedOut_[key];
        QAccessibleInterface *cell = QAccessible::accessibleInterface(known.id);
        if (!cell->isValid())
            continue;
        const QString name = cell->text(QAccessible::Name);
        if (std::exchange(known.name, name) == name)
            continue;
        QAccessibleEvent event(cell, QAccessible::NameChanged);
        QAccessible::updateAccessibility(&event);
    }
}

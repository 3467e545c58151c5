// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "grid/GridSteps.h"

#include "grid/GridColumns.h"

#include <algorithm>

QModelIndex nearestCell(const GridModel &model, qint64 row, int column) {
    const int rows = model.rowCount();
    if (rows == 0)
        return {};
    return model.index(int(std::clamp<qint64>(row, 0, rows - 1)),
                       std::clamp(column, 0, gridColumns - 1));
}

QModelIndex cellOfByte(const GridModel &model, qint64 offset) {
    const qint64 row = offset / bytesInRow;
    if (offset < 0 || row >= model.rowCount())
        return {};
    return model.index(int(row), columnOfByte(offset));
}

std::optional<qint64> byteOfCell(const QModelIndex &cell) {
    if (!cell.isValid() || !isByteColumn(cell.column()))
        return std::nullopt;
    return qint64(byteIndex(cell.row(), cell.column()));
}

QModelIndex firstCellOf(const GridModel &model, int row) {
    const bool isDump = model.heading() == GridHeading::Bytes;
    return model.index(row, isDump ? firstByteColumn : addressColumn);
}

QModelIndex lastCellOf(const GridModel &model, int row) {
    if (model.heading() != GridHeading::Bytes)
        return model.index(row, gridColumns - 1);
    const qint64 bytes = model.byteCount() - qint64(row) * bytesInRow;
    const bool endsHere = bytes > 0 && bytes < bytesInRow;
    return model.index(row, endsHere ? int(bytes) : lastByteColumn);
}

QModelIndex lastCell(const GridModel &model) {
    if (model.heading() != GridHeading::Bytes)
        return lastCellOf(model, model.rowCount() - 1);
    return cellOfByte(model, std::max<qint64>(model.byteCount() - 1, 0));
}

QModelIndex nextByteCell(const QModelIndex &cell) {
    if (cell.column() < lastByteColumn)
        return cell.siblingAtColumn(cell.column() + 1);
    return cell.sibling(cell.row() + 1, firstByteColumn);
}

QModelIndex previousByteCell(const QModelIndex &cell) {
    if (cell.column() > firstByteColumn)
        return cell.siblingAtColumn(cell.column() - 1);
    return cell.sibling(cell.row() - 1, lastByteColumn);
}

QModelIndex cellAfter(GridStep step, const GridModel &model, const QModelIndex &cell,
                      int rowsInPage) {
    const qint64 row = cell.row();
    const int column = cell.column();
    switch (step) {
    case GridStep::Back:
        return nearestCell(model, row, column - 1);
    case GridStep::On:
        return nearestCell(model, row, column + 1);
    case GridStep::RowUp:
        return nearestCell(model, row - 1, column);
    case GridStep::RowDown:
        return nearestCell(model, row + 1, column);
    case GridStep::PageUp:
        return nearestCell(model, row - rowsInPage, column);
    case GridStep::PageDown:
        return nearestCell(model, row + rowsInPage, column);
    case GridStep::RowStart:
        return firstCellOf(model, cell.row());
    case GridStep::RowEnd:
        return lastCellOf(model, cell.row());
    case GridStep::First:
        return firstCellOf(model, 0);
    case GridStep::Last:
        break;
    }
    return lastCell(model);
}

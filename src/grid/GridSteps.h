// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "grid/ByteBlock.h"
#include "grid/GridModel.h"

#include <optional>

/// Where the keys lead. The ends of a dump and of its rows are bytes, never addresses or
/// characters, so that typing there is an entry.

/// The cell at \a row and \a column, or the nearest to it; invalid if there are no rows.
QModelIndex nearestCell(const GridModel &model, qint64 row, int column);
/// The cell that shows the byte at \a offset; invalid before the first row and beyond the last.
QModelIndex cellOfByte(const GridModel &model, qint64 offset);
/// The offset of the byte that \a cell shows, which need not exist; nothing for an invalid cell, an
/// address and the characters.
std::optional<qint64> byteOfCell(const QModelIndex &cell);
/// The first byte of \a row, or the first field of a result.
QModelIndex firstCellOf(const GridModel &model, int row);
/// The last byte that there is in \a row, or the last field of a result.
QModelIndex lastCellOf(const GridModel &model, int row);
/// The last byte, or the last field of the last result. There must be a row.
QModelIndex lastCell(const GridModel &model);
/// The first byte cell that follows \a cell; invalid behind the last row.
QModelIndex nextByteCell(const QModelIndex &cell);
/// The last byte cell before \a cell; invalid before the first.
QModelIndex previousByteCell(const QModelIndex &cell);
/// Where \a step leads from \a cell, or the cell nearest to that; \a rowsInPage is what the view
/// shows at once.
QModelIndex cellAfter(GridStep step, const GridModel &model, const QModelIndex &cell,
                      int rowsInPage);

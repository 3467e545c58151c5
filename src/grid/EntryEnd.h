// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QAbstractItemDelegate>
#include <QModelIndex>

class CellEditor;
class GridModel;

/// Where the cursor goes when the entry in \a editor, over \a cell of \a model, ends as \a hint
/// says: past the bytes that were written, or back to the byte before. Invalid if it stays.
QModelIndex cellAfterEntry(const GridModel &model, const QModelIndex &cell,
                           const CellEditor &editor, QAbstractItemDelegate::EndEditHint hint);

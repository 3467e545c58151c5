// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "grid/EntryEnd.h"

#include "grid/CellEditor.h"
#include "grid/GridSteps.h"

QModelIndex cellAfterEntry(const GridModel &model, const QModelIndex &cell,
                           const CellEditor &editor, QAbstractItemDelegate::EndEditHint hint) {
    switch (hint) {
    case QAbstractItemDelegate::EditPreviousItem:
        return previousByteCell(cell);
    case QAbstractItemDelegate::EditNextItem:
    case QAbstractItemDelegate::SubmitModelCache:
        break;
    default:
        return {};
    }
    if (const CellEditOutcome &edit = editor.edit())
        return edit->rejected ? QModelIndex() : cellOfByte(model, edit->written().end());
    // The source made nothing of the entry. The value that was there already, typed again, counts
    // as an entry all the same, so that whoever types byte after byte need not look up.
    const bool goesOn = hint == QAbstractItemDelegate::EditNextItem || editor.isModified();
    return goesOn && !editor.wasCommitted() ? nextByteCell(cell) : QModelIndex();
}

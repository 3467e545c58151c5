// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

// How the grid's cursor moves, and how cells are selected and edited.

#include "grid/GridView.h"

#include "grid/CellEditor.h"
#include "grid/GridDelegate.h"
#include "grid/GridSteps.h"
#include "widgets/ViewPlace.h"

#include <QAction>
#include <QKeyEvent>

#include <algorithm>

QModelIndex GridView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    if (rows() == 0)
        return {};
    const QModelIndex current = currentIndex();
    if (!current.isValid())
        return model_->index(shownRows().top, firstByteColumn);

    const bool toTheEnds = modifiers & Qt::ControlModifier;
    const int lastColumn = gridColumns - 1;
    const int row = current.row();
    const int column = current.column();
    const auto cell = [this](qint64 toRow, int toColumn) {
        return nearestCell(*model_, toRow, toColumn);
    };
    switch (action) {
    case MoveUp:
        return cell(qint64(row) - 1, column);
    case MoveDown:
        return cell(qint64(row) + 1, column);
    case MoveLeft:
        return cell(row, column - 1);
    case MoveRight:
        return cell(row, column + 1);
    case MovePageUp:
        return cell(qint64(row) - shownRows().inPage(), column);
    case MovePageDown:
        return cell(qint64(row) + shownRows().inPage(), column);
    case MoveHome:
        return firstCellOf(*model_, toTheEnds ? 0 : row);
    case MoveEnd:
        return toTheEnds ? lastCell(*model_) : lastCellOf(*model_, row);
    case MoveNext:
        return column == lastColumn && row + 1 < rows() ? cell(row + 1, 0) : cell(row, column + 1);
    case MovePrevious:
        return column == 0 && row > 0 ? cell(row - 1, lastColumn) : cell(row, column - 1);
    }
    return current;
}

void GridView::setSelection(const QRect &rect, QItemSelectionModel::SelectionFlags command) {
    // The corners come as they were dragged, so neither need be above the other, and both may
    // lie far outside the viewport.
    const qint64 one = shownRows().at(rect.top());
    const qint64 other = shownRows().at(rect.bottom());
    selectionModel()->select(wholeRows(*model_, std::min(one, other), std::max(one, other)),
                             command);
}

QItemSelectionModel::SelectionFlags GridView::selectionCommand(const QModelIndex &index,
                                                               const QEvent *event) const {
    if (event && event->type() == QEvent::KeyPress) {
        const auto *press = static_cast<const QKeyEvent *>(event);
        if (press->key() == Qt::Key_Home || press->key() == Qt::Key_End) {
            // Here the control key tells how far to go, not that the selection stays.
            const QKeyEvent plain(press->type(), press->key(),
                                  press->modifiers() & ~Qt::ControlModifier);
            return QAbstractItemView::selectionCommand(index, &plain);
        }
    }
    return QAbstractItemView::selectionCommand(index, event);
}

CellEditor *GridView::openEditor() const {
    return state() == EditingState ? delegate_->lastEditor() : nullptr;
}

bool GridView::edit(const QModelIndex &index, EditTrigger trigger, QEvent *event) {
    const bool opens = QAbstractItemView::edit(index, trigger, event);
    CellEditor *editor = opens && trigger == AnyKeyPressed ? openEditor() : nullptr;
    if (editor && index.column() != charactersColumn)
        editor->setEndsWithTwoDigits(moveOn_->isChecked());
    return opens;
}

bool GridView::commitOpenEditor() {
    CellEditor *editor = openEditor();
    if (!editor)
        return false;
    commitData(editor);
    closeEditor(editor, QAbstractItemDelegate::NoHint);
    return true;
}

void GridView::showEdit(const CellEdit &edit, ByteRange changed) {
    showChange(changed);
    if (CellEditor *editor = openEditor())
        editor->setEdit(edit);
}

void GridView::closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint) {
    const QModelIndex next = cellAfterEditing(editor, hint);
    QAbstractItemView::closeEditor(editor, QAbstractItemDelegate::NoHint);
    if (next.isValid())
        moveTo(next);
}

QModelIndex GridView::cellAfterEditing(const QWidget *editor,
                                       QAbstractItemDelegate::EndEditHint hint) const {
    const auto *field = qobject_cast<const CellEditor *>(editor);
    if (!field || !currentIndex().isValid())
        return {};
    switch (hint) {
    case QAbstractItemDelegate::EditPreviousItem:
        return previousByteCell(currentIndex());
    case QAbstractItemDelegate::EditNextItem:
    case QAbstractItemDelegate::SubmitModelCache:
        break;
    default:
        return {};
    }
    if (const CellEditOutcome &edit = field->edit())
        return edit->rejected ? QModelIndex() : cellOfByte(*model_, edit->written().end());
    // The source made nothing of the entry. The value that was there already, typed again, counts
    // as an entry all the same, so that whoever types byte after byte need not look up.
    const bool goesOn = hint == QAbstractItemDelegate::EditNextItem || field->isModified();
    return goesOn && !field->wasCommitted() ? nextByteCell(currentIndex()) : QModelIndex();
}

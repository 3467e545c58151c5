// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

// How the grid's cursor moves, and how cells are selected and edited.

#include "grid/GridView.h"

#include "grid/CellEditor.h"
#include "grid/EntryEnd.h"
#include "grid/GridColumns.h"
#include "grid/GridDelegate.h"
#include "grid/GridSteps.h"
#include "widgets/ViewPlace.h"

#include <QAction>
#include <QKeyEvent>

#include <algorithm>
#include <map>

QModelIndex GridView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    if (rows() == 0)
        return {};
    const QModelIndex current = currentIndex();
    if (!current.isValid())
        return model_->index(shownRows().top, firstByteColumn);

    const bool toTheEnds = modifiers & Qt::ControlModifier;
    const std::map<CursorAction, GridStep> steps = {
        {MoveUp, GridStep::RowUp},
        {MoveDown, GridStep::RowDown},
        {MoveLeft, GridStep::Back},
        {MoveRight, GridStep::On},
        {MoveHome, toTheEnds ? GridStep::First : GridStep::RowStart},
        {MoveEnd, toTheEnds ? GridStep::Last : GridStep::RowEnd},
        {MovePageUp, GridStep::PageUp},
        {MovePageDown, GridStep::PageDown},
        {MoveNext, GridStep::On},
        {MovePrevious, GridStep::Back},
    };
    return cellAfter(steps.at(action), *model_, current, shownRows().inPage());
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

QAction *GridView::moveOnAction() const {
    return delegate_->moveOnAction();
}

CellEditor *GridView::openEditor() const {
    return state() == EditingState ? delegate_->lastEditor() : nullptr;
}

bool GridView::edit(const QModelIndex &index, EditTrigger trigger, QEvent *event) {
    const bool opens = QAbstractItemView::edit(index, trigger, event);
    CellEditor *editor = opens && trigger == AnyKeyPressed ? openEditor() : nullptr;
    if (editor && index.column() != charactersColumn)
        editor->setEndsWithTwoDigits(moveOnAction()->isChecked());
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
    const auto *field = qobject_cast<CellEditor *>(editor);
    const bool isOverACell = field && currentIndex().isValid();
    const QModelIndex next =
        isOverACell ? cellAfterEntry(*model_, currentIndex(), *field, hint) : QModelIndex();
    QAbstractItemView::closeEditor(editor, QAbstractItemDelegate::NoHint);
    emit entryCloses();
    if (next.isValid())
        moveTo(next);
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

// How the grid's cursor moves, and how rows are selected.

#include "grid/GridView.h"

#include "grid/GridColumns.h"
#include "grid/GridSteps.h"
#include "widgets/ViewPlace.h"

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

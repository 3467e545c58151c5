// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "grid/GridAccessibleCell.h"

#include "grid/GridAccessible.h"
#include "grid/GridColumns.h"
#include "grid/GridSteps.h"
#include "grid/GridView.h"

#include <QHeaderView>
#include <QKeySequence>

GridAccessiblePlace::GridAccessiblePlace(GridView &view, int row, int column)
    : view_(view), row_(row), column_(column) {}

QAccessibleInterface *GridAccessiblePlace::parent() const {
    return QAccessible::queryAccessibleInterface(&view_);
}

GridAccessibleTitle::GridAccessibleTitle(GridView &view, int column)
    : GridAccessiblePlace(view, headerRow, column) {}

bool GridAccessibleTitle::isValid() const {
    return view().gridModel() != nullptr;
}

QString GridAccessibleTitle::text(QAccessible::Text text) const {
    const bool isName = text == QAccessible::Name && isValid();
    return isName ? view().gridModel()->columnDescription(column()) : QString();
}

QRect GridAccessibleTitle::rect() const {
    if (!isValid())
        return {};
    const QHeaderView *header = view().header();
    const QPoint corner(header->sectionViewportPosition(column()), 0);
    return {header->viewport()->mapToGlobal(corner),
            QSize(header->sectionSize(column()), header->height())};
}

QAccessible::State GridAccessibleTitle::state() const {
    QAccessible::State state;
    state.invalid = !isValid();
    return state;
}

void *GridAccessibleCell::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::TableCellInterface)
        return static_cast<QAccessibleTableCellInterface *>(this);
    if (type == QAccessible::ActionInterface)
        return static_cast<QAccessibleActionInterface *>(this);
    return nullptr;
}

QModelIndex GridAccessibleCell::index() const {
    return isValid() ? view().gridModel()->index(row(), column()) : QModelIndex();
}

bool GridAccessibleCell::isValid() const {
    return view().gridModel() && row() < view().gridModel()->rowCount();
}

QString GridAccessibleCell::text(QAccessible::Text text) const {
    switch (text) {
    case QAccessible::Name:
        return index().data(Qt::DisplayRole).toString();
    case QAccessible::Description:
        return index().data(Qt::AccessibleDescriptionRole).toString();
    default:
        return {};
    }
}

QRect GridAccessibleCell::rect() const {
    if (!isValid())
        return {};
    const QRect cell = view().visualRect(index());
    return {view().viewport()->mapToGlobal(cell.topLeft()), cell.size()};
}

QAccessible::State GridAccessibleCell::state() const {
    QAccessible::State state;
    if (!isValid()) {
        state.invalid = true;
        return state;
    }
    const bool isCurrent = view().currentIndex() == index();
    state.disabled = !view().isEnabled();
    state.focusable = true;
    state.focused = isCurrent && view().hasFocus();
    state.selectable = index().flags().testFlag(Qt::ItemIsSelectable);
    state.selected = isSelected();
    state.editable = isEditable();
    state.readOnly = !isEditable();
    state.invisible = !view().isVisible();
    state.offscreen = !view().viewport()->rect().intersects(view().visualRect(index()));
    return state;
}

QList<QAccessibleInterface *> GridAccessibleCell::columnHeaderCells() const {
    const auto *grid = static_cast<const GridAccessible *>(parent());
    return grid ? QList<QAccessibleInterface *>{grid->headerCell(column())}
                : QList<QAccessibleInterface *>();
}

QList<QAccessibleInterface *> GridAccessibleCell::rowHeaderCells() const {
    const auto *grid = static_cast<const GridAccessible *>(parent());
    return grid && column() != addressColumn
               ? QList<QAccessibleInterface *>{grid->cellAt(row(), addressColumn)}
               : QList<QAccessibleInterface *>();
}

bool GridAccessibleCell::isSelected() const {
    if (view().selection().hasBlock()) {
        const ByteRange block = view().selection().bytes();
        const qint64 byte = byteOfCell(index()).value_or(-1);
        return byte >= block.offset && byte < block.end();
    }
    return isValid() && view().selectionModel()->isSelected(index());
}

bool GridAccessibleCell::isEditable() const {
    // Without triggers a cell opens by no key and no click, as during a run.
    const bool opens = view().editTriggers() != QAbstractItemView::NoEditTriggers;
    return opens && index().flags().testFlag(Qt::ItemIsEditable) && view().isEnabled();
}

QStringList GridAccessibleCell::actionNames() const {
    QStringList names{setFocusAction()};
    if (isEditable())
        names.prepend(pressAction());
    return names;
}

void GridAccessibleCell::doAction(const QString &action) {
    if (!isValid() || !view().isEnabled())
        return;
    const bool opens = action == pressAction() && isEditable();
    if (!opens && action != setFocusAction())
        return;
    view().setFocus();
    view().moveTo(index());
    if (opens)
        view().edit(index());
}

QStringList GridAccessibleCell::keyBindingsForAction(const QString &action) const {
    if (action == pressAction() && isEditable())
        return {QKeySequence(Qt::Key_F2).toString(QKeySequence::NativeText)};
    return {};
}

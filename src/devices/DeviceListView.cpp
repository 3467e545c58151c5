// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "devices/DeviceListView.h"

#include "base/ShownName.h"
#include "widgets/EnterKey.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyledItemDelegate>

namespace {

bool movesCursor(int key) {
    return key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_Home || key == Qt::Key_End ||
           key == Qt::Key_PageUp || key == Qt::Key_PageDown;
}

class NameDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QString displayText(const QVariant &value, const QLocale &) const override {
        return shownName(value.toString());
    }
};

} // namespace

DeviceListView::DeviceListView(QWidget *parent) : QListView(parent) {
    // Without equal heights the list would measure every one of 30,000 names before it shows.
    setUniformItemSizes(true);
    setItemDelegate(new NameDelegate(this));
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setAlternatingRowColors(true);
}

void DeviceListView::mouseDoubleClickEvent(QMouseEvent *event) {
    QListView::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton)
        emit doubleClickedAnywhere();
}

QItemSelectionModel::SelectionFlags DeviceListView::selectionCommand(const QModelIndex &index,
                                                                     const QEvent *event) const {
    // The first half of a double-click below the names must leave what the second half confirms.
    return index.isValid() ? QListView::selectionCommand(index, event)
                           : QItemSelectionModel::NoUpdate;
}

void DeviceListView::selectFirst() {
    setFocus(Qt::OtherFocusReason);
    setCurrentIndex(model()->index(0, 0));
}

void DeviceListView::keyPressEvent(QKeyEvent *event) {
    if (isEnter(*event)) {
        emit enterPressed();
        return;
    }
    QListView::keyPressEvent(event);
    // A key that leads to where the cursor is already changes nothing for the toolkit.
    if (movesCursor(event->key()) && !selectionModel()->hasSelection())
        setCurrentIndex(currentIndex());
}

// Without a selection nobody sees which row the cursor is on: the first step is onto that row.
QModelIndex DeviceListView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    const bool isStep = action == MoveUp || action == MoveDown;
    const bool isOnto = isStep && currentIndex().isValid() && !selectionModel()->hasSelection();
    return isOnto ? currentIndex() : QListView::moveCursor(action, modifiers);
}

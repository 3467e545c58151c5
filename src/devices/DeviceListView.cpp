#include "devices/DeviceListView.h"

#include <QKeyEvent>
#include <QMouseEvent>

DeviceListView::DeviceListView(QWidget *parent) : QListView(parent) {
    // Without equal heights the list would measure every one of 30,000 names before it shows.
    setUniformItemSizes(true);
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

void DeviceListView::keyPressEvent(QKeyEvent *event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        emit enterPressed();
        return;
    }
    QListView::keyPressEvent(event);
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "devices/DeviceListModel.h"

#include "devices/device_searcher.h"

DeviceListModel::DeviceListModel(device_searcher &searcher)
    : QAbstractListModel(&searcher), searcher_(searcher) {}

void DeviceListModel::reloadData() {
    beginResetModel();
    rows_ = static_cast<int>(searcher_.numberOfRowsInTableView(this));
    endResetModel();
}

int DeviceListModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : rows_;
}

QVariant DeviceListModel::data(const QModelIndex &index, int role) const {
    const bool known = checkIndex(index, CheckIndexOption::IndexIsValid);
    if (!known || (role != Qt::DisplayRole && role != Qt::ToolTipRole))
        return {};
    return searcher_.tableView_objectValueForTableColumn_row(nullptr, QString(), index.row());
}

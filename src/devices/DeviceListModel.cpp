// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "devices/DeviceListModel.h"

#include "devices/ShownName.h"
#include "devices/device_searcher.h"

#include <QTextDocument>

DeviceListModel::DeviceListModel(device_searcher &searcher)
    : QAbstractListModel(&searcher), searcher_(searcher) {}

void DeviceListModel::reloadData() {
    beginResetModel();
    rows_ = int(searcher_.numberOfRowsInTableView(this));
    endResetModel();
}

int DeviceListModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : rows_;
}

QVariant DeviceListModel::data(const QModelIndex &index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const auto name = [&] {
        return searcher_.tableView_objectValueForTableColumn_row(nullptr, QString(), index.row());
    };
    switch (role) {
    case Qt::DisplayRole:
        return name();
    case Qt::AccessibleTextRole:
        return shownName(name());
    case Qt::ToolTipRole:
        // A name may look like rich text, which a tool tip would follow.
        return Qt::convertFromPlainText(shownName(name()), Qt::WhiteSpaceNormal);
    default:
        return {};
    }
}

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
    shown_.clear();
    const auto names = qint64(searcher_.numberOfRowsInTableView(this));
    for (qint64 row = 0; row < names; ++row)
        if (filter_.isEmpty() || filter_.passes(name(row)))
            shown_.append(row);
    endResetModel();
}

void DeviceListModel::setFilter(const NameFilter &filter) {
    filter_ = filter;
    reloadData();
}

QString DeviceListModel::name(qint64 row) const {
    return searcher_.tableView_objectValueForTableColumn_row(nullptr, QString(), row);
}

int DeviceListModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : int(shown_.size());
}

QVariant DeviceListModel::data(const QModelIndex &index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const qsizetype row = nameInRow(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return name(row);
    case Qt::AccessibleTextRole:
        return shownName(name(row));
    case Qt::ToolTipRole:
        // A name may look like rich text, which a tool tip would follow.
        return Qt::convertFromPlainText(shownName(name(row)), Qt::WhiteSpaceNormal);
    default:
        return {};
    }
}

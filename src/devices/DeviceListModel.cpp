// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "devices/DeviceListModel.h"

#include "base/ShownName.h"
#include "widgets/PlainToolTip.h"

#include <utility>

DeviceListModel::DeviceListModel(Source source, QObject *parent)
    : QAbstractListModel(parent), source_(std::move(source)) {}

void DeviceListModel::reloadData() {
    beginResetModel();
    shown_.clear();
    const qint64 names = source_.count();
    for (qint64 row = 0; row < names; ++row)
        if (filter_.isEmpty() || filter_.passes(source_.name(row)))
            shown_.append(row);
    endResetModel();
}

void DeviceListModel::setFilter(const NameFilter &filter) {
    filter_ = filter;
    reloadData();
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
        return source_.name(row);
    case Qt::AccessibleTextRole:
        return shownName(source_.name(row));
    case Qt::ToolTipRole:
        return plainToolTip(shownName(source_.name(row)));
    default:
        return {};
    }
}

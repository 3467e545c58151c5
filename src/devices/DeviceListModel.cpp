#include "devices/DeviceListModel.h"

#include "devices/device_searcher.h"

DeviceListModel::DeviceListModel(device_searcher &searcher)
    : QAbstractListModel(&searcher), m_searcher(searcher) {}

void DeviceListModel::reloadData() {
    beginResetModel();
    m_rows = int(m_searcher.numberOfRowsInTableView(this));
    endResetModel();
}

int DeviceListModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : m_rows;
}

QVariant DeviceListModel::data(const QModelIndex &index, int role) const {
    const bool known = checkIndex(index, CheckIndexOption::IndexIsValid);
    if (!known || (role != Qt::DisplayRole && role != Qt::ToolTipRole))
        return {};
    return m_searcher.tableView_objectValueForTableColumn_row(nullptr, QString(), index.row());
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "devices/NameFilter.h"

#include <QAbstractListModel>
#include <QList>

class device_searcher;

/// The names that a device_searcher shows, as an item model: whole for display and choice, as
/// shownName() has them for tool tips and assistive technology. The rows are those of the names
/// that pass the filter, as they were at the last reload.
class DeviceListModel final : public QAbstractListModel {
    Q_OBJECT

public:
    explicit DeviceListModel(device_searcher &searcher);

    /// Takes the names anew; nothing is selected afterwards.
    void reloadData();
    /// Shows the names that pass \a filter alone; nothing is selected afterwards.
    void setFilter(const NameFilter &filter);
    /// Which of the searcher's names stands in \a row.
    qsizetype nameInRow(int row) const { return shown_.at(row); }

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;

private:
    QString name(qint64 row) const;

    device_searcher &searcher_;
    NameFilter filter_;
    QList<qsizetype> shown_;
};

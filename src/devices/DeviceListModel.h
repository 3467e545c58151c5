// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "devices/NameFilter.h"

#include <QAbstractListModel>
#include <QList>

#include <functional>

/// Names of devices as an item model: whole for display and choice, as shownName() has them for
/// tool tips and assistive technology. The rows are those of the names that pass the filter, as
/// they were at the last reload.
class DeviceListModel final : public QAbstractListModel {
    Q_OBJECT

public:
    /// Where the names come from.
    struct Source {
        std::function<qint64()> count;
        std::function<QString(qint64 number)> name;
    };

    DeviceListModel(Source source, QObject *parent);

    /// Takes the names anew; nothing is selected afterwards.
    void reloadData();
    /// Shows the names that pass \a filter alone; nothing is selected afterwards.
    void setFilter(const NameFilter &filter);
    /// Which of the source's names stands in \a row.
    qsizetype nameInRow(int row) const { return shown_.at(row); }

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;

private:
    Source source_;
    NameFilter filter_;
    QList<qsizetype> shown_;
};

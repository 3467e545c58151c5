// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QAbstractListModel>

class device_searcher;

/// The names that a device_searcher shows, as an item model: whole to whoever takes one, as
/// shownName() has them in tool tips and to assistive technology. The number of rows is what it was
/// at the last reload.
class DeviceListModel final : public QAbstractListModel {
    Q_OBJECT

public:
    explicit DeviceListModel(device_searcher &searcher);

    /// Takes the names anew; nothing is selected afterwards.
    void reloadData();

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;

private:
    device_searcher &searcher_;
    int rows_ = 0;
};

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "image/FuseText.h"

#include <QAbstractTableModel>
#include <QModelIndexList>

/// Fuses as a table, to look at: name, value hexadecimal, value binary. A line that says no fuse
/// stands there as it is.
class FuseListModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { Name, Hexadecimal, Binary, ColumnCount };

    using QAbstractTableModel::QAbstractTableModel;

    /// Shows \a lines instead of those before.
    void setLines(const QList<FuseLine> &lines);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

    /// The rows of \a indexes as lines of text, their cells separated by tabs.
    QString textOf(const QModelIndexList &indexes) const;

private:
    QString text(const FuseLine &line, int column) const;

    QList<FuseLine> lines_;
};

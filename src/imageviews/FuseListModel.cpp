// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "imageviews/FuseListModel.h"

#include "imageviews/MemoriesWords.h"
#include "widgets/FixedFont.h"
#include "widgets/PlainToolTip.h"

#include <algorithm>
#include <utility>

void FuseListModel::setLines(const QList<FuseLine> &lines) {
    beginResetModel();
    lines_ = lines;
    endResetModel();
}

int FuseListModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : int(lines_.size());
}

int FuseListModel::columnCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : int(ColumnCount);
}

QVariant FuseListModel::data(const QModelIndex &index, int role) const {
    if (!index.isValid())
        return {};
    const FuseLine &line = lines_[index.row()];
    if (role == Qt::DisplayRole)
        return text(line, index.column());
    if (role == Qt::FontRole && line.fuse && index.column() != Name)
        return fixedFont();
    // Such a line may be longer than the column.
    if (role == Qt::ToolTipRole && !line.fuse)
        return plainToolTip(line.text);
    return {};
}

QString FuseListModel::text(const FuseLine &line, int column) const {
    if (!line.fuse)
        return column == Name ? line.text : column == Hexadecimal ? tr("says no fuse") : QString();
    switch (column) {
    case Name:
        return line.fuse->name;
    case Hexadecimal:
        return hexadecimalWords(*line.fuse);
    default:
        return binaryWords(*line.fuse);
    }
}

QVariant FuseListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QAbstractTableModel::headerData(section, orientation, role);
    switch (section) {
    case Name:
        return tr("Name");
    case Hexadecimal:
        return tr("Hexadecimal");
    default:
        return tr("Binary");
    }
}

QString FuseListModel::textOf(const QModelIndexList &indexes) const {
    QList<int> rows;
    for (const QModelIndex &index : indexes)
        rows << index.row();
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    QString all;
    for (const int row : std::as_const(rows)) {
        const FuseLine &line = lines_[row];
        all +=
            line.fuse
                ? QStringList{text(line, Name), text(line, Hexadecimal), text(line, Binary)}.join(
                      u'\t')
                : line.text;
        all += u'\n';
    }
    return all;
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "grid/GridModel.h"

#include "base/Digits.h"
#include "base/JoinedWords.h"
#include "grid/GridColumns.h"

#include <algorithm>
#include <limits>

namespace {

/// Titles stand as the contents below them do.
Qt::Alignment titleAlignment(int column) {
    if (column == addressColumn)
        return Qt::AlignRight | Qt::AlignVCenter;
    return column == charactersColumn ? Qt::AlignLeft | Qt::AlignVCenter : Qt::AlignCenter;
}

} // namespace

GridModel::GridModel(GridSource &source, QObject *table, QObject *parent)
    : QAbstractTableModel(parent), source_(source), table_(table) {}

void GridModel::reloadData() {
    beginResetModel();
    rows_ = sourceRows();
    endResetModel();
}

bool GridModel::showChange(ByteRange changed) {
    const int rows = sourceRows();
    if (rows < rows_)
        return false;
    if (rows > rows_) {
        beginInsertRows(QModelIndex(), rows_, rows - 1);
        rows_ = rows;
        endInsertRows();
    }
    const auto rowOf = [this](qint64 offset) {
        return int(std::clamp<qint64>(offset / bytesInRow, 0, rows_ - 1));
    };
    emit dataChanged(index(rowOf(changed.offset), 0),
                     index(rowOf(changed.end() - 1), gridColumns - 1));
    return true;
}

int GridModel::sourceRows() const {
    constexpr auto maxRows = quint64(std::numeric_limits<int>::max());
    return int(std::min(maxRows, source_.numberOfRowsInTableView(table_)));
}

void GridModel::setHeading(GridHeading heading) {
    if (heading == heading_)
        return;
    heading_ = heading;
    emit headerDataChanged(Qt::Horizontal, 0, gridColumns - 1);
}

CellValue GridModel::cell(int row, int column) const {
    return source_.tableView_objectValueForTableColumn_row(table_, columnIdentifier(column), row);
}

bool GridModel::showsByte(int column) const {
    return heading_ == GridHeading::Bytes && isByteColumn(column);
}

ByteMark GridModel::mark(int row, int column) const {
    ByteMark all;
    if (showsByte(column))
        for (const GridMarks *marks : marks_) {
            const ByteMark mark = marks->markAt(qint64(byteIndex(row, column)));
            all.differs |= mark.differs;
            all.found |= mark.found;
            all.edited |= mark.edited;
        }
    return all;
}

QString GridModel::markWords(int row, int column) const {
    QStringList words;
    if (showsByte(column))
        for (const GridMarks *marks : marks_)
            words << marks->wordsAt(qint64(byteIndex(row, column)));
    return joinedWords(words, u", ");
}

bool GridModel::isBlank() const {
    if (rows_ != 1)
        return rows_ == 0;
    const CellValue first = cell(0, firstByteColumn);
    return first.missing || first.text.isEmpty();
}

qint64 GridModel::byteCount() const {
    if (heading_ != GridHeading::Bytes)
        return 0;
    const auto hasByte = [this](qint64 offset) {
        return !cell(int(offset / bytesInRow), columnOfByte(offset)).missing;
    };
    qint64 shown = 0;
    qint64 missing = qint64(rows_) * bytesInRow;
    while (shown < missing) {
        const qint64 middle = shown + (missing - shown) / 2;
        if (hasByte(middle))
            shown = middle + 1;
        else
            missing = middle;
    }
    return shown;
}

QByteArray GridModel::bytes(ByteRange range) const {
    QByteArray bytes(range.length, '\0');
    for (qint64 at = 0; at < range.length; ++at) {
        const qint64 offset = range.offset + at;
        const QString digits = cell(int(offset / bytesInRow), columnOfByte(offset)).text;
        bytes[at] = char(digits.toUShort(nullptr, hexadecimal));
    }
    return bytes;
}

bool GridModel::maySelectColumn(int column) const {
    return source_.tableView_shouldSelectTableColumn(table_, columnIdentifier(column));
}

int GridModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : rows_;
}

int GridModel::columnCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : gridColumns;
}

QVariant GridModel::data(const QModelIndex &index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return cell(index.row(), index.column()).text;
    case Qt::EditRole:
        // The address is no value of the byte that its cell edits.
        return index.column() == addressColumn ? QString() : cell(index.row(), index.column()).text;
    case FailedRole:
        return cell(index.row(), index.column()).failed;
    case Qt::AccessibleDescriptionRole:
        return cellDescription(index.row(), index.column());
    case Qt::ToolTipRole:
        return markWords(index.row(), index.column());
    default:
        return {};
    }
}

QString GridModel::cellDescription(int row, int column) const {
    const CellValue shown = cell(row, column);
    if (shown.failed)
        return tr("failed");
    return shown.missing ? tr("no byte") : markWords(row, column);
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= gridColumns)
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return title(section);
    case Qt::AccessibleTextRole:
        return columnDescription(section);
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(titleAlignment(section));
    default:
        return {};
    }
}

QString GridModel::title(int column) const {
    if (heading_ == GridHeading::Pins) {
        // The first row of the report numbers the pins, one title stands above all of them.
        if (column == addressColumn)
            return tr("Vector");
        return column == firstByteColumn ? tr("Pin") : QString();
    }
    if (column == addressColumn)
        return tr("Address");
    if (column == charactersColumn)
        return tr("Characters");
    return QString::number(column - firstByteColumn, hexadecimal).toUpper();
}

QString GridModel::columnDescription(int column) const {
    if (heading_ == GridHeading::Pins && column != addressColumn)
        return tr("Pin %1").arg(column);
    return title(column);
}

Qt::ItemFlags GridModel::flags(const QModelIndex &index) const {
    if (!index.isValid())
        return Qt::NoItemFlags;
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
    if (source_.tableView_shouldSelectRow(table_, index.row()))
        flags |= Qt::ItemIsSelectable;
    if (source_.tableView_shouldEditTableColumn_row(table_, columnIdentifier(index.column()),
                                                    index.row()))
        flags |= Qt::ItemIsEditable;
    return flags;
}

bool GridModel::setData(const QModelIndex &index, const QVariant &value, int role) {
    if (role != Qt::EditRole || !(flags(index) & Qt::ItemIsEditable))
        return false;
    source_.tableView_setObjectValue_forTableColumn_row(
        table_, value.toString(), columnIdentifier(index.column()), index.row());
    return true;
}

bool GridModel::canDropMimeData(const QMimeData *drag, Qt::DropAction action, int row, int,
                                const QModelIndex &) const {
    return source_.tableView_validateDrop_proposedRow_proposedDropOperation(
               table_, drag, row, int(action)) != DragOperation::None;
}

bool GridModel::dropMimeData(const QMimeData *, Qt::DropAction, int, int, const QModelIndex &) {
    return false;
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "grid/CellEdit.h"
#include "grid/GridColumns.h"
#include "grid/GridSource.h"
#include "grid/GridView.h"

#include <QList>
#include <QStringList>

/// A source of the grid over bytes that are text of one byte a character, or over a report's
/// cells. It carries out entries as the window's controller does, and keeps what it was asked.
class GridSourceDouble final : public GridSource {
public:
    explicit GridSourceDouble(QByteArray content = {}) : bytes(std::move(content)) {}

    quint64 numberOfRowsInTableView(QObject *) override {
        if (!report.isEmpty())
            return quint64(report.size());
        return quint64(length()) / bytesInRow + 1;
    }

    CellValue tableView_objectValueForTableColumn_row(QObject *table, const QString &column,
                                                      qint64 row) override {
        ++questions;
        asker = table;
        const int number = columnNumber(column);
        if (!report.isEmpty())
            return report.value(row).value(number);
        if (number == addressColumn)
            return {hex(quint64(row) * bytesInRow, 4)};
        return number == charactersColumn ? CellValue{characters(row)}
                                          : byteCell(qint64(byteIndex(row, number)));
    }

    bool tableView_shouldEditTableColumn_row(QObject *, const QString &, qint64) override {
        return editable;
    }

    void tableView_setObjectValue_forTableColumn_row(QObject *table, const QString &value,
                                                     const QString &column, qint64 row) override {
        entries.append(QStringLiteral("%1 %2 %3").arg(column).arg(row).arg(value));
        const auto edit = commitEntry(bytes, bytes.size(), value, columnNumber(column), row);
        if (!edit)
            return;
        auto *view = qobject_cast<GridView *>(table);
        if (!view)
            return;
        view->showEdit(*edit, edit->written());
    }

    bool tableView_shouldSelectRow(QObject *, qint64) override { return true; }
    bool tableView_shouldSelectTableColumn(QObject *, const QString &) override { return false; }
    DragOperation tableView_validateDrop_proposedRow_proposedDropOperation(QObject *,
                                                                           const QMimeData *,
                                                                           qint64, int) override {
        return dropAnswer;
    }

    QByteArray bytes;
    /// Where not 0, the length of a content of zeros that takes no memory.
    qint64 pretendedLength = 0;
    /// Where not empty, what is shown instead of bytes.
    QList<QList<CellValue>> report;
    bool editable = false;
    DragOperation dropAnswer = DragOperation::None;

    /// Number of cells that were asked for.
    qint64 questions = 0;
    /// The table that asked last.
    QObject *asker = nullptr;
    /// The entries that were committed: column, row and text.
    QStringList entries;

private:
    qint64 length() const { return pretendedLength > 0 ? pretendedLength : bytes.size(); }

    static QString hex(quint64 value, int digits) {
        return QString::number(value, 16).toUpper().rightJustified(digits, u'0');
    }

    CellValue byteCell(qint64 index) const {
        if (index >= length())
            return {.text = QStringLiteral("XX"), .missing = true};
        return {hex(pretendedLength > 0 ? 0 : uchar(bytes.at(index)), 2)};
    }

    QString characters(qint64 row) const {
        return pretendedLength > 0 ? QString()
                                   : QString::fromLatin1(bytes.mid(row * bytesInRow, bytesInRow));
    }
};

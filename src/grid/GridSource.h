// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QString>

class QMimeData;

/// What one cell shows.
struct CellValue {
    QString text;
    /// The cell is a failed field of a logic test, to be shown in red and bold.
    bool failed = false;
    /// The cell could show a byte, and there is none.
    bool missing = false;

    friend bool operator==(const CellValue &, const CellValue &) = default;
};

/// A drag operation as the grid answers it.
enum class DragOperation { None = 0, Generic = 4 };

/// Where the grid gets its contents and takes its edits; the window's controller implements it.
/// Columns are told by their identifiers "0" (address), "1" to "16" (bytes 0 to 15 of the row)
/// and "17" (characters), never by position or title. \a table is the grid that asks.
class GridSource {
public:
    GridSource() = default;
    GridSource(const GridSource &) = delete;
    GridSource &operator=(const GridSource &) = delete;
    virtual ~GridSource() = default;

    virtual quint64 numberOfRowsInTableView(QObject *table) = 0;
    virtual CellValue tableView_objectValueForTableColumn_row(QObject *table, const QString &column,
                                                              qint64 row) = 0;
    virtual bool tableView_shouldEditTableColumn_row(QObject *table, const QString &column,
                                                     qint64 row) = 0;
    virtual void tableView_setObjectValue_forTableColumn_row(QObject *table, const QString &value,
                                                             const QString &column, qint64 row) = 0;
    virtual bool tableView_shouldSelectRow(QObject *table, qint64 row) = 0;
    virtual bool tableView_shouldSelectTableColumn(QObject *table, const QString &column) = 0;
    virtual DragOperation
    tableView_validateDrop_proposedRow_proposedDropOperation(QObject *table, const QMimeData *drag,
                                                             qint64 row, int operation) = 0;
};

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "grid/GridColumns.h"
#include "grid/GridPresentation.h"
#include "grid/GridSource.h"
#include "image/DisplayText.h"

/// The bytes of one image for a grid, to look at.
class ReadOnlyImage final : public GridSource {
public:
    /// Shows \a bytes (null: none) from now on, as they are at each moment. To be called again when
    /// they change.
    void setBytes(const ByteBuffer &bytes);

    quint64 numberOfRowsInTableView(QObject *) override { return rowCount(content()); }
    CellValue tableView_objectValueForTableColumn_row(QObject *, const QString &column,
                                                      qint64 row) override {
        return cellValue(content(), column, row);
    }
    bool tableView_shouldEditTableColumn_row(QObject *, const QString &, qint64) override {
        return false;
    }
    void tableView_setObjectValue_forTableColumn_row(QObject *, const QString &, const QString &,
                                                     qint64) override {}
    bool tableView_shouldSelectRow(QObject *, qint64) override { return true; }
    bool tableView_shouldSelectTableColumn(QObject *, const QString &) override { return false; }
    DragOperation tableView_validateDrop_proposedRow_proposedDropOperation(QObject *,
                                                                           const QMimeData *drag,
                                                                           qint64, int) override {
        return dropOperation(drag);
    }

private:
    ShownContent content() const { return {tab_, bytes_, text_, headers_, rows_}; }

    const QString tab_ = readTabIdentifier();
    ByteBuffer bytes_;
    DisplayText text_;
    const QStringList headers_ = {};
    const QList<QStringList> rows_ = {};
};

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "files/ByteBuffer.h"
#include "grid/GridSource.h"
#include "image/DisplayText.h"

#include <QList>
#include <QString>
#include <QStringList>

class QMimeData;

/// What the grid presents at this moment. Only references: it lives no longer than the question
/// that it is made for.
struct ShownContent {
    QString tabIdentifier;
    const ByteBuffer &display_data;
    const DisplayText &strData;
    const QStringList &logictest_headers;
    const QList<QStringList> &logictest_rows;
};

/// Number of rows of \a shown, from the lengths alone: for the logic test the results and a
/// header row, else the whole rows of bytes and one more, so that every dump ends in a row that
/// is not full.
quint64 rowCount(const ShownContent &shown);

/// The value of one cell of \a shown, computed in constant time. Any \a column and any \a row
/// from 0 on may be asked for; cells beyond the contents show "XX" (bytes) or nothing.
CellValue cellValue(const ShownContent &shown, const QString &column, qint64 row);

/// The answer to a drag over the grid: generic if \a drag (may be null) offers files, else none.
DragOperation dropOperation(const QMimeData *drag);

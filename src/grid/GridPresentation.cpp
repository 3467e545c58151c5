// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "grid/GridPresentation.h"

#include "files/TextLines.h"
#include "grid/GridColumns.h"
#include "image/AddressWords.h"
#include "image/BytesAsText.h"
#include "image/RowText.h"
#include "language/LogicField.h"
#include "language/PinFailures.h"

#include <QMimeData>
#include <QUrl>

#include <algorithm>

static_assert(pinsInGrid == gridColumns - 1);

namespace {

CellValue byteCell(const ShownContent &shown, int column, qint64 row) {
    const quint64 index = byteIndex(row, column);
    const bool hasByte =
        index < quint64(shown.strData.length()) && index < quint64(lengthOf(shown.display_data));
    if (!hasByte)
        return {.text = rowText::missingByte.toString(), .missing = true};
    return {byteDigits(quint8(shown.display_data->constData()[index]))};
}

/// True if the text has half as many units as there are bytes. Then it is shown as it stands but
/// for its line breaks; otherwise control characters show as spaces.
bool isHalfAsLong(const ShownContent &shown) {
    return shown.strData.length() == lengthOf(shown.display_data) / 2;
}

QString charactersCell(const ShownContent &shown, qint64 row) {
    const quint64 start = quint64(row) * bytesInRow;
    if (start >= quint64(shown.strData.length()))
        return {};

    const bool keepsControls = isHalfAsLong(shown);
    QString text = shown.strData.units(qsizetype(start), bytesInRow);
    for (QChar &character : text) {
        if (keepsControls ? isLineBreak(character) : character < u' ')
            character = u' ';
    }
    return text;
}

CellValue hexCell(const ShownContent &shown, const QString &column, qint64 row) {
    if (column == columnIdentifier(addressColumn))
        return {addressWords(row * bytesInRow)};
    if (column == columnIdentifier(charactersColumn))
        return {charactersCell(shown, row)};
    return byteCell(shown, columnNumber(column), row);
}

/// The row of pin numbers above the results.
QString pinCell(const ShownContent &shown, const QString &column) {
    const int number = columnNumber(column);
    const bool hasPin = number != addressColumn && number <= shown.logictest_headers.size();
    return hasPin ? column : QString();
}

CellValue resultCell(const ShownContent &shown, const QString &column, const QStringList &fields) {
    const int number = columnNumber(column);
    const bool hasField = number >= 0 && number <= charactersColumn && number < fields.size() &&
                          number <= shown.logictest_headers.size();
    if (!hasField)
        return {};
    const ShownField field = shownField(fields[number]);
    return {field.text, field.failed};
}

} // namespace

quint64 rowCount(const ShownContent &shown) {
    if (shown.tabIdentifier == logicTabIdentifier())
        return quint64(shown.logictest_rows.size()) + 1;
    return quint64(lengthOf(shown.display_data)) / bytesInRow + 1;
}

CellValue cellValue(const ShownContent &shown, const QString &column, qint64 row) {
    // A view may still ask for rows of a longer report that has gone: they are drawn as bytes.
    const bool isReport =
        shown.tabIdentifier == logicTabIdentifier() && row <= shown.logictest_rows.size();
    if (!isReport)
        return hexCell(shown, column, row);
    if (row == 0)
        return {pinCell(shown, column), false};
    return resultCell(shown, column, shown.logictest_rows[row - 1]);
}

DragOperation dropOperation(const QMimeData *drag) {
    if (!drag)
        return DragOperation::None;
    const QList<QUrl> urls = drag->urls();
    const bool offersFiles =
        std::any_of(urls.begin(), urls.end(), [](const QUrl &url) { return url.isLocalFile(); });
    return offersFiles ? DragOperation::Generic : DragOperation::None;
}

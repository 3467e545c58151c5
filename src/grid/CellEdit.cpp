// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "grid/CellEdit.h"

#include "base/Digits.h"
#include "base/HugePages.h"
#include "base/Units.h"
#include "grid/GridColumns.h"
#include "image/NumberScanning.h"

#include <QCoreApplication>

#include <array>
#include <cstring>

namespace {

bool isQuote(QChar character) {
    return character == u'"' || character == u'\'';
}

QStringView withoutOuterQuotes(QStringView text) {
    while (!text.isEmpty() && isQuote(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isQuote(text.back()))
        text.chop(1);
    return text;
}

/// One byte for each UTF-16 unit, so that the bytes written are as many as the user counts.
QByteArray oneByteForEachUnit(QStringView text) {
    QByteArray bytes;
    bytes.reserve(text.size());
    for (const QChar unit : text)
        bytes.append(unit.unicode() > maxByte ? '?' : char(unit.unicode()));
    return bytes;
}

/// Overwrites from \a offset on, and lengthens the buffer where that is needed.
CellEdit overwrite(QByteArray &buffer, qsizetype offset, const QByteArray &bytes) {
    // Bytes that another buffer shares are copied here, faster than a change would copy them.
    if (!buffer.isDetached())
        buffer = copiedBytes(buffer);
    const QByteArray replaced = buffer.mid(offset, bytes.size());
    const qsizetype growth = bytes.size() - replaced.size();
    if (growth > 0)
        buffer.resize(buffer.size() + growth);
    if (!bytes.isEmpty())
        std::memcpy(buffer.data() + offset, bytes.constData(), size_t(bytes.size()));
    return {.offset = offset, .bytesWritten = bytes.size(), .grewBy = growth, .replaced = replaced};
}

/// The byte that a hexadecimal entry stands for. Zero is refused like a value that is too large:
/// it is what an entry with a slip of the finger most often reads as.
std::optional<char> enteredByte(const QString &entry) {
    const std::optional<quint32> value = scanHexInt(entry);
    if (!value || *value < 1 || *value > maxByte)
        return std::nullopt;
    return char(*value);
}

CellEdit writeText(QByteArray &buffer, qsizetype offset, const QString &entry) {
    return overwrite(buffer, offset, oneByteForEachUnit(withoutOuterQuotes(entry)));
}

CellEdit writeByte(QByteArray &buffer, qsizetype offset, const QString &entry) {
    const char before = buffer.constData()[offset];
    const std::optional<char> byte = enteredByte(entry);
    CellEdit edit = overwrite(buffer, offset, QByteArray(1, byte.value_or(before)));
    edit.rejected = !byte;
    return edit;
}

} // namespace

CellEditOutcome commitEntry(QByteArray &output_data, qsizetype strDataLength, const QString &entry,
                            int columnNumber, qint64 row) {
    if (columnNumber == charactersColumn)
        return std::nullopt;

    // Unsigned, so that what lies before the first byte counts as lying past the end.
    const quint64 index = byteIndex(row, columnNumber);
    if (index >= quint64(strDataLength) || index >= quint64(output_data.size()) || entry.isEmpty())
        return std::nullopt;

    const auto offset = qsizetype(index);
    return isQuote(entry.front()) ? writeText(output_data, offset, entry)
                                  : writeByte(output_data, offset, entry);
}

QString rejectionRemark(const QString &entry) {
    return QCoreApplication::translate(
               "CellEdit",
               "\u201c%1\u201d was not taken: a byte is a hexadecimal value from 01 to FF.")
        .arg(entry);
}

QString noMemoryForEditRemark() {
    return QCoreApplication::translate(
        "CellEdit", "There is no memory for this edit: the data to burn are as they were.");
}

QString hexDigitFor(quint16 value) {
    static const std::array<QString, 6> letters = {QStringLiteral("A"), QStringLiteral("B"),
                                                   QStringLiteral("C"), QStringLiteral("D"),
                                                   QStringLiteral("E"), QStringLiteral("F")};
    if (value < decimal)
        return QString::number(value);
    const size_t letter = value - size_t(decimal);
    return letter < letters.size() ? letters[letter] : QString();
}

QString hexValue(quint64 value) {
    const quint64 high = value >> bitsInHexDigit;
    const quint64 low = value - high;
    return hexDigitFor(quint16(high)) + hexDigitFor(quint16(low));
}

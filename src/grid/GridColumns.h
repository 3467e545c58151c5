// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Units.h"

#include <QString>
#include <QStringView>

/// The identifiers by which the grid's columns and the window's tabs are told apart.

/// Column numbers, equal to the integer value of the columns' identifiers.
inline constexpr int addressColumn = 0;
inline constexpr int firstByteColumn = 1;
inline constexpr int lastByteColumn = firstByteColumn + bytesInRow - 1;
inline constexpr int charactersColumn = lastByteColumn + 1;
inline constexpr int gridColumns = charactersColumn + 1;

/// The identifier of the tab that shows the data read from the chip.
inline QString readTabIdentifier() {
    return QStringLiteral("0");
}
/// The identifier of the tab that shows the data to burn, the only one that may be edited.
inline QString burnTabIdentifier() {
    return QStringLiteral("1");
}
/// The identifier of the tab that shows the results of a logic test.
inline QString logicTabIdentifier() {
    return QStringLiteral("2");
}

/// The identifier of column \a number, 0 to 17: its decimal text.
const QString &columnIdentifier(int number);

/// The integer value of \a identifier: its leading decimal number (white space and a sign may
/// stand before it), 0 when it has none, held within 32 bits.
int columnNumber(QStringView identifier);

/// True for the columns that show one byte each on the hex tabs.
constexpr bool isByteColumn(int number) {
    return number >= firstByteColumn && number <= lastByteColumn;
}

/// The column of the byte at \a offset, in row \a offset / bytesInRow.
constexpr int columnOfByte(qint64 offset) {
    return firstByteColumn + int(offset % bytesInRow);
}

/// Offset of the byte that a cell of the hex dump stands for; row 0's address cell wraps around
/// to beyond every length.
constexpr quint64 byteIndex(qint64 row, int column) {
    return quint64(row) * bytesInRow + quint64(qint64(column)) - firstByteColumn;
}

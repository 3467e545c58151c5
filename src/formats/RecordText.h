// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Digits.h"
#include "files/TextLines.h"

#include <QByteArrayView>

#include <array>
#include <cstddef>

// What the lines of both formats are made of.

namespace intelHex {
/// What a record is for.
enum Type : quint32 { Data, LastRecord, SegmentBase, SegmentStart, LinearBase, LinearStart };
} // namespace intelHex

/// Space and tabulator, and what else moves the paper.
inline constexpr bool isBlank(char character) {
    return character == ' ' || character == '\t' || character == '\v' || character == '\f';
}

/// \a line without the blanks around it.
constexpr QByteArrayView withoutBlanks(QByteArrayView line) {
    while (!line.isEmpty() && isBlank(line.front()))
        line = line.sliced(1);
    while (!line.isEmpty() && isBlank(line.back()))
        line.chop(1);
    return line;
}

/// The values of all hexadecimal digits by their codes; -1 for what is none.
inline constexpr std::array<signed char, 256> hexDigitValues = [] {
    std::array<signed char, 256> values{};
    for (std::size_t code = 0; code < values.size(); ++code)
        values[code] = qint8(digitValue(QChar(char16_t(code)), hexadecimal).value_or(-1));
    return values;
}();

/// The value of \a digit; negative if it is none.
inline int valueOfHexDigit(char digit) {
    return hexDigitValues[quint8(digit)];
}

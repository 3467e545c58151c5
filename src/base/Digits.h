// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QChar>
#include <QString>

#include <optional>

inline constexpr int binaryBase = 2;
inline constexpr int octal = 8;
inline constexpr int decimal = 10;
inline constexpr int hexadecimal = 16;

inline constexpr int bitsInHexDigit = 4;
inline constexpr int hexDigitsInByte = 2;

/// The value of \a digit in \a base, up to 16; nothing if it is none. Letters of either case count,
/// digits of other scripts than ASCII do not.
constexpr std::optional<int> digitValue(QChar digit, int base) {
    const char16_t unit = digit.unicode();
    int value = base;
    if (unit >= u'0' && unit <= u'9')
        value = unit - u'0';
    else if (unit >= u'a' && unit <= u'f')
        value = unit - u'a' + decimal;
    else if (unit >= u'A' && unit <= u'F')
        value = unit - u'A' + decimal;
    return value < base ? std::optional(value) : std::nullopt;
}

/// \a value, which is not negative, in hexadecimal digits with capital letters, \a atLeast of them
/// by zeros in front.
template <typename Integer>
QString hexDigits(Integer value, int atLeast = 1) {
    return QString::number(qulonglong(value), hexadecimal).toUpper().rightJustified(atLeast, u'0');
}

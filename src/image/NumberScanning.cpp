// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "image/NumberScanning.h"

#include <algorithm>
#include <limits>

namespace {

constexpr quint64 decimal = 10;
constexpr quint64 hexadecimal = 16;

QStringView withoutLeadingSpace(QStringView text) {
    while (!text.isEmpty() && text.front().isSpace())
        text = text.sliced(1);
    return text;
}

// Only ASCII digits count; other scripts' digits end a number like any other character.
std::optional<quint64> digitValue(QChar digit) {
    const char16_t unit = digit.unicode();
    if (unit >= u'0' && unit <= u'9')
        return unit - u'0';
    if (unit >= u'a' && unit <= u'f')
        return unit - u'a' + decimal;
    if (unit >= u'A' && unit <= u'F')
        return unit - u'A' + decimal;
    return std::nullopt;
}

// The number that text begins with, but never more than limit.
std::optional<quint64> scanDigits(QStringView text, quint64 base, quint64 limit) {
    std::optional<quint64> number;
    for (const QChar character : text) {
        const std::optional<quint64> digit = digitValue(character);
        if (!digit || *digit >= base)
            break;
        number = std::min(number.value_or(0) * base + *digit, limit);
    }
    return number;
}

} // namespace

std::optional<quint32> scanHexInt(QStringView text) {
    text = withoutLeadingSpace(text);
    const bool prefixed = text.startsWith(u"0x") || text.startsWith(u"0X");
    if (prefixed && text.size() > 2 && digitValue(text.at(2)))
        text = text.sliced(2);
    const auto number = scanDigits(text, hexadecimal, std::numeric_limits<quint32>::max());
    return number ? std::optional(static_cast<quint32>(*number)) : std::nullopt;
}

std::optional<qint32> scanInt(QStringView text) {
    text = withoutLeadingSpace(text);
    const bool negative = text.startsWith(u'-');
    if (negative || text.startsWith(u'+'))
        text = text.sliced(1);
    constexpr quint64 largest = std::numeric_limits<qint32>::max();
    const auto number = scanDigits(text, decimal, negative ? largest + 1 : largest);
    if (!number)
        return std::nullopt;
    const auto value = static_cast<qint64>(*number);
    return static_cast<qint32>(negative ? -value : value);
}

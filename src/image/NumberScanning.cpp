// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "image/NumberScanning.h"

#include "base/Digits.h"

#include <algorithm>
#include <limits>

namespace {

QStringView withoutLeadingSpace(QStringView text) {
    while (!text.isEmpty() && text.front().isSpace())
        text = text.sliced(1);
    return text;
}

/// The number that \a text begins with, but never more than \a limit.
std::optional<quint64> scanDigits(QStringView text, int base, quint64 limit) {
    std::optional<quint64> number;
    for (const QChar character : text) {
        const std::optional<int> digit = digitValue(character, base);
        if (!digit)
            break;
        number = std::min(number.value_or(0) * quint64(base) + quint64(*digit), limit);
    }
    return number;
}

} // namespace

std::optional<quint32> scanHexInt(QStringView text) {
    text = withoutLeadingSpace(text);
    const bool prefixed = text.startsWith(u"0x") || text.startsWith(u"0X");
    if (prefixed && text.size() > 2 && digitValue(text.at(2), hexadecimal))
        text = text.sliced(2);
    const auto number = scanDigits(text, hexadecimal, std::numeric_limits<quint32>::max());
    return number ? std::optional(quint32(*number)) : std::nullopt;
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
    const auto value = qint64(*number);
    return qint32(negative ? -value : value);
}

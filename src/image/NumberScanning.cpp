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

/// The number that \a text begins with, but never more than \a limit. \a rest, if given, becomes
/// what follows it.
std::optional<quint64> scanDigits(QStringView text, int base, quint64 limit, QStringView *rest) {
    std::optional<quint64> number;
    qsizetype end = 0;
    for (; end < text.size(); ++end) {
        const std::optional<int> digit = digitValue(text[end], base);
        if (!digit)
            break;
        number = std::min(number.value_or(0) * quint64(base) + quint64(*digit), limit);
    }
    if (rest)
        *rest = text.sliced(end);
    return number;
}

} // namespace

std::optional<quint32> scanHexInt(QStringView text, QStringView *rest) {
    text = withoutLeadingSpace(text);
    const bool prefixed = text.startsWith(u"0x") || text.startsWith(u"0X");
    if (prefixed && text.size() > 2 && digitValue(text.at(2), hexadecimal))
        text = text.sliced(2);
    const auto number = scanDigits(text, hexadecimal, std::numeric_limits<quint32>::max(), rest);
    return number ? std::optional(quint32(*number)) : std::nullopt;
}

std::optional<qint32> scanInt(QStringView text, QStringView *rest) {
    text = withoutLeadingSpace(text);
    const bool negative = text.startsWith(u'-');
    if (negative || text.startsWith(u'+'))
        text = text.sliced(1);
    constexpr quint64 largest = std::numeric_limits<qint32>::max();
    const auto number = scanDigits(text, decimal, negative ? largest + 1 : largest, rest);
    if (!number)
        return std::nullopt;
    const auto value = qint64(*number);
    return qint32(negative ? -value : value);
}

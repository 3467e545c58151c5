// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "FuzzInput.h"
#include "image/NumberScanning.h"

#include <QRegularExpression>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>

// Numbers are read as a pattern and the toolkit read them.

namespace {

/// The ASCII characters that \a text begins with, behind its white space; patterns refuse texts
/// that are no characters.
QString beginningOf(const QString &text) {
    const auto isSpace = [](QChar unit) { return unit.isSpace(); };
    const auto isAscii = [](QChar unit) { return unit.unicode() < 0x80; };
    const auto begin = std::find_if_not(text.begin(), text.end(), isSpace);
    return QString(begin, std::find_if_not(begin, text.end(), isAscii) - begin);
}

std::optional<quint32> expectedHex(const QString &text) {
    static const QRegularExpression number(
        QStringLiteral("^(?:0[xX](?=[0-9A-Fa-f]))?0*([0-9A-Fa-f]*)"));
    static const QRegularExpression digit(QStringLiteral("^[0-9A-Fa-f]"));
    if (!digit.match(text).hasMatch())
        return std::nullopt;
    const QString digits = number.match(text).captured(1);
    constexpr qsizetype most = 8;
    return digits.size() > most ? std::numeric_limits<quint32>::max() : digits.toUInt(nullptr, 16);
}

std::optional<qint32> expectedDecimal(const QString &text) {
    static const QRegularExpression number(QStringLiteral("^([+-]?)0*([0-9]*)"));
    static const QRegularExpression digit(QStringLiteral("^[+-]?[0-9]"));
    if (!digit.match(text).hasMatch())
        return std::nullopt;
    const QRegularExpressionMatch match = number.match(text);
    constexpr qsizetype most = 10;
    const qint64 limit = qint64(1) << 40;
    const QString digits = match.captured(2);
    const qint64 size = digits.size() > most ? limit : digits.toLongLong();
    const qint64 value = match.captured(1) == u"-" ? -size : size;
    return qint32(std::clamp<qint64>(value, std::numeric_limits<qint32>::min(),
                                     std::numeric_limits<qint32>::max()));
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    FuzzInput input(data, size);
    const bool isWide = input.truth();
    const QString text = isWide ? anyText(input.rest()) : QString::fromUtf8(input.rest());
    const QString number = beginningOf(text);
    mustHold(scanHexInt(text) == expectedHex(number), "a hexadecimal number is read as written");
    mustHold(scanInt(text) == expectedDecimal(number), "a decimal number is read as written");
    return 0;
}

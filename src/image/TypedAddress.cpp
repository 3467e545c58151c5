// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "image/TypedAddress.h"

#include "base/Digits.h"

#include <QString>

#include <limits>

namespace {

/// The toolkit also takes a sign, which may stand once at most.
std::optional<quint64> unsignedNumber(QStringView digits, int base) {
    if (digits.startsWith(u'+') || digits.startsWith(u'-') || digits.contains(u' '))
        return std::nullopt;
    bool isNumber = false;
    const quint64 number = digits.toULongLong(&isNumber, base);
    return isNumber ? std::optional(number) : std::nullopt;
}

} // namespace

std::optional<quint64> TypedAddress::offset(quint64 cursor) const {
    if (from == From::Start)
        return distance;
    if (from == From::Back)
        return distance <= cursor ? std::optional(cursor - distance) : std::nullopt;
    const bool isTooFar = distance > std::numeric_limits<quint64>::max() - cursor;
    return isTooFar ? std::nullopt : std::optional(cursor + distance);
}

std::optional<TypedAddress> typedAddress(QStringView text) {
    text = text.trimmed();
    TypedAddress address;
    if (text.startsWith(u'+'))
        address.from = TypedAddress::From::Forward;
    else if (text.startsWith(u'-'))
        address.from = TypedAddress::From::Back;
    if (address.from != TypedAddress::From::Start)
        text = text.sliced(1);
    const bool isDecimal = text.startsWith(u'#');
    const auto number =
        isDecimal ? unsignedNumber(text.sliced(1), decimal) : unsignedNumber(text, hexadecimal);
    if (!number)
        return std::nullopt;
    address.distance = *number;
    return address;
}

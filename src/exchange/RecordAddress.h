// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "image/TypedAddress.h"

#include <QString>

#include <limits>
#include <optional>

/// The address of a record that was \a typed, from 0 to FFFFFFFF; nothing if it is none. One that
/// is counted from elsewhere, such as "+10", is none.
inline std::optional<qint64> recordAddress(const QString &typed) {
    const auto address = typedAddress(typed);
    if (!address || address->from != TypedAddress::From::Start ||
        address->distance > std::numeric_limits<quint32>::max())
        return std::nullopt;
    return qint64(address->distance);
}

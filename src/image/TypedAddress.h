// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QStringView>

#include <optional>

/// An address as somebody types it.
struct TypedAddress {
    enum class From {
        Start,   ///< of the image
        Forward, ///< from the cursor on
        Back,    ///< from the cursor back
    };
    quint64 distance = 0; ///< in bytes
    From from = From::Start;

    friend bool operator==(const TypedAddress &, const TypedAddress &) = default;

    /// The offset that is meant while the cursor is at \a cursor; nothing if that is before the
    /// first byte or beyond 64 bits.
    std::optional<quint64> offset(quint64 cursor) const;
};

/// What \a text means: hexadecimal digits of either case, which "0x" may stand before, or decimal
/// ones behind "#"; "+" or "-" at the very start counts from the cursor. Blanks around it do not
/// count. Nothing if it is something else or needs more than 64 bits.
std::optional<TypedAddress> typedAddress(QStringView text);

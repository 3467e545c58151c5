// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "image/TypedRange.h"

#include <QString>

// What is said of addresses. All of it is translated.

/// \a offset as an address: four upper-case digits at least.
QString addressWords(quint64 offset);
/// The same; it must not be negative.
inline QString addressWords(qint64 offset) {
    return addressWords(quint64(offset));
}
/// What was \a typed is no address.
QString noAddressWords(const QString &typed);
/// There is no byte at the address that was \a typed among \a count bytes, of which there is one
/// at least.
QString noByteWords(const QString &typed, qint64 count);
/// Why what was \a typed stands for none of \a count bytes.
QString rangeTroubleWords(RangeTrouble trouble, const TypedRange &typed, qint64 count);

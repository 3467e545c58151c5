// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Units.h"

#include <QByteArray>
#include <QByteArrayView>

#include <memory>

/// A shared reference to an image's bytes; null is an absent buffer, which reads as length 0
/// everywhere. Two references to one object show each other's edits without copying. Readers go
/// through std::as_const or constData(): a non-const access of a QByteArray may copy it whole.
using ByteBuffer = std::shared_ptr<QByteArray>;

/// Length in bytes; 0 for an absent buffer.
inline qsizetype lengthOf(const ByteBuffer &buffer) {
    return buffer ? buffer->size() : 0;
}

/// The bytes of \a buffer to look at; none of an absent one.
inline QByteArrayView viewOf(const ByteBuffer &buffer) {
    return buffer ? QByteArrayView(buffer->constData(), buffer->size()) : QByteArrayView();
}

/// True if \a known refers to the very object that \a buffer is; they may both be none. By their
/// owners: one that has gone is neither none nor another at its address.
inline bool isSameBuffer(const ByteBuffer &buffer, const std::weak_ptr<QByteArray> &known) {
    return !known.owner_before(buffer) && !buffer.owner_before(known);
}

/// Some bytes of a buffer that follow each other.
struct ByteRange {
    qint64 offset = 0;
    qint64 length = 0;

    /// The offset of the first byte behind them.
    qint64 end() const { return offset + length; }
};

/// The largest image that the program composes or loads: 1 GiB.
inline constexpr qint64 largestImage = gibibyte;

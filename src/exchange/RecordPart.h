// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"
#include "base/Units.h"
#include "files/ByteBuffer.h"
#include "formats/RecordFormat.h"

/// The longest text of a part that is read at once, in bytes, and the largest image of it.
inline constexpr qsizetype largestPartText = 4 * mebibyte;
inline constexpr qint64 largestPartImage = 4 * mebibyte;

/// Why a text of records is not read at once.
enum class PartTrouble {
    NeedsUser, ///< something is wrong with it, or it is too long
    NoMemory   ///< for its bytes
};

/// The bytes that \a text of records stands for, from the usual base on and with \a fill in gaps,
/// read at once.
Result<ByteBuffer, PartTrouble> bytesOfRecordPart(const QByteArray &text, RecordFormat format,
                                                  quint8 fill);

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"
#include "files/ByteBuffer.h"

#include <QString>

/// Bytes of an image as somebody types them: from an address to another one, or so many.
struct TypedRange {
    enum class Until { Address, Length };

    QString first;
    QString end; ///< the last address or the number of bytes
    Until until = Until::Address;
};

/// Why what was typed stands for no bytes.
enum class RangeTrouble {
    NoBytes,      ///< there are none in the image
    FirstUnread,  ///< the first address is none
    LastUnread,   ///< the last address is none
    LengthUnread, ///< the length is no number
    FirstBeyond,  ///< there is no byte at the first address
    LastBeyond,   ///< there is no byte at the last address
    LengthBeyond, ///< there are fewer bytes from the first address on
    LastBeforeFirst,
    LengthZero,
};

/// The bytes that \a typed stands for in an image of \a count bytes while the cursor is at
/// \a cursor. Numbers are as typedAddress() takes them; a length has no sign.
Result<ByteRange, RangeTrouble> bytesOf(const TypedRange &typed, qint64 cursor, qint64 count);

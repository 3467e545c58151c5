// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArrayView>
#include <QtGlobal>

/// What the bytes of UTF-8 text say of themselves. A character begins with one byte and goes on
/// with continuation bytes, each of which holds bitsPerContinuation of its bits.
namespace utf8 {

/// What a file may begin with to say that it is UTF-8.
inline constexpr QByteArrayView byteOrderMark("\xEF\xBB\xBF");

inline constexpr quint8 firstContinuation = 0x80;
inline constexpr quint8 lastContinuation = 0xBF;
inline constexpr int bitsPerContinuation = 6;
inline constexpr quint8 continuationBits = 0x3F;

constexpr bool isContinuation(quint8 byte) {
    return byte >= firstContinuation && byte <= lastContinuation;
}

/// How many bytes a character has that begins with \a first; 1 also for a byte that begins none.
constexpr int lengthOfCharacter(quint8 first) {
    if (first >= 0xC2 && first <= 0xDF)
        return 2;
    if (first >= 0xE0 && first <= 0xEF)
        return 3;
    return first >= 0xF0 && first <= 0xF4 ? 4 : 1;
}

/// The bits of the character that \a first, its first byte, holds; \a length is
/// lengthOfCharacter() of it, and more than 1.
constexpr char32_t bitsOfFirst(quint8 first, int length) {
    return first & (0x7F >> length);
}

} // namespace utf8

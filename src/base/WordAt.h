// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

#include <cstring>

/// In each byte of a word, the lowest bit or the highest.
inline constexpr quint64 lowestBitOfBytes = 0x0101010101010101;
inline constexpr quint64 highestBitOfBytes = lowestBitOfBytes << 7;

/// The \a Word, an unsigned number, whose bytes are those at \a bytes, which need not be aligned.
template <typename Word>
Word wordAt(const char *bytes) {
    Word word;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

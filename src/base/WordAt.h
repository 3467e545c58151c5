// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstring>

/// The \a Word, an unsigned number, whose bytes are those at \a bytes, which need not be aligned.
template <typename Word>
Word wordAt(const char *bytes) {
    Word word;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

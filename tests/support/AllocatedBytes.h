// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

#include <malloc.h>

/// What this process has allocated and not freed. What is in memory says less of a short time: the
/// allocator cannot give back a page while one byte of it is in use, and which pages these are
/// differs by a megabyte from one time to the next. Under AddressSanitizer it says nothing.
inline qint64 allocatedBytes() {
    const struct mallinfo2 taken = ::mallinfo2();
    return static_cast<qint64>(taken.uordblks) + static_cast<qint64>(taken.hblkhd);
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "base/HugePages.h"

#include "base/Units.h"

#ifdef Q_OS_LINUX
#include <sys/mman.h>
#endif

#include <cstdint>
#include <cstring>

QByteArray uninitializedBytes(qsizetype size) {
    QByteArray bytes(size, Qt::Uninitialized);
#ifdef MADV_HUGEPAGE
    constexpr std::uintptr_t hugePage = 2 * mebibyte;
    const auto begin = reinterpret_cast<std::uintptr_t>(bytes.constData());
    const std::uintptr_t firstPage = (begin + hugePage - 1) & ~(hugePage - 1);
    const std::uintptr_t end = (begin + std::uintptr_t(size)) & ~(hugePage - 1);
    // Only a hint: if it is refused, the bytes are the same and merely slower to fill.
    if (firstPage < end)
        madvise(bytes.data() + (firstPage - begin), end - firstPage, MADV_HUGEPAGE);
#endif
    return bytes;
}

QByteArray copiedBytes(const QByteArray &bytes) {
    QByteArray copy = uninitializedBytes(bytes.size());
    if (!bytes.isEmpty())
        std::memcpy(copy.data(), bytes.constData(), size_t(bytes.size()));
    return copy;
}

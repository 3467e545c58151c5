// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

/// A new array of \a size bytes of no particular value. A large one lies in huge pages where the
/// system has them: filling 64 MiB page by page costs several times what writing it does.
/// Throws std::bad_alloc if there is not enough memory.
QByteArray uninitializedBytes(qsizetype size);

/// A copy of \a bytes in memory as that of uninitializedBytes(). Throws std::bad_alloc likewise.
QByteArray copiedBytes(const QByteArray &bytes);

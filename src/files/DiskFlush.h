// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"

#include <cerrno>
#include <unistd.h>

/// Has the disk take what was written to the open file \a file, and waits for as long as it needs.
/// It has worked, too, where the file system has no such call.
inline Result<void> flushToDisk(int file) {
    if (::fdatasync(file) != 0 && errno != EINVAL && errno != ENOTSUP)
        return Failure::ofSystem(errno);
    return {};
}

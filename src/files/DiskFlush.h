// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cerrno>
#include <unistd.h>

/// Has the disk take what was written to the open file \a file, and waits for as long as it needs.
/// The system's number of the error; 0 if it has worked, and where the file system has no such
/// call.
inline int errorOfFlushing(int file) {
    const bool isDone = ::fdatasync(file) == 0 || errno == EINVAL || errno == ENOTSUP;
    return isDone ? 0 : errno;
}

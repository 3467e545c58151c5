// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/FileDescriptor.h"
#include "base/Result.h"

#include <QDeadlineTimer>
#include <QString>

/// The right to replace one file. Two programs that each load a file, change what they loaded and
/// save it would lose one of the changes; whoever takes the lock before loading does not. It is
/// the kernel's own, on the file itself, so it goes with its process however that ends; where the
/// file system knows no locks, everybody gets it.
class FileLock {
public:
    /// Takes the lock of the regular file at \a path, for which this program must have the right
    /// to write; where there is none, an empty one is made. Waits for another holder until
    /// \a deadline.
    static Result<FileLock> take(const QString &path, QDeadlineTimer deadline);

private:
    explicit FileLock(FileDescriptor file);

    FileDescriptor file_;
};

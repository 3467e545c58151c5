// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/FileDescriptor.h"

#include <QString>

/// The folder for the lock and the socket: \a runtimeFolder if it is the user's own, else
/// \a ownFolder, which is made if it is missing.
QString folderForLocks(const QString &runtimeFolder, const QString &ownFolder);

/// The right to use one temporary folder: two programs that exchange images with the tool through
/// the same four files would burn each other's data. The lock is the kernel's own on a file in the
/// runtime folder, so it goes with its process however that ends; it never stands in the temporary
/// folder, whose absence at a first start means something. That folder is locked itself as well,
/// as soon as it is there, since sessions of one user may have different runtime folders.
class WorkspaceLock {
public:
    enum class Outcome {
        Taken,         ///< This process holds the lock until the object goes away.
        HeldByAnother, ///< Another process holds it.
        HeldElsewhere, ///< A process with another runtime folder holds it and cannot be asked.
        Unavailable,   ///< There can be no lock file; problem() says why.
    };

    /// A lock for \a temporaryFolder (absolute; need not exist) whose file stands in
    /// \a runtimeFolder. Nothing is taken yet.
    WorkspaceLock(const QString &temporaryFolder, const QString &runtimeFolder);

    /// Tries to take the lock, without waiting.
    Outcome take();
    /// Locks the temporary folder, unless it is locked or still missing. False if another process
    /// has made it its own since take(): nothing in it may be changed then.
    bool holdFolder();
    /// Why take() gave Unavailable.
    QString problem() const { return problem_; }
    /// Where the holder of the lock listens for other starts.
    QString socketPath() const;

private:
    Outcome unavailable();

    QString temporaryFolder_;
    QString runtimeFolder_;
    QString base_;
    QString problem_;
    FileDescriptor file_;
    FileDescriptor folder_;
};

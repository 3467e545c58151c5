// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/FileDescriptor.h"
#include "base/Result.h"
#include "start/RaiseAddress.h"

#include <QString>

/// The folder for the lock and the socket: \a runtimeFolder if it is the user's own, else
/// \a ownFolder, which is made if it is missing.
QString folderForLocks(const QString &runtimeFolder, const QString &ownFolder);

/// The right to use one temporary folder: two programs that exchange images with the tool through
/// the same four files would burn each other's data. The lock is the kernel's own on a file in the
/// runtime folder, so it goes with its process however that ends; it never stands in the temporary
/// folder, whose absence at a first start means something. That folder is locked itself as well,
/// as soon as it is there, since sessions of one user may have different runtime folders. Whoever
/// changes the settings file may name another folder while the program runs: the lock follows.
class WorkspaceLock {
public:
    enum class Holder {
        ThisProcess, ///< Until the object goes away.
        Another
    };

    /// A lock for \a temporaryFolder (absolute; need not exist) whose file stands in
    /// \a runtimeFolder. Nothing is taken yet.
    WorkspaceLock(const QString &temporaryFolder, const QString &runtimeFolder);

    /// Tries to take both locks, the file's and the folder's, without waiting. One that this
    /// process has already, it keeps. Gives who has them then. A failure means that there can be
    /// no lock file, or that the system does not say what the folder is.
    Result<Holder> take();
    /// Locks \a temporaryFolder, which the settings may have come to name since, unless it is
    /// locked. One that is missing is locked by the file until it is there. The locks of an earlier
    /// folder go once this process has those of the new one. Gives who has the folder then, and
    /// fails like take(): unless it is this process, nothing in the folder may be changed.
    Result<Holder> holdFolder(const QString &temporaryFolder);
    /// Where the holder of the lock listens for other starts.
    RaiseAddress address() const;

private:
    void takeName(const QString &temporaryFolder);
    Result<Holder> moveTo(const QString &temporaryFolder);

    QString runtimeFolder_;
    QString key_;
    QString temporaryFolder_;
    FileDescriptor file_;
    FileDescriptor folder_;
};

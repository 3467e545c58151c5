// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/FileRemoval.h"

#include "base/FileDescriptor.h"
#include "files/FileOwnership.h"
#include "files/FileSaving.h"
#include "files/SystemName.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

Result<void> removeFile(const QString &path) {
    const Result<QByteArray> name = systemName(path);
    if (const Failure *failure = name.failure())
        return *failure;
    struct stat status = {};
    if (::lstat(name->constData(), &status) != 0)
        return Failure::ofSystem(errno);
    if (S_ISDIR(status.st_mode))
        return Failure::ofSystem(EISDIR);
    if (!S_ISREG(status.st_mode) && !S_ISLNK(status.st_mode))
        return notRegularFile();
    if (::unlink(name->constData()) != 0)
        return Failure::ofSystem(errno);
    return {};
}

// Non-blocking, because opening a FIFO would wait for a reader.
Result<void> emptyFile(const QString &path) {
    const Result<QByteArray> name = systemName(path);
    if (const Failure *failure = name.failure())
        return *failure;
    const FileDescriptor file(::open(name->constData(), O_WRONLY | O_CLOEXEC | O_NONBLOCK));
    if (file.isOpen() && !isRegular(file))
        return notRegularFile();
    if (!file.isOpen() || ::ftruncate(file.get(), 0) != 0)
        return Failure::ofSystem(errno);
    return {};
}

Result<void> clearFile(const QString &path) {
    const Result<LinkKind> link = linkAt(path);
    if (const Failure *failure = link.failure())
        return *failure;
    const bool isForeign = *link == LinkKind::Foreign;
    const Result<QString> place = isForeign ? path : behindLinks(path);
    if (const Failure *failure = place.failure())
        return *failure;
    const QString &file = *place;
    const Result<void> removed = removeFile(file);
    if (removed || removed.failure()->systemError == ENOENT)
        return {};
    return isForeign ? removed : emptyFile(file);
}

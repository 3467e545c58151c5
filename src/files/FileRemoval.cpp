// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/FileRemoval.h"

#include "files/SystemName.h"

#include <cerrno>
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

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/Renaming.h"

#include "files/SystemName.h"

#include <QtGlobal>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// What a call to the system came to: \a answer is 0 if it has worked.
Result<void> orError(int answer) {
    if (answer != 0)
        return Failure::ofSystem(errno);
    return {};
}

} // namespace

Result<void> renameFile(const QByteArray &from, const QByteArray &to) {
    return orError(::rename(from.constData(), to.constData()));
}

Result<void> renameToFree(const QByteArray &from, const QByteArray &to) {
#ifdef RENAME_NOREPLACE
    const Result<void> renamed = orError(
        ::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE));
    const int error = renamed ? 0 : renamed.failure()->systemError;
    if (error != EINVAL && error != ENOSYS)
        return renamed;
#endif
    // Not every file system can promise it.
    struct stat facts = {};
    if (::lstat(to.constData(), &facts) == 0)
        return Failure::ofSystem(EEXIST);
    if (!saysMissing(errno))
        return Failure::ofSystem(errno);
    return renameFile(from, to);
}

Result<void> removeName(const QByteArray &name) {
    return orError(::unlink(name.constData()));
}

Result<void> exchangeNames(const QByteArray &one, const QByteArray &other) {
#ifdef RENAME_EXCHANGE
    return orError(
        ::renameat2(AT_FDCWD, one.constData(), AT_FDCWD, other.constData(), RENAME_EXCHANGE));
#else
    Q_UNUSED(one)
    Q_UNUSED(other)
    return Failure::ofSystem(ENOSYS);
#endif
}

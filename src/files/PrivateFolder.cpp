// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/PrivateFolder.h"

#include "files/SystemName.h"

#include <QByteArray>
#include <QFileInfo>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// The system asks no umask where the folder above has an access list for new ones; what the mode
/// leaves out, such a list cannot give. What a umask takes from the owner is given back.
constexpr mode_t theOwnerAlone = 0700;

bool leadsToFolder(const QByteArray &name) {
    struct stat facts = {};
    return ::stat(name.constData(), &facts) == 0 && S_ISDIR(facts.st_mode);
}

/// By the name of the folder alone: a link that somebody has put in its place leads elsewhere.
/// A disk without rights of its own refuses to change any.
Result<void> makeOwnersAlone(const QByteArray &name) {
    struct stat facts = {};
    if (::lstat(name.constData(), &facts) == 0 && (facts.st_mode & S_IRWXU) == S_IRWXU)
        return {};
    if (::fchmodat(AT_FDCWD, name.constData(), theOwnerAlone, AT_SYMLINK_NOFOLLOW) == 0)
        return {};
    return Failure::ofSystem(errno);
}

Result<void> makeLast(const QByteArray &name) {
    if (::mkdir(name.constData(), theOwnerAlone) == 0) {
        const Result<void> given = makeOwnersAlone(name);
        // The next one who asks would take it for one that can be used.
        if (!given)
            ::rmdir(name.constData());
        return given;
    }
    const int error = errno;
    // Another program may have been faster.
    if (leadsToFolder(name))
        return {};
    return Failure::ofSystem(error == EEXIST ? ENOTDIR : error);
}

} // namespace

Result<void> makePrivateFolder(const QString &path) {
    const Result<QByteArray> name = systemName(path);
    if (!name)
        return *name.failure();
    if (leadsToFolder(*name))
        return {};
    const QString above = QFileInfo(path).path();
    if (above != path)
        if (const Result<void> made = makePrivateFolder(above); !made)
            return made;
    return makeLast(*name);
}

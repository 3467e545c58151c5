// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/PrivateFolder.h"

#include "files/SystemName.h"

#include <QByteArray>
#include <QFileInfo>

#include <cerrno>

#include <sys/stat.h>

namespace {

/// The system asks no umask where the folder above has an access list for new ones; what the mode
/// leaves out, such a list cannot give.
constexpr mode_t theOwnerAlone = 0700;

bool leadsToFolder(const QByteArray &name) {
    struct stat facts = {};
    return ::stat(name.constData(), &facts) == 0 && S_ISDIR(facts.st_mode);
}

Result<void> makeLast(const QByteArray &name) {
    if (::mkdir(name.constData(), theOwnerAlone) == 0)
        return {};
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

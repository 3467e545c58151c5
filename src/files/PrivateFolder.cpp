// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/PrivateFolder.h"

#include <QDir>

#include <sys/stat.h>

bool makePrivateFolder(const QString &path) {
    constexpr mode_t allButTheOwner = 077;
    const mode_t mask = ::umask(allButTheOwner);
    const bool made = !path.isEmpty() && QDir().mkpath(path);
    ::umask(mask);
    return made;
}

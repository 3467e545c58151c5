// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/FolderRoom.h"

#include "files/SystemName.h"

#include <sys/statvfs.h>

bool isFull(const QString &path) {
    const Result<QByteArray> name = systemName(path);
    struct statvfs facts = {};
    // Without any blocks it is no disk.
    return name && ::statvfs(name->constData(), &facts) == 0 && facts.f_blocks > 0 &&
           facts.f_bavail == 0;
}

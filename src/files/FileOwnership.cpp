// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/FileOwnership.h"

#include "files/SystemName.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace {

std::optional<struct stat> factsOf(const QString &path, bool behindLinks) {
    const Result<QByteArray> name = systemName(path);
    struct stat facts = {};
    if (!name ||
        (behindLinks ? ::stat(name->constData(), &facts) : ::lstat(name->constData(), &facts)) != 0)
        return std::nullopt;
    return facts;
}

bool isOurs(const struct stat &facts) {
    return facts.st_uid == ::geteuid() || facts.st_uid == 0;
}

} // namespace

bool isNoForeignLink(const QString &path) {
    const std::optional<struct stat> link = factsOf(path, false);
    if (!link || !S_ISLNK(link->st_mode))
        return true;
    const std::optional<struct stat> folder = factsOf(QFileInfo(path).path(), true);
    return isOurs(*link) && folder && isOurs(*folder);
}

Failure foreignLink() {
    return Failure{
        QCoreApplication::translate("FileOwnership", "It is a link that belongs to somebody else")};
}

bool othersMayWriteInto(const QString &path) {
    const std::optional<struct stat> folder = factsOf(path, true);
    return folder && S_ISDIR(folder->st_mode) &&
           (!isOurs(*folder) || (folder->st_mode & (S_IWGRP | S_IWOTH)) != 0);
}

bool isOwnFolder(const QString &path) {
    const std::optional<struct stat> folder = factsOf(path, false);
    return folder && S_ISDIR(folder->st_mode) && folder->st_uid == ::geteuid() &&
           (folder->st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

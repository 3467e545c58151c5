// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/FileOwnership.h"

#include "files/SystemName.h"

#include <QByteArrayList>
#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <climits>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace {

enum class LastLink { Followed, Seen };

std::optional<struct stat> factsOf(const QByteArray &name, LastLink link) {
    struct stat facts = {};
    const bool isThere = link == LastLink::Followed ? ::stat(name.constData(), &facts) == 0
                                                    : ::lstat(name.constData(), &facts) == 0;
    return isThere ? std::optional(facts) : std::nullopt;
}

std::optional<struct stat> factsOf(const QString &path, LastLink link) {
    const Result<QByteArray> name = systemName(path);
    return name ? factsOf(*name, link) : std::nullopt;
}

bool isOurs(const struct stat &facts) {
    return facts.st_uid == ::geteuid() || facts.st_uid == 0;
}

bool isOwnLink(const struct stat &link, const QByteArray &folder) {
    const std::optional<struct stat> facts = factsOf(folder, LastLink::Followed);
    return isOurs(link) && facts && isOurs(*facts);
}

/// Where the link \a name leads, by the names on the way there.
QByteArrayList namesBehind(const QByteArray &name) {
    QByteArray target(PATH_MAX, Qt::Uninitialized);
    target.truncate(
        std::max<qsizetype>(::readlink(name.constData(), target.data(), size_t(target.size())), 0));
    return target.split('/');
}

} // namespace

// The folder of \a path is where the user wants the file to be. What is behind the first link is
// walked through, folder by folder, since a link to a folder leads astray as well.
bool isNoForeignLink(const QString &path) {
    const Result<QByteArray> name = systemName(path);
    if (!name)
        return true;
    QByteArray folder = QFile::encodeName(QFileInfo(path).path());
    QByteArrayList ahead = {name->sliced(name->lastIndexOf('/') + 1)};
    for (int links = 0; !ahead.isEmpty() && links <= maxLinks;) {
        const QByteArray place = folder + '/' + ahead.takeFirst();
        const std::optional<struct stat> facts = factsOf(place, LastLink::Seen);
        if (!facts)
            return true;
        if (!S_ISLNK(facts->st_mode)) {
            folder = place;
            continue;
        }
        if (!isOwnLink(*facts, folder))
            return false;
        ++links;
        ahead = namesBehind(place) + ahead;
        // The name before the first slash of an absolute path is empty.
        if (ahead.first().isEmpty())
            folder.clear();
    }
    return true;
}

Failure foreignLink() {
    return Failure{
        QCoreApplication::translate("FileOwnership", "It is a link that belongs to somebody else")};
}

bool othersMayWriteInto(const QString &path) {
    const std::optional<struct stat> folder = factsOf(path, LastLink::Followed);
    return folder && S_ISDIR(folder->st_mode) &&
           (!isOurs(*folder) || (folder->st_mode & (S_IWGRP | S_IWOTH)) != 0);
}

bool isOwnFolder(const QString &path) {
    const std::optional<struct stat> folder = factsOf(path, LastLink::Seen);
    return folder && S_ISDIR(folder->st_mode) && folder->st_uid == ::geteuid() &&
           (folder->st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

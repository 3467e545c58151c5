// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/FileOwnership.h"

#include "files/SystemName.h"

#include <QByteArrayList>
#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

namespace {

enum class LastLink { Followed, Seen };

using Facts = struct stat;

Result<Facts> factsOf(const QByteArray &name, LastLink link) {
    Facts facts = {};
    const bool isThere = link == LastLink::Followed ? ::stat(name.constData(), &facts) == 0
                                                    : ::lstat(name.constData(), &facts) == 0;
    if (!isThere)
        return Failure::ofSystem(errno);
    return facts;
}

Result<Facts> factsOf(const QString &path, LastLink link) {
    const Result<QByteArray> name = systemName(path);
    return name ? factsOf(*name, link) : *name.failure();
}

bool isOurs(const Facts &facts) {
    return facts.st_uid == ::geteuid() || facts.st_uid == 0;
}

Result<LinkKind> kindOf(const Facts &link, const QByteArray &folder) {
    const Result<Facts> facts = factsOf(folder, LastLink::Followed);
    if (const Failure *failure = facts.failure())
        return *failure;
    return isOurs(link) && isOurs(*facts) ? LinkKind::Own : LinkKind::Foreign;
}

} // namespace

// The folder of \a path is where the user wants the file to be. What is behind the first link is
// walked through, folder by folder, since a link to a folder leads astray as well.
Result<LinkKind> linkAt(const QString &path) {
    const Result<QByteArray> name = systemName(path);
    if (!name)
        return LinkKind::None;
    QByteArray folder = QFile::encodeName(QFileInfo(path).path());
    QByteArrayList ahead = {name->sliced(name->lastIndexOf('/') + 1)};
    int links = 0;
    while (!ahead.isEmpty() && links <= maxLinks) {
        const QByteArray place = folder + '/' + ahead.takeFirst();
        const Result<Facts> facts = factsOf(place, LastLink::Seen);
        const Failure *unseen = facts.failure();
        if (unseen && saysMissing(unseen->systemError))
            break;
        if (unseen)
            return *unseen;
        if (!S_ISLNK(facts->st_mode)) {
            folder = place;
            continue;
        }
        const Result<LinkKind> kind = kindOf(*facts, folder);
        if (!kind || *kind == LinkKind::Foreign)
            return kind;
        const Result<QByteArray> target = linkTarget(place);
        if (const Failure *failure = target.failure())
            return *failure;
        ++links;
        ahead = target->split('/') + ahead;
        // The name before the first slash of an absolute path is empty.
        if (ahead.first().isEmpty())
            folder.clear();
    }
    return links > 0 ? LinkKind::Own : LinkKind::None;
}

Result<void> mayFollow(const QString &path) {
    const Result<LinkKind> link = linkAt(path);
    if (const Failure *failure = link.failure())
        return *failure;
    if (*link == LinkKind::Foreign)
        return foreignLink();
    return {};
}

Failure foreignLink() {
    return Failure{
        QCoreApplication::translate("FileOwnership", "It is a link that belongs to somebody else")};
}

bool othersMayWriteInto(const QString &path) {
    const Result<Facts> folder = factsOf(path, LastLink::Followed);
    return folder && S_ISDIR(folder->st_mode) &&
           (!isOurs(*folder) || (folder->st_mode & (S_IWGRP | S_IWOTH)) != 0);
}

bool isOwnFolder(const QString &path) {
    const Result<Facts> folder = factsOf(path, LastLink::Seen);
    return folder && S_ISDIR(folder->st_mode) && folder->st_uid == ::geteuid() &&
           (folder->st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/FileSaving.h"

#include "base/FileDescriptor.h"
#include "files/DiskFlush.h"
#include "files/FileOwnership.h"
#include "files/FileRights.h"
#include "files/SystemName.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace {

Result<UnfinishedFile> writeBeside(const QByteArray &name, const QByteArray &bytes,
                                   Durability durability) {
    Result<UnfinishedFile> file = UnfinishedFile::beside(name);
    if (!file)
        return *file.failure();
    const Result<void> written = writeAll(file->descriptor(), bytes);
    if (const Failure *failure = written.failure())
        return *failure;
    giveRightsOf(name, file->descriptor());
    // Waiting for the disk takes longer than everything else that an edit of one byte does.
    if (durability == Durability::ProgramEnd)
        return file;
    if (const Result<void> flushed = flushToDisk(file->descriptor()); !flushed)
        return *flushed.failure();
    return file;
}

/// Fails if there is something at \a name, over links, that no saved file may take the place of,
/// and if that is not known.
Result<void> mayReplace(const QByteArray &name, Durability durability) {
    struct stat facts = {};
    if (::stat(name.constData(), &facts) != 0)
        return saysMissing(errno) ? Result<void>() : Failure::ofSystem(errno);
    // The new file takes the place of whatever has the name, a device node included.
    if (!S_ISREG(facts.st_mode))
        return notRegularFile();
    // The lock of the settings refuses as much. The others that need not outlive a power failure
    // are made anew at each start, and nobody would protect them.
    if (durability == Durability::PowerFailure &&
        ::faccessat(AT_FDCWD, name.constData(), W_OK, AT_EACCESS) != 0)
        return Failure::ofSystem(errno);
    return {};
}

/// Where the links at \a path lead, though nothing is there.
Result<QString> behindDanglingLinks(QString path) {
    for (int link = 0; link < maxLinks; ++link) {
        const Result<QByteArray> target = linkTarget(QFile::encodeName(path));
        const Failure *noLink = target.failure();
        if (noLink && noLink->systemError != EINVAL && noLink->systemError != ENOENT)
            return *noLink;
        if (noLink)
            return QFileInfo(path).absoluteFilePath();
        path = QDir(QFileInfo(path).path()).filePath(QFile::decodeName(*target));
    }
    return Failure::ofSystem(ELOOP);
}

/// A name that the disk refuses is not kept until the next failure of power shows it.
Result<void> placeOnDisk(UnfinishedFile &file) {
    const Result<FileDescriptor> folder = openFolder(file.folder());
    if (const Failure *failure = folder.failure())
        return *failure;
    if (const Result<void> taken = file.takePlace(); !taken)
        return taken;
    const Result<void> flushed = flushFolder(*folder);
    if (const Failure *failure = flushed.failure())
        return givenBackFor(*failure, file);
    return {};
}

} // namespace

Result<QString> behindLinks(const QString &path) {
    const Result<QByteArray> name = systemName(path);
    if (const Failure *failure = name.failure())
        return *failure;
    const std::unique_ptr<char, decltype(&std::free)> place(::realpath(name->constData(), nullptr),
                                                            std::free);
    if (place)
        return QFile::decodeName(place.get());
    return errno == ENOENT ? behindDanglingLinks(path) : Failure::ofSystem(errno);
}

Result<UnfinishedFile> unfinishedFile(const QString &path, const QByteArray &bytes,
                                      Durability durability, Links links) {
    const QFileInfo target(path);
    if (target.fileName().isEmpty())
        return Failure::ofSystem(ENOENT);
    const Result<QString> place =
        links == Links::Followed ? behindLinks(path) : target.absoluteFilePath();
    if (const Failure *failure = place.failure())
        return *failure;
    const Result<QByteArray> name = systemName(*place);
    if (const Failure *failure = name.failure())
        return *failure;
    if (const Result<void> allowed = mayReplace(*name, durability); !allowed)
        return *allowed.failure();
    return writeBeside(*name, bytes, durability);
}

Result<void> saveWholeFile(const QString &path, const QByteArray &bytes, Durability durability,
                           Links links) {
    Result<UnfinishedFile> file = unfinishedFile(path, bytes, durability, links);
    if (!file)
        return *file.failure();
    return durability == Durability::PowerFailure ? placeOnDisk(*file) : file->takePlace();
}

void removeUnfinishedSaves(const QString &path) {
    removeUnfinished(path);
    const Result<QString> target = behindLinks(path);
    if (target && *target != path && mayFollow(path) && isOwnFolder(QFileInfo(*target).path()))
        removeUnfinished(*target);
}

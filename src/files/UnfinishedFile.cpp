// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/UnfinishedFile.h"

#include "files/Renaming.h"
#include "files/SystemName.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <tuple>
#include <unistd.h>
#include <utility>

namespace {

/// Nobody gives such a name to a copy of their own.
const QByteArray mark = QByteArrayLiteral(".velm-aside-");
constexpr qsizetype randomLetters = 6;
constexpr int attempts = 100;

QByteArray nameBeside(const QByteArray &path) {
    static const char letters[] = "abcdefghijklmnopqrstuvwxyz0123456789";
    QByteArray name = path + mark;
    for (qsizetype i = 0; i < randomLetters; ++i)
        name.append(letters[QRandomGenerator::global()->bounded(int(sizeof letters - 1))]);
    return name;
}

QByteArray folderOf(const QByteArray &path) {
    const qsizetype slash = path.lastIndexOf('/');
    if (slash < 0)
        return QByteArrayLiteral(".");
    return slash == 0 ? QByteArrayLiteral("/") : path.first(slash);
}

/// A file is locked by whoever writes it, so that nobody takes it for what a killed program left.
FileDescriptor lockedUnnamed(const QByteArray &path) {
#ifdef O_TMPFILE
    FileDescriptor file(
        ::open(folderOf(path).constData(), O_TMPFILE | O_RDWR | O_CLOEXEC, S_IRUSR | S_IWUSR));
    if (file.isOpen())
        ::flock(file.get(), LOCK_EX | LOCK_NB);
    return file;
#else
    Q_UNUSED(path)
    return {};
#endif
}

QByteArray pathOf(int descriptor) {
    return "/proc/self/fd/" + QByteArray::number(descriptor);
}

/// Gives \a file, which has no name, the name \a name. Fails if that is taken.
Result<void> linkAs(int file, const QByteArray &name) {
    if (::linkat(AT_FDCWD, pathOf(file).constData(), AT_FDCWD, name.constData(),
                 AT_SYMLINK_FOLLOW) != 0)
        return Failure::ofSystem(errno);
    return {};
}

/// Also if that is not known: what may have been there must not be said to be given back.
bool mayBeThere(const QByteArray &path) {
    struct stat facts = {};
    return ::lstat(path.constData(), &facts) == 0 || !saysMissing(errno);
}

bool isFolder(const QByteArray &path) {
    struct stat facts = {};
    return ::lstat(path.constData(), &facts) == 0 && S_ISDIR(facts.st_mode);
}

bool canBeLinked(int file) {
    struct stat facts = {};
    return ::stat(pathOf(file).constData(), &facts) == 0;
}

/// The names with the mark in \a folder.
QStringList unfinishedIn(const QString &folder) {
    QStringList names = QDir(folder).entryList(QDir::Files | QDir::Hidden | QDir::NoSymLinks);
    names.removeIf([](const QString &name) {
        return !name.chopped(std::min<qsizetype>(randomLetters, name.size()))
                    .endsWith(QLatin1String(mark));
    });
    return names;
}

/// While it is being written a file is locked.
void removeUnlessInUse(const QString &path) {
    const Result<QByteArray> left = systemName(path);
    if (!left)
        return;
    constexpr int flags = O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
    FileDescriptor file(::open(left->constData(), O_RDWR | flags));
    // It may be of a file that is read-only. File systems of other machines lock no file that was
    // opened so.
    if (!file.isOpen())
        file = FileDescriptor(::open(left->constData(), O_RDONLY | flags));
    if (file.isOpen() && ::flock(file.get(), LOCK_EX | LOCK_NB) == 0)
        ::unlink(left->constData());
}

} // namespace

Result<UnfinishedFile> UnfinishedFile::beside(const QByteArray &path) {
    if (FileDescriptor file = lockedUnnamed(path); file.isOpen() && canBeLinked(file.get()))
        return UnfinishedFile(std::move(file), path, {});
    int error = 0;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const QByteArray name = nameBeside(path);
        FileDescriptor file(
            ::open(name.constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR));
        error = errno;
        if (file.isOpen()) {
            ::flock(file.get(), LOCK_EX | LOCK_NB);
            return UnfinishedFile(std::move(file), path, name);
        }
        if (error != EEXIST)
            break;
    }
    return Failure::ofSystem(error);
}

UnfinishedFile::~UnfinishedFile() {
    if (!name_.isEmpty())
        ::unlink(name_.constData());
}

Result<void> UnfinishedFile::takeName() {
    Result<void> linked;
    for (int attempt = 0; name_.isEmpty() && attempt < attempts; ++attempt) {
        const QByteArray name = nameBeside(path_);
        linked = linkAs(file_.get(), name);
        if (linked)
            name_ = name;
        else if (linked.failure()->systemError != EEXIST)
            break;
    }
    return linked;
}

Result<void> UnfinishedFile::takePlace() {
    // Where there is no older file, there need be no name with the mark either.
    if (name_.isEmpty() && linkAs(file_.get(), path_))
        return {};
    if (const Result<void> named = takeName(); !named)
        return named;
    // The older file has the other name then, and is what has not taken its place. A folder, which
    // no file replaces, gets its name back, and the renaming below tells why.
    const Result<void> exchanged = exchangeNames(name_, path_);
    if (exchanged && (!isFolder(name_) || !exchangeNames(name_, path_)))
        return {};
    const bool hadOlder = mayBeThere(path_);
    const Result<void> renamed = renameFile(name_, path_);
    if (renamed) {
        name_.clear();
        olderIsGone_ = hadOlder;
    }
    return renamed;
}

Result<void> UnfinishedFile::takePlaceForNow(Replacing replacing) {
    if (const Result<void> named = takeName(); !named)
        return named;
    if (replacing == Replacing::Refused) {
        const Result<void> renamed = renameToFree(name_, path_);
        if (renamed)
            name_.clear();
        return renamed;
    }
    if (isFolder(path_))
        return Failure::ofSystem(EISDIR);
    if (exchangeNames(name_, path_))
        return {};
    // There is no older file, or this system cannot exchange names.
    QByteArray aside = nameBeside(path_);
    if (const Result<void> moved = renameFile(path_, aside); !moved) {
        if (moved.failure()->systemError != ENOENT)
            return moved;
        aside.clear();
    }
    if (const Result<void> placed = renameFile(name_, path_); !placed) {
        if (!aside.isEmpty())
            std::ignore = renameFile(aside, path_);
        return placed;
    }
    name_ = aside;
    return {};
}

Result<void> UnfinishedFile::giveBackPlace() {
    if (olderIsGone_)
        return Failure::ofSystem(ENOENT);
    const bool hadOlder = !name_.isEmpty();
    if (hadOlder && exchangeNames(name_, path_))
        return {};
    const Result<void> givenBack = hadOlder ? renameFile(name_, path_) : removeName(path_);
    if (!givenBack)
        keptName_ = std::exchange(name_, QByteArray()); // the older file must not go with this one
    return givenBack;
}

QByteArray UnfinishedFile::folder() const {
    return folderOf(path_);
}

Failure givenBackFor(const Failure &failure, UnfinishedFile &file) {
    if (file.giveBackPlace() || file.keptName().isEmpty())
        return failure;
    return {QCoreApplication::translate("UnfinishedFile", "%1. What it held is now in %2")
                .arg(failure.reason, QFileInfo(QFile::decodeName(file.keptName())).fileName()),
            failure.systemError};
}

void removeUnfinished(const QString &path) {
    const QFileInfo target(path);
    const QString start = target.fileName() + QString::fromLatin1(mark);
    for (const QString &name : unfinishedIn(target.path()))
        if (name.startsWith(start) && name.size() == start.size() + randomLetters)
            removeUnlessInUse(QDir(target.path()).filePath(name));
}

void removeAllUnfinished(const QString &folder) {
    for (const QString &name : unfinishedIn(folder))
        removeUnlessInUse(QDir(folder).filePath(name));
}

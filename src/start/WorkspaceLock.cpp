// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "start/WorkspaceLock.h"

#include "files/FileOwnership.h"
#include "files/FileRights.h"
#include "files/PrivateFolder.h"
#include "files/SystemName.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <tuple>
#include <unistd.h>
#include <utility>

namespace {

constexpr int keyDigits = 16;

/// The same folder may be reached over links, and may not exist yet: what exists of the path is
/// made canonical, so that the key is the same before and after the folder is first created. A path
/// that cannot be looked at stays as it is.
QString canonicalName(const QString &folder) {
    QString existing = QDir::cleanPath(QDir().absoluteFilePath(folder));
    QString rest;
    while (isMissing(existing) && existing != u"/") {
        rest.prepend(u'/' + QFileInfo(existing).fileName());
        existing = QFileInfo(existing).path();
    }
    const QString canonical = QFileInfo(existing).canonicalFilePath();
    return (canonical.isEmpty() ? existing : canonical) + rest;
}

QString lockKey(const QString &folder) {
    const QByteArray digest =
        QCryptographicHash::hash(canonicalName(folder).toUtf8(), QCryptographicHash::Sha256);
    return QString::fromLatin1(digest.toHex().left(keyDigits));
}

/// Who has the lock of \a file, once this process has tried to take it.
Result<WorkspaceLock::Holder> lockAtOnce(const FileDescriptor &file) {
    if (::flock(file.get(), LOCK_EX | LOCK_NB) == 0)
        return WorkspaceLock::Holder::ThisProcess;
    if (errno == EWOULDBLOCK)
        return WorkspaceLock::Holder::Another;
    return Failure::ofSystem(errno);
}

/// True if the system's number \a error says that there is no folder that could be locked: none is
/// there, or links lead to each other, or the user may not open it, who may use it all the same.
bool saysNoFolder(int error) {
    return saysMissing(error) || error == EACCES || error == ELOOP;
}

/// The folder at \a path to be locked; not open if there is none that could be, where the lock file
/// has to do. It is a failure if that is not known.
Result<FileDescriptor> openToLock(const QString &path) {
    const Result<QByteArray> name = systemName(path);
    if (!name)
        return FileDescriptor();
    FileDescriptor folder(::open(name->constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder.isOpen() && !saysNoFolder(errno))
        return Failure::ofSystem(errno);
    return folder;
}

/// True if the open \a folder is what stands at \a path; false if another one does, or none. It is
/// a failure if that is not known: this process's own folder, taken for another, would be locked
/// anew, and so be found locked.
Result<bool> isAt(const QString &path, const FileDescriptor &folder) {
    const Result<QByteArray> name = systemName(path);
    if (!name || !folder.isOpen())
        return false;
    struct stat opened = {};
    // A share's word for one that has gone for good.
    if (::fstat(folder.get(), &opened) != 0 && errno == ESTALE)
        return false;
    const Result<bool> stands = standsAt(*name, folder);
    if (!stands && saysNoFolder(stands.failure()->systemError))
        return false;
    return stands;
}

Result<FileDescriptor> openLockFile(const QString &folder, const QString &key) {
    // In another user's folder the lock could be taken away.
    if (!isOwnFolder(folder))
        return Failure{
            QCoreApplication::translate("WorkspaceLock", "%1 is no folder of this user alone")
                .arg(folder)};
    const QByteArray path = QFile::encodeName(folder + QStringLiteral("/velm-%1.lock").arg(key));
    constexpr mode_t mode = S_IRUSR | S_IWUSR;
    constexpr int flags = O_RDWR | O_CLOEXEC | O_NOFOLLOW;
    Result<FileDescriptor> file = openOrMake(path, flags, mode);
    // A start of before may have left one that its owner cannot open. Nobody else can put a link
    // in its place.
    const bool isClosed = !file && file.failure()->systemError == EACCES;
    if (isClosed && ::fchmodat(AT_FDCWD, path.constData(), mode, AT_SYMLINK_NOFOLLOW) == 0)
        return openOrMake(path, flags, mode);
    return file;
}

} // namespace

QString folderForLocks(const QString &runtimeFolder, const QString &ownFolder) {
    if (isOwnFolder(runtimeFolder))
        return runtimeFolder;
    // Whoever takes a lock there says why that did not work.
    std::ignore = makePrivateFolder(ownFolder);
    return ownFolder;
}

WorkspaceLock::WorkspaceLock(const QString &temporaryFolder, const QString &runtimeFolder)
    : runtimeFolder_(runtimeFolder),
      key_(lockKey(temporaryFolder)),
      temporaryFolder_(temporaryFolder) {}

Result<WorkspaceLock::Holder> WorkspaceLock::take() {
    if (!file_.isOpen()) {
        Result<FileDescriptor> file = openLockFile(runtimeFolder_, key_);
        if (const Failure *failure = file.failure())
            return *failure;
        const Result<Holder> holder = lockAtOnce(*file);
        if (!holder || *holder == Holder::Another)
            return holder;
        file_ = *std::move(file);
    }
    return holdFolder(temporaryFolder_);
}

// Where the file system knows no locks, the file has to do as well.
Result<WorkspaceLock::Holder> WorkspaceLock::holdFolder(const QString &temporaryFolder) {
    // It may have another name by now, which is no reason to compete with oneself for it.
    const Result<bool> isHeld = isAt(temporaryFolder, folder_);
    if (const Failure *failure = isHeld.failure())
        return *failure;
    if (*isHeld) {
        takeName(temporaryFolder);
        return Holder::ThisProcess;
    }
    if (lockKey(temporaryFolder) != key_)
        return moveTo(temporaryFolder);
    Result<FileDescriptor> folder = openToLock(temporaryFolder);
    if (const Failure *failure = folder.failure())
        return *failure;
    if (folder->isOpen()) {
        const Result<Holder> holder = lockAtOnce(*folder);
        if (holder && *holder == Holder::Another)
            return holder;
    }
    // Otherwise the lock of before does no harm: whose folder that is, is asked each time.
    if (folder->isOpen())
        folder_ = *std::move(folder);
    return Holder::ThisProcess;
}

// Other starts look under the new name for whoever has the folder. One that has its lock at this
// moment finds the folder itself locked, and gives up.
void WorkspaceLock::takeName(const QString &temporaryFolder) {
    const QString key = lockKey(temporaryFolder);
    if (key == key_)
        return;
    Result<FileDescriptor> file = openLockFile(runtimeFolder_, key);
    if (!file)
        return;
    const Result<Holder> holder = lockAtOnce(*file);
    if (!holder || *holder == Holder::Another)
        return;
    file_ = *std::move(file);
    key_ = key;
    temporaryFolder_ = temporaryFolder;
}

Result<WorkspaceLock::Holder> WorkspaceLock::moveTo(const QString &temporaryFolder) {
    WorkspaceLock other(temporaryFolder, runtimeFolder_);
    const Result<Holder> holder = other.take();
    if (holder && *holder == Holder::ThisProcess)
        *this = std::move(other);
    return holder;
}

RaiseAddress WorkspaceLock::address() const {
    RaiseAddress address{runtimeFolder_ + QStringLiteral("/velm-%1.socket").arg(key_), QString()};
#ifdef Q_OS_LINUX
    address.name = QStringLiteral("velm-%1-%2").arg(QString::number(::geteuid()), key_);
#endif
    return address;
}

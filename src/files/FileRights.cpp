// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/FileRights.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#ifdef Q_OS_LINUX
#include <sys/xattr.h>
#endif

namespace {

/// Without those by which a program acts as its owner: writing into a file takes them, too.
constexpr mode_t permissionBits = S_IRWXU | S_IRWXG | S_IRWXO;

/// What the program needs to read and to replace a file that it has made.
constexpr mode_t ownersBits = S_IRUSR | S_IWUSR;

mode_t modeOfOneMadeAnew() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return (modeOfNewFiles & ~mask) | ownersBits;
}

/// The owner and group of \a old. True if at least the group is that of \a old now.
bool giveOwners(const struct stat &old, int file) {
    struct stat now = {};
    if (::fstat(file, &now) != 0)
        return false;
    if (now.st_uid == old.st_uid && now.st_gid == old.st_gid)
        return true;
    return ::fchown(file, old.st_uid, old.st_gid) == 0 ||
           ::fchown(file, uid_t(-1), old.st_gid) == 0;
}

/// A list stands in the place of the group's rights. Where the old file has none, the new one loses
/// what it has from its folder. False if that could not be done.
bool giveAccessList(const QByteArray &path, int file) {
#ifdef Q_OS_LINUX
    constexpr char name[] = "system.posix_acl_access";
    const auto hasNone = [] { return errno == ENODATA || errno == ENOTSUP; };
    const ssize_t size = ::lgetxattr(path.constData(), name, nullptr, 0);
    if (size < 0)
        return hasNone() && (::fremovexattr(file, name) == 0 || hasNone());
    QByteArray list(size, Qt::Uninitialized);
    return ::lgetxattr(path.constData(), name, list.data(), size_t(size)) == size &&
           ::fsetxattr(file, name, list.constData(), size_t(size), 0) == 0;
#else
    Q_UNUSED(path)
    Q_UNUSED(file)
    return true;
#endif
}

/// True for a link, too, that stands in the way of a new file and over which the system makes one.
bool leadsNowhere(const QByteArray &name) {
    struct stat facts = {};
    return ::stat(name.constData(), &facts) != 0 && errno == ENOENT;
}

/// For one that has just been made. One whose rights are not known comes to be its owner's alone:
/// what others had is taken from them.
void letOwnerUse(int file) {
    struct stat facts = {};
    if (::fstat(file, &facts) == 0 && (facts.st_mode & ownersBits) == ownersBits)
        return;
    ::fchmod(file, (facts.st_mode & permissionBits) | ownersBits);
}

} // namespace

void giveRightsOf(const QByteArray &path, int file) {
    struct stat old = {};
    const bool isThere = ::lstat(path.constData(), &old) == 0;
    // One that may be private must not come to be everybody's.
    if (!isThere && errno != ENOENT)
        return;
    if (!isThere || S_ISLNK(old.st_mode)) {
        ::fchmod(file, modeOfOneMadeAnew());
        return;
    }
    const mode_t mode = old.st_mode & permissionBits;
    const bool groupIsKnown = giveOwners(old, file) && giveAccessList(path, file);
    ::fchmod(file, groupIsKnown ? mode : mode & ~mode_t(S_IRWXG));
}

Result<FileDescriptor> openOrMake(const QByteArray &name, int flags, mode_t mode) {
    FileDescriptor file(::open(name.constData(), flags | O_CREAT | O_EXCL, mode));
    bool isNew = file.isOpen();
    if (!isNew) {
        isNew = leadsNowhere(name);
        file = FileDescriptor(::open(name.constData(), flags | O_CREAT, mode));
    }
    if (!file.isOpen())
        return Failure::ofSystem(errno);
    if (isNew)
        letOwnerUse(file.get());
    return file;
}

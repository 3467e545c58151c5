// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/FileSaving.h"

#include "files/SystemName.h"

#include <QFileInfo>
#include <QTemporaryFile>

#include <cerrno>
#include <cstdio>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// A nearly full disk takes a part of the bytes; only the next call tells why it takes no more.
bool writeFully(QFileDevice &file, const QByteArray &bytes) {
    for (qint64 done = 0; done < bytes.size();) {
        const qint64 written = file.write(bytes.constData() + done, bytes.size() - done);
        if (written <= 0)
            return false;
        done += written;
    }
    return true;
}

Failure failureOf(const QFileDevice &file) {
    const QString reason = file.errorString();
    return reason.isEmpty() ? Failure::ofSystem(EIO) : Failure{reason};
}

// The mode of the file, or the one that a file that is opened for writing begins with.
mode_t modeOf(const QString &path) {
    constexpr mode_t permissionBits = 07777;
    constexpr mode_t newFile = 0666;
    struct stat status = {};
    if (::stat(QFile::encodeName(path).constData(), &status) == 0)
        return status.st_mode & permissionBits;
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return newFile & ~mask;
}

// Where a link leads to, over however many others; a link to nothing is followed once.
QString behindLinks(const QFileInfo &target) {
    if (target.exists())
        return target.canonicalFilePath();
    return target.isSymLink() ? target.symLinkTarget() : target.absoluteFilePath();
}

// The toolkit's own class for this asks the disk as well, but does not look at the answer. Not
// every file system has one to give.
bool isOnDisk(const QFileDevice &file) {
    return ::fdatasync(file.handle()) == 0 || errno == EINVAL || errno == ENOTSUP;
}

Result<void> replaceFile(const QString &path, const QByteArray &bytes, Durability durability) {
    QTemporaryFile file(path + QStringLiteral(".XXXXXX"));
    if (!file.open() || !writeFully(file, bytes) || !file.flush())
        return failureOf(file);
    ::fchmod(file.handle(), modeOf(path));
    // Waiting for the disk takes longer than everything else that an edit of one byte does.
    if (durability == Durability::PowerFailure && !isOnDisk(file))
        return Failure::ofSystem(errno);
    const QByteArray from = QFile::encodeName(file.fileName());
    if (::rename(from.constData(), QFile::encodeName(path).constData()) != 0)
        return Failure::ofSystem(errno);
    file.setAutoRemove(false);
    return {};
}

} // namespace

Result<void> saveWholeFile(const QString &path, const QByteArray &bytes, Durability durability) {
    // The new file takes the place of whatever has the name, a device node included.
    const QFileInfo target(path);
    if (target.exists() && !target.isFile())
        return notRegularFile();
    if (const auto name = systemName(path); !name)
        return *name.failure();
    if (target.fileName().isEmpty())
        return Failure::ofSystem(ENOENT);
    return replaceFile(behindLinks(target), bytes, durability);
}

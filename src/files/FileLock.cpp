// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/FileLock.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QThread>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <utility>

namespace {

constexpr qint64 napMilliseconds = 2;

QString notRegular() {
    return QCoreApplication::translate("FileLock", "Not a regular file");
}

std::variant<FileDescriptor, QString> openToReplace(const QByteArray &name) {
    struct stat facts = {};
    // Asked before opening, because opening alone already does something to a device.
    const bool exists = ::stat(name.constData(), &facts) == 0;
    if (!exists && errno != ENOENT)
        return qt_error_string(errno);
    if (exists && !S_ISREG(facts.st_mode))
        return notRegular();
    constexpr mode_t newFile = 0666;
    const int flags = O_RDWR | O_NONBLOCK | O_NOCTTY | O_CLOEXEC | (exists ? 0 : O_CREAT);
    FileDescriptor file(::open(name.constData(), flags, newFile));
    if (!file.isOpen())
        return qt_error_string(errno);
    return file;
}

// Who held the lock before may have put a new file in the place of the one that was opened.
bool standsAt(const QByteArray &name, const FileDescriptor &file) {
    struct stat opened = {};
    struct stat there = {};
    return ::fstat(file.get(), &opened) == 0 && ::stat(name.constData(), &there) == 0 &&
           S_ISREG(there.st_mode) && opened.st_dev == there.st_dev && opened.st_ino == there.st_ino;
}

bool isLocked(const QByteArray &name, const FileDescriptor &file) {
    if (::flock(file.get(), LOCK_EX | LOCK_NB) != 0)
        return errno != EWOULDBLOCK;
    return standsAt(name, file);
}

} // namespace

FileLock::FileLock(FileDescriptor file) : file_(std::move(file)) {}

std::variant<FileLock, QString> FileLock::take(const QString &path,
                                               std::chrono::milliseconds patience) {
    const QByteArray name = QFile::encodeName(path);
    if (name.contains('\0'))
        return qt_error_string(ENOENT);
    for (const QDeadlineTimer deadline(patience);;) {
        auto opened = openToReplace(name);
        if (const auto *reason = std::get_if<QString>(&opened))
            return *reason;
        auto &file = std::get<FileDescriptor>(opened);
        if (isLocked(name, file))
            return FileLock(std::move(file));
        if (deadline.hasExpired())
            return QCoreApplication::translate("FileLock", "Another program is changing it");
        const qint64 left = std::max(qint64(0), deadline.remainingTime());
        QThread::msleep(static_cast<unsigned long>(std::min(napMilliseconds, left)));
    }
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/SystemName.h"

#include "base/FileDescriptor.h"

#include <QCoreApplication>
#include <QFile>

#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

Result<QByteArray> systemName(const QString &path) {
    if (path.contains(QChar::Null))
        return Failure::ofSystem(ENOENT);
    return QFile::encodeName(path);
}

// No call reaches anything by a name, or a path, that is too long.
bool saysMissing(int error) {
    return error == ENOENT || error == ENOTDIR || error == ENAMETOOLONG;
}

bool isMissing(const QString &path) {
    const Result<QByteArray> name = systemName(path);
    struct stat facts = {};
    return !name || (::stat(name->constData(), &facts) != 0 && saysMissing(errno));
}

Result<QByteArray> linkTarget(const QByteArray &name) {
    QByteArray target(PATH_MAX, Qt::Uninitialized);
    const ssize_t length = ::readlink(name.constData(), target.data(), size_t(target.size()));
    if (length < 0)
        return Failure::ofSystem(errno);
    target.truncate(length);
    return target;
}

Failure notRegularFile() {
    return {QCoreApplication::translate("Files", "Not a regular file")};
}

bool isRegular(const FileDescriptor &file) {
    struct stat facts = {};
    return ::fstat(file.get(), &facts) == 0 && S_ISREG(facts.st_mode);
}

// Looked at again once it is open, because the file may have been exchanged meanwhile.
Result<FileDescriptor> openRegular(const QByteArray &name, int flags) {
    struct stat facts = {};
    if (::stat(name.constData(), &facts) != 0)
        return Failure::ofSystem(errno);
    if (!S_ISREG(facts.st_mode))
        return notRegularFile();
    FileDescriptor file(::open(name.constData(), flags | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (!file.isOpen())
        return Failure::ofSystem(errno);
    if (!isRegular(file))
        return notRegularFile();
    return file;
}

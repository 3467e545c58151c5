// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/FileStamp.h"

#include <QFile>

#include <sys/stat.h>

namespace {

qint64 nanoseconds(const timespec &time) {
    constexpr qint64 nanosecondsPerSecond = 1'000'000'000;
    return qint64(time.tv_sec) * nanosecondsPerSecond + time.tv_nsec;
}

} // namespace

std::optional<FileStamp> FileStamp::of(const QString &path) {
    struct stat facts = {};
    if (path.isEmpty() || path.contains(QChar::Null) ||
        ::stat(QFile::encodeName(path).constData(), &facts) != 0)
        return std::nullopt;
    return FileStamp{.device = facts.st_dev,
                     .inode = facts.st_ino,
                     .size = facts.st_size,
                     .written = nanoseconds(facts.st_mtim)};
}

QString FileStamp::text(const std::optional<FileStamp> &stamp) {
    if (!stamp)
        return QStringLiteral("none");
    return QStringLiteral("%1 %2 %3 %4")
        .arg(QString::number(stamp->device), QString::number(stamp->inode),
             QString::number(stamp->size), QString::number(stamp->written));
}

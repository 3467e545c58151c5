// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/FileStamp.h"

#include "files/SystemName.h"

#include <cerrno>
#include <sys/stat.h>

namespace {

std::chrono::nanoseconds sinceEpoch(const timespec &time) {
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

} // namespace

const QString FileStamp::unknownMark = QStringLiteral("unknown");

std::optional<FileStamp> FileStamp::of(const QString &path) {
    const Look seen = look(path);
    return seen ? *seen : std::nullopt;
}

FileStamp::Look FileStamp::look(const QString &path) {
    const Result<QByteArray> name = systemName(path);
    struct stat facts = {};
    if (name && ::stat(name->constData(), &facts) == 0)
        return std::optional(from(facts));
    if (name && !saysMissing(errno))
        return Failure::ofSystem(errno);
    return std::optional<FileStamp>();
}

FileStamp FileStamp::from(const struct stat &facts) {
    return {.device = facts.st_dev,
            .inode = facts.st_ino,
            .size = facts.st_size,
            .written = sinceEpoch(facts.st_mtim)};
}

QString FileStamp::mark(const QString &path) {
    const Look seen = look(path);
    if (!seen)
        return unknownMark;
    const std::optional<FileStamp> &stamp = *seen;
    if (!stamp)
        return QStringLiteral("none");
    return QStringLiteral("%1 %2 %3 %4")
        .arg(QString::number(stamp->device), QString::number(stamp->inode),
             QString::number(stamp->size), QString::number(stamp->written.count()));
}

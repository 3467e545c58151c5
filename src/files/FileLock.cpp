// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/FileLock.h"

#include "base/FileDescriptor.h"
#include "files/FileRights.h"
#include "files/SystemName.h"

#include <QCoreApplication>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <sys/file.h>
#include <thread>
#include <utility>

namespace {

constexpr std::chrono::nanoseconds nap = std::chrono::milliseconds(2);

Result<FileDescriptor> openToReplace(const QByteArray &name) {
    Result<FileDescriptor> there = openRegular(name, O_RDWR);
    if (there || there.failure()->systemError != ENOENT)
        return there;
    return openOrMake(name, O_RDWR | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, modeOfNewFiles);
}

/// Some file systems know no locks. There everybody gets one, since nobody could save otherwise:
/// only a holder is waited for.
bool isLocked(const QByteArray &name, const FileDescriptor &file) {
    if (::flock(file.get(), LOCK_EX | LOCK_NB) != 0)
        return errno != EWOULDBLOCK;
    // The holder before may have put a new file in the place of the one that was opened.
    const Result<bool> isThatFile = standsAt(name, file);
    return isThatFile && *isThatFile;
}

} // namespace

FileLock::FileLock(FileDescriptor file) : file_(std::move(file)) {}

Result<FileLock> FileLock::take(const QString &path, QDeadlineTimer deadline) {
    const Result<QByteArray> name = systemName(path);
    if (const Failure *failure = name.failure())
        return *failure;
    while (true) {
        Result<FileDescriptor> file = openToReplace(*name);
        if (const Failure *failure = file.failure())
            return *failure;
        if (isLocked(*name, *file))
            return FileLock(*std::move(file));
        if (deadline.hasExpired())
            return Failure{
                QCoreApplication::translate("FileLock", "Another program is changing it")};
        const std::chrono::nanoseconds left = deadline.remainingTimeAsDuration();
        std::this_thread::sleep_for(std::clamp(left, std::chrono::nanoseconds(0), nap));
    }
}

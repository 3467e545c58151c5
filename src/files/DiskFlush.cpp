// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/DiskFlush.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace {

/// \a answer is what a call has given.
Result<void> unlessRefused(int answer) {
    const bool isCallMissing = errno == EINVAL || errno == ENOTSUP || errno == ENOSYS;
    if (answer != 0 && !isCallMissing)
        return Failure::ofSystem(errno);
    return {};
}

} // namespace

Result<void> flushToDisk(int file) {
    return unlessRefused(::fdatasync(file));
}

Result<FileDescriptor> openFolder(const QByteArray &folder) {
    FileDescriptor opened(::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!opened.isOpen() && errno != EACCES)
        return Failure::ofSystem(errno);
    return opened;
}

Result<void> flushFolder(const FileDescriptor &folder) {
    if (!folder.isOpen())
        return {};
    return unlessRefused(::fsync(folder.get()));
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "base/FileDescriptor.h"

#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// \a writeSome is called with what is left of \a bytes, and gives what the system answers.
template <typename WriteSome>
Result<void> writeAllBy(QByteArrayView bytes, WriteSome writeSome) {
    while (!bytes.isEmpty()) {
        const ssize_t written = writeSome(bytes);
        if (written == 0)
            return Failure::ofSystem(EIO);
        if (written < 0 && errno != EINTR)
            return Failure::ofSystem(errno);
        if (written > 0)
            bytes = bytes.sliced(written);
    }
    return {};
}

} // namespace

void FileDescriptor::close() {
    if (isOpen())
        ::close(std::exchange(value_, -1));
}

Result<bool> standsAt(const QByteArray &name, const FileDescriptor &file) {
    struct stat opened = {};
    struct stat there = {};
    if (::fstat(file.get(), &opened) != 0 || ::stat(name.constData(), &there) != 0)
        return Failure::ofSystem(errno);
    return opened.st_dev == there.st_dev && opened.st_ino == there.st_ino;
}

Result<void> writeAll(int descriptor, QByteArrayView bytes) {
    return writeAllBy(bytes, [descriptor](QByteArrayView rest) {
        return ::write(descriptor, rest.data(), size_t(rest.size()));
    });
}

Result<void> writeAllAt(int descriptor, qint64 offset, QByteArrayView bytes) {
    return writeAllBy(bytes, [descriptor, end = offset + bytes.size()](QByteArrayView rest) {
        return ::pwrite(descriptor, rest.data(), size_t(rest.size()), end - rest.size());
    });
}

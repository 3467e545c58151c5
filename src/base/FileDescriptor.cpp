// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "base/FileDescriptor.h"

#include <cerrno>
#include <unistd.h>

void FileDescriptor::close() {
    if (isOpen())
        ::close(std::exchange(value_, -1));
}

Result<void> writeAll(int descriptor, QByteArrayView bytes) {
    while (!bytes.isEmpty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), size_t(bytes.size()));
        if (written == 0)
            return Failure::ofSystem(EIO);
        if (written < 0 && errno != EINTR)
            return Failure::ofSystem(errno);
        if (written > 0)
            bytes = bytes.sliced(written);
    }
    return {};
}

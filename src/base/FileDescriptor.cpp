// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "base/FileDescriptor.h"

#include <unistd.h>

void FileDescriptor::close() {
    if (isOpen())
        ::close(std::exchange(value_, -1));
}

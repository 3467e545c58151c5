// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "base/PipeEnds.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace {

int openPipe(std::array<int, 2> &ends) {
#ifdef Q_OS_LINUX
    return ::pipe2(ends.data(), O_CLOEXEC);
#else
    if (::pipe(ends.data()) != 0)
        return -1;
    for (const int end : ends)
        ::fcntl(end, F_SETFD, FD_CLOEXEC);
    return 0;
#endif
}

} // namespace

Result<PipeEnds> PipeEnds::open() {
    std::array<int, 2> ends = {-1, -1};
    if (openPipe(ends) != 0)
        return Failure::ofSystem(errno);
    return PipeEnds{FileDescriptor(ends[0]), FileDescriptor(ends[1])};
}

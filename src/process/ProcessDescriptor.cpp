// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "process/ProcessDescriptor.h"

#include <sys/syscall.h>
#include <unistd.h>

FileDescriptor openProcess([[maybe_unused]] pid_t pid) {
#ifdef SYS_pidfd_open
    return FileDescriptor(int(::syscall(SYS_pidfd_open, pid, 0)));
#else
    return {};
#endif
}

void signalProcess([[maybe_unused]] const FileDescriptor &process, [[maybe_unused]] int signal) {
#ifdef SYS_pidfd_send_signal
    if (process.isOpen())
        ::syscall(SYS_pidfd_send_signal, process.get(), signal, nullptr, 0);
#endif
}

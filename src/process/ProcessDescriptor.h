// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/FileDescriptor.h"

#include <sys/types.h>

/// A descriptor that stands for the process \a pid and for no other that gets its number later;
/// it becomes readable when the process ends. None where the system has no such descriptors.
FileDescriptor openProcess(pid_t pid);

/// Sends \a signal to \a process, if it has not ended.
void signalProcess(const FileDescriptor &process, int signal);

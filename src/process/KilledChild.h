// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <sys/types.h>

/// Looks, without waiting, whether the child \a pid has ended, and reaps it then. True once there
/// is no such child any more.
using Reaping = std::function<bool(pid_t pid)>;

/// What the system is asked for that.
bool reapIfEnded(pid_t pid);

/// Has the child \a pid, which was killed, reaped by \a reaping. Waits for its end for a tenth of a
/// second at most: one that is stuck in a call to the system ends with that, whenever it may be.
/// The event loop goes on looking then, for as long as the application lives.
void reapKilled(pid_t pid, const Reaping &reaping = reapIfEnded);

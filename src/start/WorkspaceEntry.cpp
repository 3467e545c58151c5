// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "start/WorkspaceEntry.h"

#include "start/RaiseChannel.h"
#include "start/WorkspaceLock.h"

#include <QDeadlineTimer>

#include <thread>

namespace {

constexpr std::chrono::milliseconds retryInterval(20);

} // namespace

Result<WorkspaceEntry> enterWorkspace(WorkspaceLock &lock, const QString &binary,
                                      std::chrono::milliseconds startUp) {
    const QDeadlineTimer patience(startUp);
    do {
        const Result<WorkspaceLock::Holder> holder = lock.take();
        if (const Failure *failure = holder.failure())
            return *failure;
        if (*holder == WorkspaceLock::Holder::ThisProcess)
            return WorkspaceEntry::First;
        const RaiseAnswer answer = requestRaise(lock.address(), binary);
        if (answer == RaiseAnswer::Raised)
            return WorkspaceEntry::Raised;
        if (answer == RaiseAnswer::Silence)
            return WorkspaceEntry::Silent;
        std::this_thread::sleep_for(retryInterval);
    } while (!patience.hasExpired());
    return WorkspaceEntry::Silent;
}

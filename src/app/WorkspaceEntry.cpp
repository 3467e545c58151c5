// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "app/WorkspaceEntry.h"

#include "app/RaiseChannel.h"
#include "app/WorkspaceLock.h"

#include <QDeadlineTimer>

#include <thread>

namespace {

constexpr std::chrono::milliseconds retryInterval(20);

} // namespace

WorkspaceEntry enterWorkspace(WorkspaceLock &lock, const QString &binary,
                              std::chrono::milliseconds startUp) {
    const QDeadlineTimer patience(startUp);
    do {
        const WorkspaceLock::Outcome outcome = lock.take();
        if (outcome == WorkspaceLock::Outcome::Taken)
            return WorkspaceEntry::First;
        if (outcome == WorkspaceLock::Outcome::Unavailable)
            return WorkspaceEntry::Unavailable;
        if (outcome == WorkspaceLock::Outcome::HeldElsewhere)
            return WorkspaceEntry::Silent;
        const RaiseAnswer answer = requestRaise(lock.socketPath(), binary);
        if (answer == RaiseAnswer::Raised)
            return WorkspaceEntry::Raised;
        if (answer == RaiseAnswer::Silence)
            return WorkspaceEntry::Silent;
        std::this_thread::sleep_for(retryInterval);
    } while (!patience.hasExpired());
    return WorkspaceEntry::Silent;
}

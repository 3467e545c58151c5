// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "control/ActionGate.h"

#include "base/WorkState.h"
#include "control/Messages.h"

bool ActionGate::isClosed() const {
    return !work_.isIdle();
}

QString ActionGate::whatCloses() const {
    return whatIsRunning(work_.now());
}

bool ActionGate::refuses() const {
    if (!isClosed())
        return false;
    messages_.say(Topic::Busy,
                  tr("%1: stop it or wait for its end.").arg(whatIsRunning(work_.now())));
    return true;
}

bool ActionGate::refusesElseCommits() const {
    if (refuses())
        return true;
    commitPendingInput();
    return false;
}

void ActionGate::commitPendingInput() const {
    if (commit_)
        commit_();
}

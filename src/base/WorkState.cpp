// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "base/WorkState.h"

#include <QCoreApplication>

QString whatIsRunning(Work work) {
    return work == Work::Searching
               ? QCoreApplication::translate("WorkState", "A search is running")
               : QCoreApplication::translate("WorkState", "The programmer tool is running");
}

bool WorkState::begin(Work work) {
    if (!isIdle())
        return false;
    become(work);
    return true;
}

void WorkState::stop() {
    if (!isIdle())
        become(Work::Stopping);
}

void WorkState::end() {
    become(Work::Idle);
}

void WorkState::become(Work work) {
    if (now_ == work)
        return;
    now_ = work;
    emit changed(now_);
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "base/TurnedWork.h"

#include "base/TurnOfWork.h"

#include <new>
#include <utility>

TurnedWork::TurnedWork(std::function<bool()> advance) : advance_(std::move(advance)) {
    connect(&turns_, &QTimer::timeout, this, &TurnedWork::takeTurn);
}

// Whoever hears of the end may lack memory as well, which says nothing of the work.
void TurnedWork::takeTurn() {
    bool isDone = false;
    try {
        isDone = worksForATurn(advance_);
    } catch (const std::bad_alloc &) {
        stop();
        emit outOfMemory();
        return;
    }
    if (!isDone) {
        emit advanced();
        return;
    }
    stop();
    emit done();
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QElapsedTimer>

#include <chrono>

/// How long work that takes many turns of the event loop may hold one: less than a frame of a
/// screen, with room for what else a turn does.
inline constexpr std::chrono::milliseconds turnOfWork{8};

/// Calls \a advance, a function from nothing to bool, until it gives true, which means that all is
/// done, or the turn is over. Gives what it gave last.
template <typename Advance>
bool worksForATurn(Advance advance) {
    QElapsedTimer time;
    time.start();
    bool isDone = false;
    while (!isDone && !time.hasExpired(turnOfWork.count()))
        isDone = advance();
    return isDone;
}

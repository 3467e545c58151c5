// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Units.h"

#include <QElapsedTimer>

#include <chrono>

/// How long work that takes many turns of the event loop may hold one: less than a frame of a
/// screen, with room for what else a turn does.
inline constexpr std::chrono::milliseconds turnOfWork{8};

/// The most bytes that are looked at in a turn where no clock is asked: some milliseconds' work.
inline constexpr qsizetype maxBytesInTurn = 4 * mebibyte;

/// How much text is read, or how many bytes are written as text, between two looks at the clock.
inline constexpr qsizetype textInStep = 32 * kibibyte;

/// How many bytes are moved between two looks at the clock.
inline constexpr qsizetype bytesInStep = mebibyte;

/// Calls \a advance, which gives true when all is done, until it does so or the turn is over. True
/// if all is done.
template <typename Advance>
bool worksForATurn(Advance advance) {
    QElapsedTimer time;
    time.start();
    bool isDone = false;
    while (!isDone && !time.hasExpired(turnOfWork.count()))
        isDone = advance();
    return isDone;
}

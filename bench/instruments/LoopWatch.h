// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "instruments/Stopwatch.h"

#include <QTimer>

/// Records the longest time for which the event loop did not come round, by a timer that is due
/// every millisecond.
class LoopWatch {
public:
    LoopWatch();

    void restart();
    /// The longest gap since restart(), in milliseconds.
    double longestGap() const { return longest_; }

private:
    QTimer timer_;
    Stopwatch sinceLast_;
    double longest_ = 0;
};

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <chrono>

/// Measures wall time from its construction, or from the last restart().
class Stopwatch {
public:
    void restart() { start_ = Clock::now(); }
    /// Milliseconds since the start.
    double milliseconds() const {
        return std::chrono::duration<double, std::milli>(Clock::now() - start_).count();
    }

    /// True once more than \a time has gone by since the start.
    bool isBeyond(std::chrono::milliseconds time) const { return Clock::now() - start_ > time; }

private:
    using Clock = std::chrono::steady_clock;
    Clock::time_point start_ = Clock::now();
};

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "instruments/LoopWatch.h"

#include <algorithm>
#include <chrono>

LoopWatch::LoopWatch() {
    timer_.setTimerType(Qt::PreciseTimer);
    timer_.setInterval(std::chrono::milliseconds(1));
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] {
        longest_ = std::max(longest_, sinceLast_.milliseconds());
        sinceLast_.restart();
    });
    timer_.start();
}

void LoopWatch::restart() {
    longest_ = 0;
    sinceLast_.restart();
}

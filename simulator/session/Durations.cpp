// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "session/Durations.h"

#include <array>
#include <cmath>
#include <cstdio>

namespace sim {
namespace {

/// Rounded to `decimals` decimals, without trailing zeros.
std::string shortest(double value, int decimals) {
    const double scale = std::pow(10, decimals);
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.8g", std::round(value * scale) / scale);
    return text.data();
}

std::string hundredths(double seconds) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.2fSec", seconds);
    return text.data();
}

} // namespace

std::string durationText(std::chrono::duration<double> time, Dialect dialect) {
    constexpr double minute = 60;
    constexpr double thousand = 1000;
    const double seconds = time.count();
    if (dialect == Dialect::Release)
        return hundredths(seconds);
    if (seconds < 1)
        return shortest(seconds * thousand, 1) + " ms";
    if (seconds < minute)
        return shortest(seconds, 2) + " Sec";
    const double whole = std::round(seconds);
    const double minutes = std::floor(whole / minute);
    return shortest(minutes, 0) + "m " + shortest(whole - minutes * minute, 0) + " Sec";
}

} // namespace sim

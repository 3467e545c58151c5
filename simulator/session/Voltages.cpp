// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "session/Voltages.h"

#include <array>
#include <cstdio>

namespace sim {

std::string volts(double value) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%g", value);
    return text.data();
}

std::string voltageLine(const Voltages &voltages, Dialect dialect) {
    const std::string programming = volts(voltages.programming);
    const std::string write = volts(voltages.write);
    const std::string verify = volts(voltages.verify);
    const std::string pulse = std::to_string(voltages.pulse);
    if (dialect == Dialect::New)
        return "VPP: " + programming + " V, VDD: " + write + " V, VCC: " + verify +
               " V, Pulse: " + pulse + " us\n\n";
    return "\nVPP=" + programming + "V, VDD=" + write + "V, VCC=" + verify + "V, Pulse=" + pulse +
           "us\n";
}

} // namespace sim

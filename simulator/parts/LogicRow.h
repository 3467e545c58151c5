// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace sim {

/// Pins of a bus, the least significant bit first. Pins count from 1.
using Bus = std::vector<int>;

/// Whether bit number `index` of `value` is set.
constexpr bool bit(unsigned value, std::size_t index) {
    return ((value >> index) & 1U) != 0;
}

/// One vector of a logic test: a letter for each pin, as the tool prints them.
///   0 1  the tester drives the pin          C  the tester clocks the pin
///   L H  the part must drive the pin        Z  the part must let the pin float
///   G V  ground, supply                     X  not driven, not looked at
class LogicRow {
public:
    LogicRow(int pins, int ground, int supply);

    LogicRow &drive(int pin, bool level);
    LogicRow &drive(const Bus &bus, unsigned value);
    LogicRow &clock(int pin);
    LogicRow &expect(int pin, bool level);
    LogicRow &expect(const Bus &bus, unsigned value);
    LogicRow &expectFloating(int pin);
    LogicRow &expectFloating(const Bus &bus);

    [[nodiscard]] const std::string &letters() const { return letterOfPin_; }

private:
    LogicRow &put(int pin, char letter);

    std::string letterOfPin_;
};

} // namespace sim

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "parts/LogicRow.h"

namespace sim {

LogicRow::LogicRow(int pins, int ground, int supply) : letterOfPin_(std::size_t(pins), 'X') {
    put(ground, 'G').put(supply, 'V');
}

LogicRow &LogicRow::drive(int pin, bool level) {
    return put(pin, level ? '1' : '0');
}

LogicRow &LogicRow::drive(const Bus &bus, unsigned value) {
    for (std::size_t i = 0; i < bus.size(); ++i)
        drive(bus[i], bit(value, i));
    return *this;
}

LogicRow &LogicRow::clock(int pin) {
    return put(pin, 'C');
}

LogicRow &LogicRow::expect(int pin, bool level) {
    return put(pin, level ? 'H' : 'L');
}

LogicRow &LogicRow::expect(const Bus &bus, unsigned value) {
    for (std::size_t i = 0; i < bus.size(); ++i)
        expect(bus[i], bit(value, i));
    return *this;
}

LogicRow &LogicRow::expectFloating(int pin) {
    return put(pin, 'Z');
}

LogicRow &LogicRow::expectFloating(const Bus &bus) {
    for (const int pin : bus)
        expectFloating(pin);
    return *this;
}

LogicRow &LogicRow::put(int pin, char letter) {
    letterOfPin_.at(std::size_t(pin - 1)) = letter;
    return *this;
}

} // namespace sim

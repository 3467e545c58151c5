// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "parts/LogicParts.h"

#include <vector>

namespace sim {
namespace {

constexpr int busPins = 20;
constexpr int busGround = 10;
constexpr int busSupply = 20;

/// All low, all high, both checkers, then one line high at a time.
const std::vector<unsigned> octalPatterns{0x00, 0xFF, 0x55, 0xAA, 0x01, 0x02,
                                          0x04, 0x08, 0x10, 0x20, 0x40, 0x80};
const std::vector<unsigned> nibblePatterns{0x0, 0xF, 0x5, 0xA, 0x1, 0x2, 0x4, 0x8};

LogicPart transceiver() {
    constexpr int directionPin = 1;
    constexpr int disablePin = 19;
    const Bus a{2, 3, 4, 5, 6, 7, 8, 9};
    const Bus b{18, 17, 16, 15, 14, 13, 12, 11};
    LogicPart part{.name = "74245", .pins = busPins, .rows = {}};
    for (const bool fromAToB : {true, false}) {
        LogicRow socket(busPins, busGround, busSupply);
        socket.drive(directionPin, fromAToB);
        for (const unsigned pattern : octalPatterns) {
            LogicRow row = socket;
            part.rows.push_back(row.drive(disablePin, false)
                                    .drive(fromAToB ? a : b, pattern)
                                    .expect(fromAToB ? b : a, pattern));
        }
        part.rows.push_back(socket.drive(disablePin, true).expectFloating(a).expectFloating(b));
    }
    return part;
}

struct DriverHalf {
    int disablePin;
    Bus inputs;
    Bus outputs;
};

void addHalf(LogicRow &row, const DriverHalf &half, unsigned pattern, bool disabled) {
    row.drive(half.disablePin, disabled).drive(half.inputs, pattern);
    if (disabled)
        row.expectFloating(half.outputs);
    else
        row.expect(half.outputs, pattern);
}

LogicPart lineDriver() {
    const DriverHalf first{1, {2, 4, 6, 8}, {18, 16, 14, 12}};
    const DriverHalf second{19, {11, 13, 15, 17}, {9, 7, 5, 3}};
    LogicPart part{.name = "74244", .pins = busPins, .rows = {}};
    for (const bool firstDisabled : {false, true})
        for (const bool secondDisabled : {false, true})
            for (const unsigned pattern : nibblePatterns) {
                LogicRow row(busPins, busGround, busSupply);
                addHalf(row, first, pattern, firstDisabled);
                addHalf(row, second, pattern ^ 0xFU, secondDisabled);
                part.rows.push_back(row);
            }
    return part;
}

} // namespace

std::vector<LogicPart> busParts() {
    return {lineDriver(), transceiver()};
}

} // namespace sim

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "parts/LogicRow.h"

#include <string>
#include <vector>

namespace sim {

/// A logic IC and the vectors that a good one passes, worked out from its truth table.
struct LogicPart {
    std::string name;
    int pins = 14;
    std::vector<LogicRow> rows;
};

/// Every logic IC that the simulator can test.
const std::vector<LogicPart> &logicParts();

// The families that logicParts() is made of.
std::vector<LogicPart> gateParts();     ///< NAND to XOR, 14 pins
std::vector<LogicPart> selectorParts(); ///< decoders and multiplexers, 16 and 24 pins
std::vector<LogicPart> busParts();      ///< drivers and transceivers, 20 pins
std::vector<LogicPart> clockedParts();  ///< flip-flops, latches and counters, 14 to 20 pins
LogicPart peripheralInterfaceAdapter(); ///< the 6821, 40 pins

} // namespace sim

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "parts/LogicParts.h"

#include <bit>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace sim {
namespace {

constexpr int gatePins = 14;
constexpr int gateGround = 7;
constexpr int gateSupply = 14;

struct Gate {
    Bus inputs;
    int output;
};

/// What a gate answers when `ones` of its `inputs` inputs are high.
using TruthTable = bool (*)(int ones, int inputs);

bool conjunction(int ones, int inputs) {
    return ones == inputs;
}
bool negatedConjunction(int ones, int inputs) {
    return ones != inputs;
}
bool disjunction(int ones, int) {
    return ones > 0;
}
bool negatedDisjunction(int ones, int) {
    return ones == 0;
}
bool oddParity(int ones, int) {
    return ones % 2 == 1;
}

/// How a gate says "high": it drives its output, or lets go of it for a resistor to pull up.
enum class Output { Driven, OpenCollector };

/// Every combination of inputs once, the same for all gates of the part.
LogicPart gates(std::string name, const std::vector<Gate> &gatesOfPart, TruthTable truth,
                Output output = Output::Driven) {
    LogicPart part{.name = std::move(name), .pins = gatePins, .rows = {}};
    const std::size_t width = gatesOfPart.front().inputs.size();
    for (unsigned value = 0; value < (1U << width); ++value) {
        LogicRow row(gatePins, gateGround, gateSupply);
        const bool answer = truth(std::popcount(value), int(width));
        for (const Gate &gate : gatesOfPart) {
            row.drive(gate.inputs, value).expect(gate.output, answer);
            if (answer && output == Output::OpenCollector)
                row.expectFloating(gate.output);
        }
        part.rows.push_back(row);
    }
    return part;
}

const std::vector<Gate> quad74{{{1, 2}, 3}, {{4, 5}, 6}, {{9, 10}, 8}, {{12, 13}, 11}};
const std::vector<Gate> quad7402{{{2, 3}, 1}, {{5, 6}, 4}, {{8, 9}, 10}, {{11, 12}, 13}};
const std::vector<Gate> quad40{{{1, 2}, 3}, {{5, 6}, 4}, {{8, 9}, 10}, {{12, 13}, 11}};
const std::vector<Gate> hex74{{{1}, 2}, {{3}, 4}, {{5}, 6}, {{9}, 8}, {{11}, 10}, {{13}, 12}};
const std::vector<Gate> triple74{{{1, 2, 13}, 12}, {{3, 4, 5}, 6}, {{9, 10, 11}, 8}};
const std::vector<Gate> dual74{{{1, 2, 4, 5}, 6}, {{9, 10, 12, 13}, 8}};

} // namespace

std::vector<LogicPart> gateParts() {
    return {
        gates("4001", quad40, negatedDisjunction),
        gates("4011", quad40, negatedConjunction),
        gates("4070", quad40, oddParity),
        gates("4071", quad40, disjunction),
        gates("4081", quad40, conjunction),
        gates("7400", quad74, negatedConjunction),
        gates("7401", quad7402, negatedConjunction, Output::OpenCollector),
        gates("7402", quad7402, negatedDisjunction),
        gates("7404", hex74, negatedConjunction),
        gates("7408", quad74, conjunction),
        gates("7410", triple74, negatedConjunction),
        gates("7420", dual74, negatedConjunction),
        gates("7432", quad74, disjunction),
        gates("7486", quad74, oddParity),
    };
}

} // namespace sim

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "parts/LogicParts.h"

#include <string>
#include <utility>
#include <vector>

namespace sim {
namespace {

/// What a decoder's address and enable pins hold in one vector.
struct DecoderStep {
    unsigned address;
    unsigned enables;
};

/// A decoder whose selected output goes low and whose others stay high.
struct Decoder {
    LogicRow socket;
    Bus select;
    Bus outputs;
    Bus enables;
    unsigned enabled; ///< what the enable pins must hold for an output to go low
};

LogicRow decoderRow(const Decoder &decoder, const DecoderStep &step) {
    const unsigned none = (1U << decoder.outputs.size()) - 1;
    const bool enabled = step.enables == decoder.enabled;
    LogicRow row = decoder.socket;
    return row.drive(decoder.select, step.address)
        .drive(decoder.enables, step.enables)
        .expect(decoder.outputs, enabled ? none & ~(1U << step.address) : none);
}

std::vector<DecoderStep> everyAddress(const Decoder &decoder) {
    std::vector<DecoderStep> steps;
    for (unsigned address = 0; address < decoder.outputs.size(); ++address)
        steps.push_back({address, decoder.enabled});
    return steps;
}

LogicPart decoderPart(std::string name, const Decoder &decoder,
                      const std::vector<DecoderStep> &steps) {
    LogicPart part{
        .name = std::move(name), .pins = int(decoder.socket.letters().size()), .rows = {}};
    for (const DecoderStep &step : steps)
        part.rows.push_back(decoderRow(decoder, step));
    return part;
}

LogicPart threeToEight() {
    const Decoder decoder{.socket = {16, 8, 16},
                          .select = {1, 2, 3},
                          .outputs = {15, 14, 13, 12, 11, 10, 9, 7},
                          .enables = {4, 5, 6},
                          .enabled = 0b100};
    std::vector<DecoderStep> steps{{7, 0b111}, {0, 0b011}, {7, 0b011}, {0, 0b000}};
    for (const DecoderStep &step : everyAddress(decoder))
        steps.push_back(step);
    return decoderPart("74138", decoder, steps);
}

LogicPart fourToSixteen() {
    const Decoder decoder{.socket = {24, 12, 24},
                          .select = {23, 22, 21, 20},
                          .outputs = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 13, 14, 15, 16, 17},
                          .enables = {18, 19},
                          .enabled = 0b00};
    std::vector<DecoderStep> steps = everyAddress(decoder);
    for (const unsigned disabled : {0b01U, 0b10U, 0b11U})
        steps.push_back({0, disabled});
    return decoderPart("74154", decoder, steps);
}

LogicPart quadSelector() {
    constexpr int selectPin = 1;
    constexpr int strobePin = 15;
    const Bus first{2, 5, 11, 14};
    const Bus second{3, 6, 10, 13};
    const Bus outputs{4, 7, 9, 12};
    constexpr unsigned allLines = 0b1111;
    LogicPart part{.name = "74157", .pins = 16, .rows = {}};
    for (const bool strobe : {false, true})
        for (const bool select : {false, true})
            for (const unsigned a : {0b0000U, 0b0101U, 0b1010U, 0b1111U}) {
                const unsigned b = a ^ allLines;
                const unsigned chosen = select ? b : a;
                part.rows.push_back(LogicRow(16, 8, 16)
                                        .drive(selectPin, select)
                                        .drive(strobePin, strobe)
                                        .drive(first, a)
                                        .drive(second, b)
                                        .expect(outputs, strobe ? 0 : chosen));
            }
    return part;
}

} // namespace

std::vector<LogicPart> selectorParts() {
    return {threeToEight(), fourToSixteen(), quadSelector()};
}

} // namespace sim

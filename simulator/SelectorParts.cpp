#include "LogicParts.h"

namespace sim {
namespace {

/// Vectors of a decoder whose selected output goes low and whose others stay high.
struct Decoder {
    LogicRow socket;
    Bus select;
    Bus outputs;
    Bus enables;
    unsigned enabled; ///< what the enable pins must hold for an output to go low
};

LogicRow decoderRow(const Decoder &decoder, unsigned address, unsigned enables) {
    const unsigned none = (1U << decoder.outputs.size()) - 1;
    const unsigned outputs = enables == decoder.enabled ? none & ~(1U << address) : none;
    LogicRow row = decoder.socket;
    return row.drive(decoder.select, address)
        .drive(decoder.enables, enables)
        .expect(decoder.outputs, outputs);
}

/// Every address while enabled, then every way to be disabled.
LogicPart decoderPart(std::string name, const Decoder &decoder) {
    LogicPart part{.name = std::move(name),
                   .pins = static_cast<int>(decoder.socket.letters().size()),
                   .rows = {}};
    for (unsigned address = 0; address < decoder.outputs.size(); ++address)
        part.rows.push_back(decoderRow(decoder, address, decoder.enabled));
    for (unsigned enables = 0; enables < (1U << decoder.enables.size()); ++enables)
        if (enables != decoder.enabled)
            part.rows.push_back(decoderRow(decoder, 0, enables));
    return part;
}

LogicPart threeToEight() {
    return decoderPart("74138", {.socket = {16, 8, 16},
                                 .select = {1, 2, 3},
                                 .outputs = {15, 14, 13, 12, 11, 10, 9, 7},
                                 .enables = {4, 5, 6},
                                 .enabled = 0b100});
}

LogicPart fourToSixteen() {
    return decoderPart("74154", {.socket = {24, 12, 24},
                                 .select = {23, 22, 21, 20},
                                 .outputs = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 13, 14, 15, 16, 17},
                                 .enables = {18, 19},
                                 .enabled = 0b00});
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

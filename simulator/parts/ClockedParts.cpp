// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "parts/LogicParts.h"

#include <string>
#include <utility>
#include <vector>

namespace sim {
namespace {

/// What the 7474 holds after a clock: clear and preset, both low to act, overrule the data.
struct FlipFlopStep {
    bool clear;
    bool data;
    bool preset;
};

bool outputAfter(const FlipFlopStep &step) {
    if (!step.clear)
        return false;
    return !step.preset || step.data;
}

/// Both halves of the 7474 do the same.
LogicRow flipFlopRow(const FlipFlopStep &step) {
    struct HalfPins {
        int clear, data, clock, preset, output, inverted;
    };
    LogicRow row(14, 7, 14);
    for (const HalfPins &half : {HalfPins{1, 2, 3, 4, 5, 6}, HalfPins{13, 12, 11, 10, 9, 8}}) {
        row.drive(half.clear, step.clear).drive(half.preset, step.preset);
        row.drive(half.data, step.data).clock(half.clock);
        row.expect(half.output, outputAfter(step)).expect(half.inverted, !outputAfter(step));
    }
    return row;
}

LogicPart dualFlipFlop() {
    LogicPart part{.name = "7474", .pins = 14, .rows = {}};
    for (const FlipFlopStep &step : {FlipFlopStep{.clear = false, .data = false, .preset = true},
                                     FlipFlopStep{.clear = true, .data = false, .preset = false},
                                     FlipFlopStep{.clear = true, .data = false, .preset = true},
                                     FlipFlopStep{.clear = true, .data = true, .preset = true}})
        part.rows.push_back(flipFlopRow(step));
    return part;
}

/// The 74373 and 74374 share their pins; pin 11 opens the latch of one and clocks the other.
enum class Storage { Latch, FlipFlop };

LogicPart octalStorage(std::string name, Storage storage) {
    constexpr int disablePin = 1;
    constexpr int gatePin = 11;
    const Bus data{3, 4, 7, 8, 13, 14, 17, 18};
    const Bus outputs{2, 5, 6, 9, 12, 15, 16, 19};
    constexpr unsigned allLines = 0xFF;
    const LogicRow socket(20, 10, 20);
    LogicPart part{.name = std::move(name), .pins = 20, .rows = {}};
    for (const unsigned pattern : {0x00U, 0xFFU, 0x55U, 0xAAU, 0x0FU, 0x81U}) {
        LogicRow store = socket;
        store.drive(disablePin, false).drive(data, pattern).expect(outputs, pattern);
        part.rows.push_back(storage == Storage::Latch ? store.drive(gatePin, true)
                                                      : store.clock(gatePin));
        // The gate closes before the data changes: a latch must not see both at once.
        LogicRow close = socket;
        close.drive(gatePin, false).drive(disablePin, false);
        part.rows.push_back(close.drive(data, pattern).expect(outputs, pattern));
        LogicRow hold = socket;
        hold.drive(gatePin, false).drive(data, pattern ^ allLines);
        part.rows.push_back(LogicRow(hold).drive(disablePin, false).expect(outputs, pattern));
        part.rows.push_back(LogicRow(hold).drive(disablePin, true).expectFloating(outputs));
    }
    return part;
}

/// The 74161, a counter of four bits that is cleared at once and loaded with the clock.
class Counter {
public:
    void clear() {
        count_ = 0;
        addRow({.clear = false});
    }

    void load(unsigned value) {
        count_ = value;
        addRow({.load = false, .data = value, .clocked = true});
    }

    void step() {
        count_ = (count_ + 1) & highest;
        addRow({.clocked = true});
    }

    /// With either enable low the clock has no effect.
    void hold(bool enableP, bool enableT) {
        addRow({.enableP = enableP, .enableT = enableT, .clocked = true});
    }

    [[nodiscard]] std::vector<LogicRow> takeRows() { return std::move(rows_); }

private:
    static constexpr unsigned highest = 15;

    struct Step {
        bool clear = true;
        bool load = true;
        bool enableP = true;
        bool enableT = true;
        unsigned data = 0;
        bool clocked = false;
    };

    void addRow(const Step &step) {
        LogicRow row(16, 8, 16);
        row.drive(1, step.clear).drive(2, false).drive(Bus{3, 4, 5, 6}, step.data);
        row.drive(7, step.enableP).drive(9, step.load).drive(10, step.enableT);
        row.expect(Bus{14, 13, 12, 11}, count_).expect(15, step.enableT && count_ == highest);
        if (step.clocked)
            row.clock(2);
        rows_.push_back(row);
    }

    std::vector<LogicRow> rows_;
    unsigned count_ = 0;
};

LogicPart counter() {
    constexpr unsigned steps = 16;
    Counter part;
    part.clear();
    for (unsigned i = 0; i < steps; ++i)
        part.step();
    for (const unsigned value : {0b0101U, 0b1010U, 0b1111U})
        part.load(value);
    part.hold(false, true);
    part.hold(true, false);
    part.hold(false, false);
    part.step();
    part.load(0b1001);
    part.clear();
    return {.name = "74161", .pins = 16, .rows = part.takeRows()};
}

} // namespace

std::vector<LogicPart> clockedParts() {
    return {dualFlipFlop(), counter(), octalStorage("74373", Storage::Latch),
            octalStorage("74374", Storage::FlipFlop)};
}

} // namespace sim

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "parts/LogicParts.h"

#include <array>
#include <cstddef>
#include <utility>
#include <vector>

namespace sim {
namespace {

constexpr unsigned portLines = 0xFF;

/// Bits of a control register.
constexpr unsigned interruptEnabled = 0b001;
constexpr unsigned risingEdge = 0b010;
constexpr unsigned portSelected = 0b100;
constexpr unsigned interruptFlag = 0x80;
constexpr unsigned writableBits = 0x3F;

/// The registers of one half of a 6821 and what they do.
struct PortHalf {
    unsigned output = 0;
    unsigned direction = 0; ///< a set bit is an output
    unsigned control = 0;

    [[nodiscard]] bool interrupting() const {
        return (control & interruptFlag) != 0 && (control & interruptEnabled) != 0;
    }

    void writeData(unsigned value) { ((control & portSelected) != 0 ? output : direction) = value; }

    void writeControl(unsigned value) {
        control = (control & ~writableBits) | (value & writableBits);
    }

    [[nodiscard]] unsigned lines(unsigned driven) const {
        return (output & direction) | (driven & ~direction & portLines);
    }

    /// Reading the port takes back its interrupt.
    unsigned readData(unsigned driven) {
        if ((control & portSelected) == 0)
            return direction;
        control &= ~interruptFlag;
        return lines(driven);
    }
};

enum class Register { DataA, ControlA, DataB, ControlB };

/// A bench for the 6821 peripheral interface adapter: it carries out bus cycles on a model of the
/// part and notes, cycle by cycle, what a tester drives and what it must see.
class PiaBench {
public:
    void reset() {
        halves_ = {};
        rows_.push_back(idleRow().drive(resetPin, false));
    }

    void write(Register target, unsigned value) {
        PortHalf &half = halfOf(target);
        if (isControl(target))
            half.writeControl(value);
        else
            half.writeData(value);
        LogicRow row = selectedRow(target);
        rows_.push_back(row.drive(readPin, false).clock(enablePin).drive(dataBus_, value));
    }

    /// A write while one of the three chip selects says no changes nothing.
    void writeElsewhere(int selectPin, bool level, Register target, unsigned value) {
        LogicRow row = selectedRow(target);
        row.drive(readPin, false).clock(enablePin).drive(dataBus_, value);
        rows_.push_back(row.drive(selectPin, level));
    }

    /// Reads while the enable pin is high, then lets the bus go.
    void read(Register source) {
        LogicRow row = selectedRow(source);
        PortHalf &half = halfOf(source);
        const unsigned driven = &half == &halves_[0] ? drivenA_ : drivenB_;
        const unsigned value = isControl(source) ? half.control : half.readData(driven);
        rows_.push_back(row.drive(readPin, true).drive(enablePin, true).expect(dataBus_, value));
        rows_.push_back(idleRow());
    }

    /// What the tester puts on the lines that are inputs.
    void drivePorts(unsigned a, unsigned b) {
        drivenA_ = a;
        drivenB_ = b;
    }

    /// An edge of CA1; the flag rises when it is the one that the control register waits for.
    void raiseInterruptLineA() {
        interruptLineA_ = true;
        if ((halves_[0].control & risingEdge) != 0)
            halves_[0].control |= interruptFlag;
        rows_.push_back(idleRow());
    }

    [[nodiscard]] std::vector<LogicRow> takeRows() { return std::move(rows_); }

    static constexpr int select0Pin = 22;
    static constexpr int notSelect2Pin = 23;
    static constexpr int select1Pin = 24;

private:
    static constexpr int readPin = 21;
    static constexpr int enablePin = 25;
    static constexpr int resetPin = 34;
    const Bus dataBus_{33, 32, 31, 30, 29, 28, 27, 26};

    static bool isControl(Register which) {
        return which == Register::ControlA || which == Register::ControlB;
    }

    PortHalf &halfOf(Register which) {
        const bool first = which == Register::DataA || which == Register::ControlA;
        return first ? halves_[0] : halves_[1];
    }

    [[nodiscard]] static LogicRow withPort(LogicRow row, const Bus &bus, const PortHalf &half,
                                           unsigned driven) {
        for (std::size_t i = 0; i < bus.size(); ++i) {
            if (bit(half.direction, i))
                row.expect(bus[i], bit(half.output, i));
            else
                row.drive(bus[i], bit(driven, i));
        }
        return row;
    }

    /// Open-drain: pulled low or let go.
    static void expectInterrupt(LogicRow &row, int pin, const PortHalf &half) {
        if (half.interrupting())
            row.expect(pin, false);
        else
            row.expectFloating(pin);
    }

    [[nodiscard]] LogicRow portsRow() const {
        const Bus portA{2, 3, 4, 5, 6, 7, 8, 9};
        const Bus portB{10, 11, 12, 13, 14, 15, 16, 17};
        LogicRow row(40, 1, 20);
        row = withPort(withPort(row, portA, halves_[0], drivenA_), portB, halves_[1], drivenB_);
        row.drive(Bus{18, 19, 39}, 0).drive(40, interruptLineA_).drive(resetPin, true);
        expectInterrupt(row, 38, halves_[0]);
        expectInterrupt(row, 37, halves_[1]);
        return row;
    }

    [[nodiscard]] LogicRow idleRow() const {
        return portsRow()
            .drive(Bus{select0Pin, notSelect2Pin, select1Pin}, 0b010)
            .drive(readPin, true)
            .drive(enablePin, false)
            .drive(Bus{36, 35}, 0)
            .expectFloating(dataBus_);
    }

    [[nodiscard]] LogicRow selectedRow(Register which) const {
        return portsRow()
            .drive(Bus{select0Pin, notSelect2Pin, select1Pin}, 0b101)
            .drive(Bus{36, 35}, unsigned(which));
    }

    std::array<PortHalf, 2> halves_;
    unsigned drivenA_ = 0;
    unsigned drivenB_ = 0;
    bool interruptLineA_ = false;
    std::vector<LogicRow> rows_;
};

void testOutputs(PiaBench &bench) {
    bench.write(Register::DataA, 0xFF);
    bench.write(Register::ControlA, portSelected);
    for (const unsigned pattern : {0x55U, 0xAAU, 0x0FU})
        bench.write(Register::DataA, pattern);
    bench.write(Register::DataB, 0xF0);
    bench.write(Register::ControlB, portSelected);
    bench.write(Register::DataB, 0xA5);
    bench.read(Register::DataB);
    bench.read(Register::ControlA);
}

void testSelects(PiaBench &bench) {
    bench.writeElsewhere(PiaBench::select0Pin, false, Register::DataA, 0xFF);
    bench.writeElsewhere(PiaBench::select1Pin, false, Register::DataA, 0xFF);
    bench.writeElsewhere(PiaBench::notSelect2Pin, true, Register::DataA, 0xFF);
    bench.read(Register::DataA);
}

void testInputs(PiaBench &bench) {
    bench.write(Register::ControlA, 0);
    bench.read(Register::DataA);
    // As port A turns round, the tester drives what the part drove: they never disagree.
    bench.drivePorts(0x0F, 0x00);
    bench.write(Register::DataA, 0x00);
    bench.write(Register::ControlA, portSelected | risingEdge | interruptEnabled);
    bench.drivePorts(0x3C, 0x09);
    bench.read(Register::DataA);
    bench.read(Register::DataB);
}

void testInterrupt(PiaBench &bench) {
    bench.raiseInterruptLineA();
    bench.read(Register::ControlA);
    bench.read(Register::DataA);
    bench.reset();
}

} // namespace

LogicPart peripheralInterfaceAdapter() {
    PiaBench bench;
    bench.reset();
    testOutputs(bench);
    testSelects(bench);
    testInputs(bench);
    testInterrupt(bench);
    return {.name = "6821", .pins = 40, .rows = bench.takeRows()};
}

} // namespace sim

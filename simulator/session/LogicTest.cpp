// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "session/LogicTest.h"

#include "parts/Bench.h"
#include "session/Output.h"
#include "session/Socket.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <set>
#include <string_view>
#include <vector>

namespace sim {
namespace {

constexpr std::string_view goodColour = "\x1b[0m";
constexpr std::string_view badColour = "\x1b[0;91m";
constexpr std::chrono::milliseconds vectorTime{20};

std::string headerOf(int pins) {
    constexpr std::size_t width = 3;
    std::string header(2 * width, ' ');
    for (int pin = 1; pin <= pins; ++pin) {
        std::string number = std::to_string(pin);
        number.resize(width, ' ');
        header += number;
    }
    return header + '\n';
}

bool isOutputLetter(char letter) {
    return letter == 'L' || letter == 'H';
}

/// The pins that the part drives in any vector, counted from 0.
std::vector<std::size_t> outputsOf(const LogicPart &part) {
    std::vector<std::size_t> outputs;
    for (std::size_t pin = 0; pin < std::size_t(part.pins); ++pin)
        if (std::any_of(part.rows.begin(), part.rows.end(),
                        [pin](const LogicRow &row) { return isOutputLetter(row.letters()[pin]); }))
            outputs.push_back(pin);
    return outputs;
}

/// True in every third test at this bench, counted only while that fault is chosen.
bool isFlakyNow(const Environment &environment) {
    constexpr std::size_t testsInTurn = 3;
    return environment.has(Fault::FlakyPin) &&
           Bench(environment.bench, environment.firstContent).countLogicTest() % testsInTurn == 0;
}

/// The pins that are stuck high in this test.
std::set<std::size_t> stuckPins(const LogicPart &part, const Environment &environment) {
    const std::vector<std::size_t> outputs = outputsOf(part);
    std::set<std::size_t> stuck;
    if (outputs.empty())
        return stuck;
    if (environment.has(Fault::BadLogicPins))
        stuck.insert(outputs.front());
    if (isFlakyNow(environment))
        stuck.insert(outputs.back());
    return stuck;
}

/// A pin that is stuck high looks right only where high was expected.
bool isWrongWhenHigh(char letter) {
    return letter == 'L' || letter == 'Z';
}

/// The table of a test, and how many of its fields are wrong.
struct Table {
    std::string text;
    int errors = 0;
};

void addRow(std::size_t number, const std::string &letters, const std::set<std::size_t> &stuck,
            Table &table) {
    std::array<char, 32> start{};
    std::snprintf(start.data(), start.size(), "%04zu: ", number);
    table.text += start.data();
    for (std::size_t pin = 0; pin < letters.size(); ++pin) {
        const bool bad = stuck.count(pin) > 0 && isWrongWhenHigh(letters[pin]);
        table.errors += bad ? 1 : 0;
        table.text += bad ? badColour : goodColour;
        table.text += {letters[pin], bad ? '-' : ' ', ' '};
    }
    table.text += std::string(goodColour) + '\n';
}

Outcome reportVerdict(int errors) {
    if (errors == 0) {
        say("Logic test successful.\n");
        return Outcome::Good;
    }
    say("Logic test failed: " + std::to_string(errors) + " errors encountered.\n");
    return Outcome::Failed;
}

/// A first vector that cannot be applied ends the test.
Outcome breakOff() {
    say("Error running the first step of logic test.\n");
    return Outcome::Failed;
}

Outcome present(const Table &table) {
    // Into a pipe this stays in the buffer: the verdict on standard error comes first.
    std::fputs(table.text.c_str(), stdout);
    return reportVerdict(table.errors);
}

} // namespace

Outcome testLogicPart(const LogicPart &part, const Environment &environment) {
    if (part.rows.empty())
        return testNothing(part.name, part.pins, environment);
    if (environment.has(Fault::Overcurrent)) {
        sayOvercurrent();
        return breakOff();
    }
    const std::set<std::size_t> stuck = stuckPins(part, environment);
    Table table{headerOf(part.pins)};
    for (std::size_t i = 0; i < part.rows.size(); ++i) {
        if (environment.has(Fault::Unplugged) && i == part.rows.size() / 2) {
            sayNoAnswer();
            breakOff();
            sayNoAnswer();
            return Outcome::Failed;
        }
        addRow(i, part.rows[i].letters(), stuck, table);
        spend(vectorTime, environment.pace);
    }
    return present(table);
}

Outcome testNothing(const std::string &name, int pins, const Environment &environment) {
    if (environment.dialect == Dialect::New) {
        say(name + ": test vectors are not defined for this device type.\n");
        return Outcome::Failed;
    }
    return present({headerOf(pins)});
}

} // namespace sim

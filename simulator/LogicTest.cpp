#include "LogicTest.h"

#include "Output.h"
#include "Programmer.h"

#include <cstdio>
#include <string_view>

namespace sim {
namespace {

constexpr std::string_view goodColour = "\x1b[0m";
constexpr std::string_view badColour = "\x1b[0;91m";
constexpr std::chrono::milliseconds vectorTime{20};

void printHeader(int pins) {
    std::fputs("      ", stdout);
    for (int pin = 1; pin <= pins; ++pin)
        std::printf("%-3d", pin);
    std::fputc('\n', stdout);
}

bool isOutputLetter(char letter) {
    return letter == 'L' || letter == 'H';
}

/// The first pin that the part drives in any vector, counted from 0.
std::size_t firstOutput(const LogicPart &part) {
    const auto pins = static_cast<std::size_t>(part.pins);
    for (std::size_t pin = 0; pin < pins; ++pin)
        for (const LogicRow &row : part.rows)
            if (isOutputLetter(row.letters()[pin]))
                return pin;
    return pins;
}

/// A pin that is stuck high looks right only where high was expected.
bool isWrongWhenHigh(char letter) {
    return letter == 'L' || letter == 'Z';
}

int printRow(std::size_t number, const std::string &letters, std::size_t stuckPin) {
    int errors = 0;
    std::printf("%04zu: ", number);
    for (std::size_t pin = 0; pin < letters.size(); ++pin) {
        const bool bad = pin == stuckPin && isWrongWhenHigh(letters[pin]);
        errors += bad ? 1 : 0;
        std::printf("%s%c%c ", (bad ? badColour : goodColour).data(), letters[pin],
                    bad ? '-' : ' ');
    }
    std::printf("%s\n", goodColour.data());
    return errors;
}

Outcome reportVerdict(int errors) {
    if (errors == 0) {
        say("Logic test successful.\n");
        return Outcome::Good;
    }
    say("Logic test failed: " + std::to_string(errors) + " errors encountered.\n");
    return Outcome::Failed;
}

} // namespace

Outcome testLogicPart(const LogicPart &part, const Environment &environment) {
    if (part.rows.empty())
        return testNothing(part.name, part.pins, environment);
    if (environment.has(Fault::Overcurrent))
        return reportOvercurrent(false);
    const std::size_t noPin = part.rows.front().letters().size();
    const std::size_t stuckPin = environment.has(Fault::BadLogicPins) ? firstOutput(part) : noPin;
    printHeader(part.pins);
    int errors = 0;
    for (std::size_t i = 0; i < part.rows.size(); ++i) {
        if (environment.has(Fault::Unplugged) && i == part.rows.size() / 2)
            return reportUnplugged();
        errors += printRow(i, part.rows[i].letters(), stuckPin);
        spend(vectorTime, environment.pace);
    }
    return reportVerdict(errors);
}

Outcome testNothing(const std::string &name, int pins, const Environment &environment) {
    if (environment.dialect == Dialect::New) {
        say(name + ": test vectors are not defined for this device type.\n");
        return Outcome::Failed;
    }
    printHeader(pins);
    return reportVerdict(0);
}

} // namespace sim

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "session/Session.h"

#include "parts/Catalogue.h"
#include "session/Connection.h"
#include "session/Inquiries.h"
#include "session/LogicTest.h"
#include "session/Misbehaviour.h"
#include "session/Output.h"

#include <string>

namespace sim {

Session::Session(const Options &commandLine, const Environment &surroundings)
    : options_(commandLine), environment_(surroundings) {}

Outcome Session::run() const {
    misbehaveAtStart(environment_);
    switch (options_.action) {
    case Action::List:
        return listNames(options_, environment_);
    case Action::Describe:
        return describeDevice(options_, environment_);
    case Action::Presence:
        return showPresence(environment_);
    case Action::Supported:
        return showSupported(environment_);
    case Action::Version:
        return showVersion(environment_);
    case Action::Simulator:
        return showSimulator();
    default:
        return runOnDevice();
    }
}

Outcome Session::runOnDevice() const {
    if (connect(environment_) == Outcome::Failed)
        return Outcome::Failed;
    // The newer tool presents the programmer before it looks for the device.
    if (environment_.dialect == Dialect::New)
        sayBanner(environment_);
    if (!findDatabase(environment_))
        return missDevice();
    if (const auto part = findLogicPart(options_.device))
        return runOnLogicPart(*part);
    if (const auto chip = findChip(options_.device, environment_.dialect))
        return runOnMemory(*chip);
    return missDevice();
}

Outcome Session::missDevice() const {
    const std::string sentence = "Device " + options_.device + " not found!\n";
    say(environment_.dialect == Dialect::New ? "\n" + sentence : sentence);
    return Outcome::Failed;
}

void Session::beginRun() const {
    if (environment_.dialect == Dialect::Release)
        sayBanner(environment_);
}

Outcome Session::runOnLogicPart(const LogicPart &part) const {
    beginRun();
    if (options_.action == Action::LogicTest)
        return testLogicPart(part, environment_);
    say("Unsupported device!\n");
    return Outcome::Failed;
}

Outcome Session::runOnMemory(const Chip &chip) const {
    beginRun();
    if (options_.action == Action::LogicTest)
        return testNothing(chip.name, chip.pins, environment_);
    return Programmer(chip, options_, environment_).run();
}

} // namespace sim

#include "Session.h"

#include "Catalogue.h"
#include "LogicTest.h"
#include "Misbehaviour.h"
#include "Output.h"

#include <cstdio>

namespace sim {
namespace {

/// Without a programmer the tool does not know whose devices to list. It asks, and waits.
bool userChoosesProgrammer() {
    say("No programmer found.\n"
        "Whose devices are to be listed?\n"
        "  1) TL866A/CS\n  2) TL866II+\n  3) T48\n  4) T56\n"
        "Number: ");
    for (int letter = 0; (letter = std::getchar()) != EOF;)
        if (letter >= '1' && letter <= '4')
            return true;
    return false;
}

} // namespace

Session::Session(const Options &commandLine, const Environment &surroundings)
    : options_(commandLine), environment_(surroundings) {}

Outcome Session::run() const {
    misbehaveAtStart(environment_);
    switch (options_.action) {
    case Action::Help:
        say(usage());
        return Outcome::Good;
    case Action::Version:
        return showVersion();
    case Action::Search:
        return search();
    default:
        return runOnDevice();
    }
}

Outcome Session::showVersion() const {
    say("Supported programmers: TL866A/CS, TL866II+, T48, T56\n");
    say(environment_.has(Fault::NoProgrammer) ? "No programmer found.\n"
                                              : "Found TL866II+ 04.2.132 (0x284)\n");
    say("minipro-sim version " MINIPRO_SIM_VERSION
        "     This is the simulator: it reaches no programmer and no chip\n"
        "Answers as:\tminipro 0.7.3\n"
        "Bench folder:\t" +
        environment_.bench.string() + "\n" + "Devices:\t" +
        std::to_string(listDevices({}, ProgrammerModel::Tl866ii, environment_.dialect).size()) +
        ", " + std::to_string(logicParts().size()) + " of them logic ICs\n");
    return Outcome::Good;
}

Outcome Session::search() const {
    misbehaveAfterBanner(environment_);
    if (environment_.has(Fault::NoProgrammer) && options_.programmerModel.empty() &&
        !userChoosesProgrammer())
        return Outcome::Failed;
    for (const std::string &name :
         listDevices(options_.searchTerm, ProgrammerModel::Tl866ii, environment_.dialect))
        std::printf("%s\n", name.c_str());
    return Outcome::Good;
}

bool Session::programmerAnswers() const {
    if (environment_.has(Fault::NoProgrammer)) {
        say("No programmer found.\n");
        return false;
    }
    if (environment_.has(Fault::Busy)) {
        say("\nIO error: claim_interface: LIBUSB_ERROR_BUSY\n");
        return false;
    }
    return true;
}

Outcome Session::runOnDevice() const {
    if (!programmerAnswers())
        return Outcome::Failed;
    if (const auto part = findLogicPart(options_.device))
        return runOnLogicPart(*part);
    if (const auto chip = findChip(options_.device, environment_.dialect))
        return runOnMemory(*chip);
    say("Device " + options_.device + " not found!\n");
    return Outcome::Failed;
}

void Session::openSocket() const {
    say("Found TL866II+ 04.2.132 (0x284)\n"
        "Device code: 12345678\n");
    saySerialCode(environment_);
    say("USB speed: 12Mbps (USB 1.1)\n");
    misbehaveAfterBanner(environment_);
}

Outcome Session::runOnLogicPart(const LogicPart &part) const {
    openSocket();
    if (options_.action == Action::LogicTest)
        return testLogicPart(part, environment_);
    say("A logic IC can only be tested. Use -T.\n");
    return Outcome::Failed;
}

Outcome Session::runOnMemory(const Chip &chip) const {
    openSocket();
    if (options_.action == Action::LogicTest)
        return testNothing(chip.pins);
    Programmer programmer(chip, options_, environment_);
    if (programmer.checkId() == Outcome::Failed)
        return Outcome::Failed;
    switch (options_.action) {
    case Action::Read:
        return programmer.read();
    case Action::Write:
        return programmer.write();
    case Action::Verify:
        return programmer.verify();
    default:
        return programmer.erase();
    }
}

} // namespace sim

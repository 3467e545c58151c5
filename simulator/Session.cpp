#include "Session.h"

#include "Output.h"

#include <algorithm>

namespace sim {
namespace {

void sayBanner() {
    say("Found TL866II+ 04.2.132 (0x284)\n"
        "Device code: 12345678\n"
        "Serial code: ABCDEFGHIJKLMNOPQRST\n"
        "USB speed: 12Mbps (USB 1.1)\n");
}

} // namespace

Session::Session(const Options &commandLine, const Environment &surroundings)
    : options(commandLine), environment(surroundings) {}

Outcome Session::run() const {
    switch (options.action) {
    case Action::Help:
        say(usage());
        return Outcome::Good;
    default:
        return runOnDevice();
    }
}

bool Session::programmerAnswers() const {
    if (environment.has(Fault::NoProgrammer)) {
        say("No programmer found.\n");
        return false;
    }
    if (environment.has(Fault::Busy)) {
        say("\nIO error: claim_interface: LIBUSB_ERROR_BUSY\n");
        return false;
    }
    return true;
}

Outcome Session::runOnDevice() const {
    if (!programmerAnswers())
        return Outcome::Failed;
    for (const Chip &chip : memoryChips()) {
        if (sameDeviceName(chip.name, options.device)) {
            sayBanner();
            return runOnMemory(chip);
        }
    }
    say("Device " + options.device + " not found!\n");
    return Outcome::Failed;
}

Outcome Session::runOnMemory(const Chip &chip) const {
    Programmer programmer(chip, options, environment);
    if (programmer.checkId() == Outcome::Failed)
        return Outcome::Failed;
    switch (options.action) {
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

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "session/Connection.h"

#include "session/Misbehaviour.h"
#include "session/Output.h"

#include <cstdlib>
#include <string>

namespace sim {
namespace {

void sayMissing(const std::string &folder) {
    say(folder + "/logicic.xml: No such file or directory\n");
}

} // namespace

Outcome connect(const Environment &environment) {
    if (environment.has(Fault::NoProgrammer))
        say("No programmer found.\n");
    else if (environment.has(Fault::Busy))
        say("\nIO error: claim_interface: LIBUSB_ERROR_BUSY\n");
    else if (environment.has(Fault::Bootloader))
        // The tool says the second half in another place and forgets the line end of the first.
        say("Found TL866II+ in bootloader mode"
            "in bootloader mode!\nExiting...\n");
    else
        return Outcome::Good;
    return Outcome::Failed;
}

void sayBanner(const Environment &environment) {
    say("Found TL866II+ 04.2.132 (0x284)\n"
        "Device code: 12345678\n");
    saySerialCode(environment);
    say("USB speed: 12Mbps (USB 1.1)\n");
    if (environment.dialect == Dialect::New)
        say("\n");
    misbehaveAfterBanner(environment);
}

bool findDatabase(const Environment &environment) {
    if (!environment.has(Fault::NoDatabase))
        return true;
    sayMissing(".");
    if (const char *home = std::getenv("MINIPRO_HOME"))
        sayMissing(home);
    sayMissing("/usr/local/share/minipro");
    return false;
}

} // namespace sim

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "session/Inquiries.h"

#include "parts/Catalogue.h"
#include "session/Connection.h"
#include "session/DeviceInfo.h"
#include "session/Misbehaviour.h"
#include "session/Output.h"
#include "setup/Faults.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sim {
namespace {

struct MenuEntry {
    std::string_view text;
    std::optional<ProgrammerModel> model; ///< none ends the run
};

std::vector<MenuEntry> menuOf(Dialect dialect) {
    std::vector<MenuEntry> entries{{"TL866A/CS", ProgrammerModel::Tl866a},
                                   {"TL866II+/T48/T56", ProgrammerModel::Tl866ii}};
    if (dialect == Dialect::New)
        entries.push_back({"T76", ProgrammerModel::T76});
    entries.push_back({"Abort", std::nullopt});
    return entries;
}

/// The first letter of the next line, a line end when it is empty.
int readAnswer() {
    const int first = std::getchar();
    for (int letter = first; letter != EOF && letter != '\n';)
        letter = std::getchar();
    return first;
}

/// Asks until one of the numbers is answered; nothing when the run is to end.
std::optional<ProgrammerModel> askForModel(Dialect dialect) {
    const std::vector<MenuEntry> entries = menuOf(dialect);
    say("No device found. Which database do you want to display?\n");
    for (std::size_t i = 0; i < entries.size(); ++i)
        say(std::to_string(i + 1) + ") " + std::string(entries[i].text) + "\n");
    for (int answer = 0; (answer = readAnswer()) != EOF;) {
        const auto index = std::size_t(answer - '1');
        if (answer >= '1' && index < entries.size())
            return entries[index].model;
    }
    say("Aborted.\n");
    return std::nullopt;
}

/// Whose devices are meant.
std::optional<ProgrammerModel> chooseModel(const Options &options, const Environment &environment) {
    const bool busy = environment.has(Fault::Busy);
    if (options.model || environment.has(Fault::NoProgrammer) || busy) {
        misbehaveAfterBanner(environment);
        if (options.model)
            return options.model;
        if (busy)
            connect(environment);
        return askForModel(environment.dialect);
    }
    sayBanner(environment);
    return ProgrammerModel::Tl866ii;
}

std::string countLine(const std::string &label, const std::vector<std::string> &names) {
    const auto custom = std::count_if(names.begin(), names.end(), isCustom);
    const auto total = std::ptrdiff_t(names.size());
    return label + std::to_string(total - custom) + " devices, " + std::to_string(custom) +
           " custom\n";
}

} // namespace

Outcome listNames(const Options &options, const Environment &environment) {
    const auto model = chooseModel(options, environment);
    if (!model || !findDatabase(environment))
        return Outcome::Failed;
    for (const std::string &name : listDevices(options.searchTerm, *model, environment.dialect))
        std::printf("%s\n", name.c_str());
    return Outcome::Good;
}

Outcome describeDevice(const Options &options, const Environment &environment) {
    const auto model = chooseModel(options, environment);
    if (!model)
        return Outcome::Failed;
    const auto description = findDatabase(environment)
                                 ? deviceInfo(options.device, *model, environment.dialect)
                                 : std::nullopt;
    say(description ? *description : "Device " + options.device + " not found!\n");
    return description ? Outcome::Good : Outcome::Failed;
}

Outcome showPresence(const Environment &environment) {
    if (environment.has(Fault::Busy))
        connect(environment);
    const bool absent = environment.has(Fault::NoProgrammer) || environment.has(Fault::Busy);
    say(absent ? "[No programmer found]\n" : "tl866ii: TL866II+\n");
    return Outcome::Good;
}

Outcome showSupported(const Environment &environment) {
    say("tl866a: TL866CS/A\ntl866ii: TL866II+\nt48: T48\nt56: T56\n");
    if (environment.dialect == Dialect::New)
        say("t76: T76\n");
    return Outcome::Good;
}

Outcome showVersion(const Environment &environment) {
    say("Supported programmers: TL866A/CS, TL866II+, T48, T56\n");
    say(environment.has(Fault::NoProgrammer) ? "No programmer found.\n"
                                             : "Found TL866II+ 04.2.132 (0x284)\n");
    say("minipro version 0.7.3     A free and open TL866 series programmer\n"
        "Simulated by:\tminipro-sim version " MINIPRO_SIM_VERSION
        ". This is the simulator: it reaches no programmer and no chip\n"
        "Bench folder:\t" +
        environment.bench.string() + "\n" +
        countLine("Devices:\t", listDevices({}, ProgrammerModel::Tl866ii, environment.dialect)));
    return Outcome::Good;
}

Outcome showSimulator() {
    say(R"(minipro-sim: a simulated chip programmer, no hardware needed
It takes the command line of minipro and answers as it does (see minipro(1), minipro-sim(1)).
environment:
    MINIPRO_SIM_BENCH  the folder that holds the chips, one file each
                       (~/.cache/minipro-sim/bench)
    MINIPRO_SIM_CHIPS  what a new chip holds: sample, blank, or auto: sample text,
                       but blank where only ultraviolet light erases (auto)
    MINIPRO_SIM_DIALECT  whose words it takes: release, those of minipro 0.7.3,
                       or new, those of the development line after it (release)
    MINIPRO_SIM_PACE   real, as hardware does, or instant (real)
    MINIPRO_SIM_GRANDCHILD_MS  how long leaves-grandchild keeps the pipes open (5000)
    MINIPRO_SIM_FAULT  what goes wrong, separated by commas:
)" + describeFaults());
    return Outcome::Good;
}

} // namespace sim

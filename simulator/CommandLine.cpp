#include "CommandLine.h"

#include "Faults.h"

#include <array>
#include <optional>
#include <strings.h>

#include <unistd.h>

namespace sim {
namespace {

constexpr const char *optionLetters = ":p:r:w:m:L:q:TEysSeuVh";
constexpr std::array programmerModels{"TL866A", "TL866II", "T48", "T56"};

std::optional<Action> actionOf(int letter) {
    switch (letter) {
    case 'r':
        return Action::Read;
    case 'w':
        return Action::Write;
    case 'm':
        return Action::Verify;
    case 'E':
        return Action::Erase;
    case 'T':
        return Action::LogicTest;
    case 'L':
        return Action::Search;
    case 'V':
        return Action::Version;
    case 'h':
        return Action::Help;
    default:
        return std::nullopt;
    }
}

void takeSwitch(int letter, Options &options) {
    switch (letter) {
    case 'y':
        options.ignoreIdMismatch = true;
        break;
    case 'S':
        options.hideSizeWarning = true;
        [[fallthrough]];
    case 's':
        options.ignoreSizeMismatch = true;
        break;
    case 'e':
        options.skipErase = true;
        break;
    case 'u':
        options.unprotect = true;
        break;
    default:
        break;
    }
}

void takeArgument(int letter, const char *argument, Options &options) {
    if (letter == 'p')
        options.device = argument;
    else if (letter == 'q')
        options.programmerModel = argument;
    else if (letter == 'L')
        options.searchTerm = argument;
    else
        options.file = argument;
}

bool isKnownModel(const std::string &model) {
    for (const char *known : programmerModels)
        if (strcasecmp(known, model.c_str()) == 0)
            return true;
    return false;
}

bool needsDevice(Action action) {
    return action != Action::Search && action != Action::Version && action != Action::Help;
}

std::optional<UsageError> findContradiction(const Options &options, bool deviceGiven) {
    if (!options.programmerModel.empty() && !isKnownModel(options.programmerModel))
        return UsageError{"Unknown programmer version. Use TL866A, TL866II, T48 or T56."};
    if (needsDevice(options.action) && !deviceGiven)
        return UsageError{"Device required. Use -p <device> to specify a device."};
    if (options.action == Action::None)
        return UsageError{"No action to perform. Use -r, -w, -m, -E or -T."};
    return std::nullopt;
}

UsageError badOption(const char *program, const char *complaint, int letter) {
    return {std::string(program) + ": " + complaint + " -- '" + static_cast<char>(letter) + "'"};
}

} // namespace

std::variant<Options, UsageError> parseCommandLine(int argc, char *argv[]) {
    Options options;
    bool deviceGiven = false;
    int letter = 0;
    while ((letter = getopt(argc, argv, optionLetters)) != -1) {
        if (letter == '?')
            return badOption(argv[0], "invalid option", optopt);
        if (letter == ':')
            return badOption(argv[0], "option requires an argument", optopt);
        deviceGiven = deviceGiven || letter == 'p';
        if (optarg != nullptr)
            takeArgument(letter, optarg, options);
        takeSwitch(letter, options);
        if (const auto action = actionOf(letter)) {
            if (options.action != Action::None)
                return UsageError{"Only one of -r, -w, -m, -E, -T, -L, -V and -h can be given."};
            options.action = *action;
        }
    }
    if (optind < argc)
        return UsageError{std::string("Extra argument: '") + argv[optind] + "'"};
    if (const auto contradiction = findContradiction(options, deviceGiven))
        return *contradiction;
    return options;
}

std::string usage() {
    return std::string(R"(minipro-sim: a simulated chip programmer, no hardware needed
usage: minipro-sim -p DEVICE ACTION [SWITCHES]
       minipro-sim -L TERM [-q MODEL]
actions:
    -r FILE   read the chip into FILE
    -w FILE   erase the chip, write FILE to it and verify
    -m FILE   verify the chip against FILE
    -E        erase the chip
    -T        test a logic IC
    -L TERM   list the devices whose names hold TERM
    -V, -h    show the version, show this text
switches:
    -p DEVICE the device's name, in upper or lower case
    -q MODEL  TL866A, TL866II, T48 or T56
    -y        go on when the chip ID does not match
    -s, -S    go on when the file size does not match, with or without a warning
    -e        do not erase before writing
    -u        take off the write protection before writing
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
)") + describeFaults();
}

} // namespace sim

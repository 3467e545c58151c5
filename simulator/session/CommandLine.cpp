// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "session/CommandLine.h"

#include <array>
#include <filesystem>
#include <strings.h>

#include <cstddef>
#include <getopt.h>

namespace sim {
namespace {

constexpr const char *optionLetters = "lL:q:Qd:p:r:w:m:EbDTiIzc:o:a:tkF:sSevuPxyf:Vh";
constexpr int simulatorOption = 256; ///< has a name and no letter

constexpr std::array longOptions{
    option{"list", no_argument, nullptr, 'l'},
    option{"search", required_argument, nullptr, 'L'},
    option{"programmer", required_argument, nullptr, 'q'},
    option{"query_supported", no_argument, nullptr, 'Q'},
    option{"get_info", required_argument, nullptr, 'd'},
    option{"device", required_argument, nullptr, 'p'},
    option{"read", required_argument, nullptr, 'r'},
    option{"write", required_argument, nullptr, 'w'},
    option{"verify", required_argument, nullptr, 'm'},
    option{"erase", no_argument, nullptr, 'E'},
    option{"blank_check", no_argument, nullptr, 'b'},
    option{"read_id", no_argument, nullptr, 'D'},
    option{"logic_test", no_argument, nullptr, 'T'},
    option{"icsp_vcc", no_argument, nullptr, 'i'},
    option{"icsp_no_vcc", no_argument, nullptr, 'I'},
    option{"pin_check", no_argument, nullptr, 'z'},
    option{"page", required_argument, nullptr, 'c'},
    option{"option", required_argument, nullptr, 'o'},
    option{"auto_detect", required_argument, nullptr, 'a'},
    option{"hardware_check", no_argument, nullptr, 't'},
    option{"presence_check", no_argument, nullptr, 'k'},
    option{"update", required_argument, nullptr, 'F'},
    option{"no_size_error", no_argument, nullptr, 's'},
    option{"no_size_warning", no_argument, nullptr, 'S'},
    option{"skip_erase", no_argument, nullptr, 'e'},
    option{"skip_verify", no_argument, nullptr, 'v'},
    option{"unprotect", no_argument, nullptr, 'u'},
    option{"protect", no_argument, nullptr, 'P'},
    option{"skip_id", no_argument, nullptr, 'x'},
    option{"no_id_error", no_argument, nullptr, 'y'},
    option{"format", required_argument, nullptr, 'f'},
    option{"version", no_argument, nullptr, 'V'},
    option{"help", no_argument, nullptr, 'h'},
    option{"simulator", no_argument, nullptr, simulatorOption},
    option{nullptr, 0, nullptr, 0},
};

std::optional<Action> chipAction(int letter) {
    switch (letter) {
    case 'r':
        return Action::Read;
    case 'w':
        return Action::Write;
    case 'm':
        return Action::Verify;
    case 'E':
        return Action::Erase;
    case 'b':
        return Action::BlankCheck;
    case 'T':
        return Action::LogicTest;
    default:
        return std::nullopt;
    }
}

/// Answered at once, whatever else the command line holds behind them.
std::optional<Action> inquiry(int letter) {
    switch (letter) {
    case 'l':
    case 'L':
        return Action::List;
    case 'd':
        return Action::Describe;
    case 'k':
        return Action::Presence;
    case 'Q':
        return Action::Supported;
    case 'V':
        return Action::Version;
    case simulatorOption:
        return Action::Simulator;
    default:
        return std::nullopt;
    }
}

bool *switchOf(int letter, Options &options) {
    switch (letter) {
    case 'y':
        return &options.ignoreIdMismatch;
    case 'x':
        return &options.skipId;
    case 'D':
        return &options.idAlone;
    case 's':
        return &options.ignoreSizeMismatch;
    case 'S':
        return &options.hideSizeWarning;
    case 'e':
        return &options.skipErase;
    case 'v':
        return &options.skipVerify;
    case 'u':
        return &options.unprotect;
    case 'P':
        return &options.protect;
    default:
        return nullptr;
    }
}

std::string *argumentOf(int letter, Options &options) {
    switch (letter) {
    case 'p':
    case 'd':
        return &options.device;
    case 'r':
    case 'w':
    case 'm':
        return &options.file;
    case 'L':
        return &options.searchTerm;
    default:
        return nullptr;
    }
}

/// The value that a word stands for in any case.
template <typename Value>
struct Word {
    const char *word;
    Value value;
};

template <typename Value, std::size_t count>
std::optional<Value> valueOf(const char *text, const std::array<Word<Value>, count> &words) {
    for (const Word<Value> &each : words)
        if (strcasecmp(each.word, text) == 0)
            return each.value;
    return std::nullopt;
}

constexpr std::array sections{
    Word<Section>{"code", Section::Code},
    Word<Section>{"data", Section::Data},
    Word<Section>{"config", Section::Config},
    Word<Section>{"user", Section::User},
    Word<Section>{"calibration", Section::Calibration},
};

constexpr std::array formats{
    Word<FileFormat>{"ihex", FileFormat::IntelHex},
    Word<FileFormat>{"srec", FileFormat::SRecord},
};

std::optional<UsageError> takeModel(const char *name, Dialect dialect, Options &options) {
    options.model = modelNamed(name, dialect);
    if (options.model)
        return std::nullopt;
    return UsageError{dialect == Dialect::New
                          ? "Unknown programmer version. Use TL866A, TL866II, T48, T56 or T76."
                          : "Unknown programmer version. Use TL866A, TL866II, T48 or T56."};
}

std::optional<UsageError> takeSection(const char *name, Options &options) {
    const auto section = valueOf(name, sections);
    if (!section)
        return UsageError{"Unknown memory type."};
    options.section = *section;
    return std::nullopt;
}

std::optional<UsageError> takeFormat(const char *name, Options &options) {
    const auto format = valueOf(name, formats);
    if (!format)
        return UsageError{"Unknown file format. Use ihex or srec."};
    options.format = *format;
    return std::nullopt;
}

std::optional<UsageError> takeOption(int letter, const char *argument, Dialect dialect,
                                     Options &options) {
    if (bool *chosen = switchOf(letter, options))
        *chosen = true;
    if (std::string *taken = argumentOf(letter, options))
        *taken = argument;
    switch (letter) {
    case '?':
    case 'h':
        return UsageError{};
    case 'q':
        return takeModel(argument, dialect, options);
    case 'c':
        return takeSection(argument, options);
    case 'f':
        return takeFormat(argument, options);
    case 'a':
    case 't':
    case 'z':
    case 'F':
        return UsageError{std::string("The simulator cannot do this: -") + char(letter)};
    default:
        return std::nullopt;
    }
}

std::optional<UsageError> findContradiction(const Options &options, bool deviceGiven) {
    if (options.model)
        return UsageError{"-L, -l or -d command is required for this action."};
    if (!deviceGiven)
        return UsageError{"Device required. Use -p <device> to specify a device."};
    if (options.action == Action::None && !options.idAlone)
        return UsageError{"No action to perform."};
    const bool changesChip = options.action == Action::Write || options.action == Action::Erase;
    if (options.skipId && (changesChip || options.idAlone))
        return UsageError{"Skipping the ID check is not permitted for this action."};
    return std::nullopt;
}

} // namespace

std::variant<Options, UsageError> parseCommandLine(int argc, char *argv[], Dialect dialect) {
    Options options;
    bool deviceGiven = false;
    int letter = 0;
    while ((letter = getopt_long(argc, argv, optionLetters, longOptions.data(), nullptr)) != -1) {
        if (auto error = takeOption(letter, optarg, dialect, options))
            return *error;
        deviceGiven = deviceGiven || letter == 'p';
        if (const auto action = chipAction(letter))
            options.action = *action;
        if (const auto action = inquiry(letter)) {
            options.action = *action;
            return options;
        }
    }
    if (optind < argc)
        return UsageError{std::string("Extra argument: '") + argv[optind] + "'"};
    if (const auto contradiction = findContradiction(options, deviceGiven))
        return *contradiction;
    return options;
}

std::string usage(const std::string &program) {
    const std::string name = std::filesystem::path(program).filename();
    return "minipro version 0.7.3     A free and open TL866 series programmer\n"
           "Usage: " +
           name + " [options]\nSee the manual page (type \"man " + name +
           "\" for documentation)\n\n";
}

} // namespace sim

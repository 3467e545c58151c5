// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "setup/Faults.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <system_error>

namespace sim {
namespace {

struct FaultEntry {
    std::string_view name;
    Fault fault;
    std::string_view effect;
    bool hasPlace = false;
};

constexpr std::array faultTable{
    FaultEntry{"no-programmer", Fault::NoProgrammer, "no programmer is connected"},
    FaultEntry{"busy", Fault::Busy, "another process holds the programmer"},
    FaultEntry{"wrong-id", Fault::WrongId, "the chip ID reads as all ones, as in an empty socket"},
    FaultEntry{"bad-byte", Fault::BadByte, "the byte at 0x1234 reads inverted"},
    FaultEntry{"protected", Fault::Protected, "the chip is write-protected until -u"},
    FaultEntry{"overcurrent", Fault::Overcurrent,
               "the chip draws too much current; overcurrent:N, after N blocks", true},
    FaultEntry{"unplugged", Fault::Unplugged,
               "the programmer is unplugged half-way; unplugged:N, after N blocks", true},
    FaultEntry{"silent", Fault::Silent, "nothing more comes after the banner"},
    FaultEntry{"endless-output", Fault::EndlessOutput, "progress is reported for ever"},
    FaultEntry{"split-utf8", Fault::SplitUtf8, "characters are cut between two writes"},
    FaultEntry{"invalid-utf8", Fault::InvalidUtf8, "the banner holds bytes that are not UTF-8"},
    FaultEntry{"ignores-sigterm", Fault::IgnoresSigterm, "hangs; only SIGKILL ends it"},
    FaultEntry{"leaves-grandchild", Fault::LeavesGrandchild, "a child lives on, pipes open"},
    FaultEntry{"closes-output-early", Fault::ClosesOutputEarly, "works on, outputs closed"},
    FaultEntry{"bad-logic-pins", Fault::BadLogicPins,
               "the first output of a logic IC is stuck at 1"},
    FaultEntry{"flaky-pin", Fault::FlakyPin,
               "the last output of a logic IC is stuck at 1 in every third test"},
    FaultEntry{"bootloader", Fault::Bootloader, "the programmer waits for new firmware"},
    FaultEntry{"no-database", Fault::NoDatabase, "the files that list the devices are missing"},
    FaultEntry{"no-tsop-adapter", Fault::NoTsopAdapter, "no adapter is below a TSOP chip"},
};

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::optional<std::size_t> numberIn(std::string_view digits) {
    std::size_t number = 0;
    const char *end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, number);
    return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

/// Adds what `entry` names; false when it names nothing.
bool addFault(std::string_view entry, Faults &faults) {
    const auto colon = entry.find(':');
    const std::string_view name = entry.substr(0, colon);
    const auto *found = std::find_if(faultTable.begin(), faultTable.end(),
                                     [&](const FaultEntry &each) { return each.name == name; });
    if (found == faultTable.end())
        return false;
    std::optional<std::size_t> place;
    if (colon != std::string_view::npos) {
        place = numberIn(entry.substr(colon + 1));
        if (!place || !found->hasPlace)
            return false;
    }
    faults[found->fault] = place;
    return true;
}

} // namespace

std::variant<Faults, UnknownFault> parseFaults(std::string_view list) {
    Faults faults;
    while (!list.empty()) {
        const auto comma = std::min(list.find(','), list.size());
        const std::string_view entry = trimmed(list.substr(0, comma));
        list.remove_prefix(std::min(comma + 1, list.size()));
        if (!entry.empty() && !addFault(entry, faults))
            return UnknownFault{std::string(entry)};
    }
    return faults;
}

std::string describeFaults() {
    constexpr std::size_t nameColumn = 21;
    std::string text;
    for (const FaultEntry &entry : faultTable) {
        std::string line = "    " + std::string(entry.name);
        line.append(nameColumn - entry.name.size(), ' ');
        text += line + std::string(entry.effect) + '\n';
    }
    return text;
}

} // namespace sim

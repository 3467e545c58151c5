// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace sim {

/// What can go wrong at the bench, chosen by name in MINIPRO_SIM_FAULT.
enum class Fault {
    NoProgrammer,
    Busy,
    WrongId,
    BadByte,
    Protected,
    Overcurrent,
    Unplugged,
    Silent,
    EndlessOutput,
    SplitUtf8,
    InvalidUtf8,
    IgnoresSigterm,
    LeavesGrandchild,
    ClosesOutputEarly,
    BadLogicPins,
    FlakyPin,
    Bootloader,
    NoDatabase,
    NoTsopAdapter,
};

/// The faults chosen. Those that strike in the middle of a transfer may have a place: how many
/// blocks are through by then, 0 for before the first.
using Faults = std::map<Fault, std::optional<std::size_t>>;

/// A fault name that no fault bears, or a place that it cannot have.
struct UnknownFault {
    std::string name;
};

/// Reads a comma-separated list of fault names, "name" or "name:place"; empty entries and blanks
/// around names are ignored.
std::variant<Faults, UnknownFault> parseFaults(std::string_view list);

/// One line a fault, "name  what happens", for the usage text.
std::string describeFaults();

} // namespace sim

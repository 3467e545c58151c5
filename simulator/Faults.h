#pragma once

#include <set>
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
    Bootloader,
    NoDatabase,
};

using Faults = std::set<Fault>;

/// A fault name that no fault bears.
struct UnknownFault {
    std::string name;
};

/// Reads a comma-separated list of fault names; empty entries and blanks around names are ignored.
std::variant<Faults, UnknownFault> parseFaults(std::string_view list);

/// One line a fault, "name  what happens", for the usage text.
std::string describeFaults();

} // namespace sim

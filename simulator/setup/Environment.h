// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "setup/Faults.h"

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <variant>

namespace sim {

/// How long the simulated programmer takes.
enum class Pace {
    Real,    ///< about a hundred blocks a second, seconds for an erase
    Instant, ///< as fast as the output is taken
};

/// What a chip holds when it is put into the socket for the first time.
enum class FirstContent {
    Automatic, ///< sample text, but blank where only ultraviolet light erases
    Sample,
    Blank,
};

/// Which of the tool's ways of speaking the simulator takes.
enum class Dialect {
    Release, ///< 0.7.3
    New,     ///< the development line after it
};

/// What the MINIPRO_SIM_* variables ask for.
struct Environment {
    Faults faults;
    Dialect dialect = Dialect::Release;
    Pace pace = Pace::Real;
    FirstContent firstContent = FirstContent::Automatic;
    std::filesystem::path bench;
    std::chrono::milliseconds grandchildLife{5000}; ///< of Fault::LeavesGrandchild

    [[nodiscard]] bool has(Fault fault) const { return faults.count(fault) > 0; }

    /// After how many blocks the fault strikes: as chosen, `usual` otherwise; nothing when the
    /// fault is not chosen.
    [[nodiscard]] std::optional<std::size_t> placeOf(Fault fault, std::size_t usual) const {
        const auto found = faults.find(fault);
        return found == faults.end() ? std::nullopt : std::optional(found->second.value_or(usual));
    }
};

/// A variable holds what the simulator does not know; the text is ready to be shown.
struct EnvironmentError {
    std::string message;
};

std::variant<Environment, EnvironmentError> readEnvironment();

} // namespace sim

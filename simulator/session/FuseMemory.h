// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "parts/Chips.h"
#include "session/Outcome.h"
#include "setup/Environment.h"

#include <filesystem>
#include <vector>

namespace sim {

/// The configuration of a microcontroller: a few named values, kept beside the chip on the bench
/// and exchanged as lines "name = 0x62".
class FuseMemory {
public:
    FuseMemory(const Chip &chip, const Environment &environment);

    /// Writes the values to the file. Throws FileError.
    Outcome read(const std::filesystem::path &file) const;

    /// Takes the values from the file, which has to name them all. Throws FileError.
    Outcome write(const std::filesystem::path &file) const;

private:
    [[nodiscard]] std::filesystem::path benchFile() const;
    [[nodiscard]] std::vector<Fuse> load() const;

    const Chip &chip_;
    const Environment &environment_;
};

} // namespace sim

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "files/Files.h"
#include "parts/Chips.h"
#include "setup/Environment.h"

#include <cstddef>
#include <filesystem>

namespace sim {

/// The folder that holds the chips, one file for each device. A chip comes into being when it is
/// put into the socket for the first time.
class Bench {
public:
    Bench(std::filesystem::path folder, FirstContent firstContent);

    /// The chip's content, exactly as many bytes as the chip has. Throws FileError.
    [[nodiscard]] Bytes load(const Chip &chip) const;

    /// Replaces the chip's file as a whole: a reader sees the old content or the new one.
    /// Throws FileError.
    void store(const Chip &chip, const Bytes &content) const;

    /// Counts one more test of a logic IC, in a file beside the chips; the first is 1. Throws
    /// FileError.
    [[nodiscard]] std::size_t countLogicTest() const;

    /// Characters that a file name cannot hold become "_".
    [[nodiscard]] std::filesystem::path fileOf(const Chip &chip) const;

private:
    [[nodiscard]] Bytes firstContentOf(const Chip &chip) const;
    void replace(const std::filesystem::path &file, const Bytes &content) const;

    std::filesystem::path folder_;
    FirstContent firstContent_;
};

/// Readable content that shows where it stands: the device's name, every byte value once where
/// there is room, then lines of 16 bytes that hold their own address.
Bytes sampleContent(const Chip &chip);

} // namespace sim

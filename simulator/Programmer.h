#pragma once

#include "Bench.h"
#include "Chips.h"
#include "CommandLine.h"
#include "Environment.h"
#include "session/Outcome.h"

#include <chrono>
#include <cstddef>
#include <optional>

namespace sim {

/// The simulated programmer with a memory in its socket. Every action reports on standard error
/// in the tool's words and returns how it ended; FileError leaves it when the chip's file or that
/// of a read cannot be used.
class Programmer {
public:
    Programmer(const Chip &chip, const Options &options, const Environment &environment);

    /// Asks the chip who it is. A chip without an ID has nothing to say and passes.
    Outcome checkId();

    /// Reads the chip into the file, which is emptied first.
    Outcome read();
    Outcome verify();

    /// Erases unless told not to, writes the file, reads it back and compares.
    Outcome write();
    Outcome erase();

private:
    Outcome writeAndVerify();
    [[nodiscard]] std::optional<Bytes> loadFile() const;
    Outcome eraseCells();
    Outcome program(const Bytes &image);
    void programPage(const Bytes &image, std::size_t start, std::size_t length);
    [[nodiscard]] std::optional<Bytes> readCells(std::size_t length) const;
    [[nodiscard]] Outcome compare(const Bytes &image, std::size_t readLength) const;
    [[nodiscard]] bool fails(std::size_t block, std::size_t blocks) const;
    [[nodiscard]] bool writeProtected() const;
    void takeOffProtection();
    void saveNowAndThen();

    const Chip &chip_;
    const Options &options_;
    const Environment &environment_;
    Bench bench_;
    Bytes cells_;
    bool unlocked_ = false;
    std::chrono::steady_clock::time_point lastSave_ = std::chrono::steady_clock::now();
};

/// Reports the fault that ends a run at its first transfer, if there is one. `inLine` tells
/// whether a progress line stands open.
Outcome reportOvercurrent(bool inLine);
Outcome reportUnplugged();

} // namespace sim

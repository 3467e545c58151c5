// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "parts/Bench.h"
#include "parts/Chips.h"
#include "session/Outcome.h"
#include "setup/Environment.h"

#include <chrono>
#include <cstddef>
#include <optional>

namespace sim {

/// The chip in the programmer's socket and the cable to the programmer: what a transfer reports on
/// standard error, what it does to the cells, and what breaks it off. FileError leaves it when the
/// chip's file cannot be used.
class Socket {
public:
    /// `unlocked` takes a write protection off.
    Socket(const Chip &chip, const Environment &environment, bool unlocked);

    /// Powers the chip up.
    Outcome begin();

    /// The first `length` bytes; nothing when the transfer broke off.
    std::optional<Bytes> read(std::size_t length);

    /// Writes whole pages from address 0 on.
    Outcome write(const Bytes &image);

    void erase();

    /// An erase that the faults may break off: nothing comes after it that they could strike.
    Outcome eraseAlone();

    /// Powers the chip down. The programmer gets one more question, which it may not answer.
    void end() const;

private:
    enum class Transfer { Read, Write };

    [[nodiscard]] bool breaksOff(Transfer transfer, std::size_t done, std::size_t blocks);
    void sayOvercurrentInLine() const;
    void unplug(Transfer transfer);
    [[nodiscard]] bool writeProtected() const;
    void programPage(const Bytes &image, std::size_t start, std::size_t length);
    void saveNowAndThen();

    const Chip &chip_;
    const Environment &environment_;
    Bench bench_;
    Bytes cells_;
    bool unlocked_;
    bool gone_ = false;
    std::chrono::steady_clock::time_point lastSave_ = std::chrono::steady_clock::now();
};

/// What the tool says when the chip draws too much current.
void sayOvercurrent();

/// What it says when a question gets no answer any more.
void sayNoAnswer();

} // namespace sim

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "parts/Chips.h"
#include "session/CommandLine.h"
#include "session/Outcome.h"
#include "session/Socket.h"
#include "setup/Environment.h"

#include <cstddef>
#include <optional>
#include <string>

namespace sim {

/// The simulated programmer with a memory in its socket. Every action reports on standard error
/// in the tool's words and returns how it ended; FileError leaves it when the chip's file or that
/// of a read cannot be used.
class Programmer {
public:
    Programmer(const Chip &chip, const Options &options, const Environment &environment);

    /// Looks for the adapter, asks the chip who it is and does what the command line asks for.
    Outcome run();

private:
    [[nodiscard]] Outcome findAdapter() const;
    void sayVoltages() const;
    [[nodiscard]] Outcome checkId() const;
    [[nodiscard]] Outcome complainAboutId() const;
    Outcome act();
    Outcome actOnCode();
    [[nodiscard]] Outcome actOn(const Chip &furtherMemory) const;
    [[nodiscard]] Outcome actOnFuses() const;
    Outcome read();
    [[nodiscard]] Outcome readFurther(const std::optional<Chip> &memory,
                                      const std::string &path) const;
    [[nodiscard]] Outcome readTheRest() const;
    Outcome verify();
    Outcome write();
    Outcome writeAndVerify();
    void prepareCells();
    Outcome erase();
    Outcome checkBlank();
    [[nodiscard]] std::optional<Bytes> loadFile() const;
    Outcome compare(const Bytes &image, std::size_t readLength);

    const Chip &chip_;
    const Options &options_;
    const Environment &environment_;
    Socket socket_;
};

} // namespace sim

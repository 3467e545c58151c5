// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "parts/LogicParts.h"
#include "session/CommandLine.h"
#include "session/Programmer.h"
#include "setup/Environment.h"

namespace sim {

/// One run of the tool, from a command line that makes sense to its verdict.
class Session {
public:
    Session(const Options &options, const Environment &environment);

    [[nodiscard]] Outcome run() const;

private:
    [[nodiscard]] Outcome runOnDevice() const;
    [[nodiscard]] Outcome runOnLogicPart(const LogicPart &part) const;
    [[nodiscard]] Outcome runOnMemory(const Chip &chip) const;
    [[nodiscard]] Outcome missDevice() const;
    void beginRun() const;

    const Options &options_;
    const Environment &environment_;
};

} // namespace sim

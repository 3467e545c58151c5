// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "session/CommandLine.h"
#include "session/Outcome.h"
#include "setup/Environment.h"

namespace sim {

/// The answers that need no chip. Without -q a list and a description ask the programmer whose
/// devices are meant, and the user when there is none.
Outcome listNames(const Options &options, const Environment &environment);
Outcome describeDevice(const Options &options, const Environment &environment);

/// Which programmer is connected. It is never a failure that there is none.
Outcome showPresence(const Environment &environment);

/// The names that -q takes.
Outcome showSupported(const Environment &environment);

Outcome showVersion(const Environment &environment);

/// What is the simulator's own: its variables and faults.
Outcome showSimulator();

} // namespace sim

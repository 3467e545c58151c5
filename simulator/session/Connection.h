// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "session/Outcome.h"
#include "setup/Environment.h"

namespace sim {

/// Reaches for the programmer; says why when it cannot be used.
Outcome connect(const Environment &environment);

/// The lines about the programmer, and what goes wrong right behind them.
void sayBanner(const Environment &environment);

/// Whether the files that list the devices are there; says where they are missing when not.
bool findDatabase(const Environment &environment);

} // namespace sim

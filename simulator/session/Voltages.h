// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "parts/Chips.h"
#include "setup/Environment.h"

#include <string>

namespace sim {

/// "12.5", "5": volts without trailing zeros.
std::string volts(double value);

/// The line that tells with what a chip is programmed, and the empty line that sets it apart.
std::string voltageLine(const Voltages &voltages, Dialect dialect);

} // namespace sim

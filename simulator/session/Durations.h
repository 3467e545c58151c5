// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "setup/Environment.h"

#include <chrono>
#include <string>

namespace sim {

/// `time` as the tool prints it: "0.13Sec", or in the newer dialect "12.3 ms", "6.71 Sec" and
/// "2m 18 Sec".
std::string durationText(std::chrono::duration<double> time, Dialect dialect);

} // namespace sim

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "parts/ProgrammerModel.h"
#include "setup/Environment.h"

#include <optional>
#include <string>

namespace sim {

/// What is known about a device, whole lines; nothing when no device bears that name.
std::optional<std::string> deviceInfo(const std::string &name, ProgrammerModel model,
                                      Dialect dialect);

} // namespace sim

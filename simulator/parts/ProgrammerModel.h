// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "setup/Environment.h"

#include <optional>
#include <string>

namespace sim {

/// Whose devices are listed.
enum class ProgrammerModel { Tl866a, Tl866ii, T48, T56, T76 };

/// The model that -q calls `name`, in any case. The T76 is known to the newer tool alone.
std::optional<ProgrammerModel> modelNamed(const std::string &name, Dialect dialect);

} // namespace sim

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "parts/Chips.h"
#include "parts/LogicParts.h"
#include "parts/ProgrammerModel.h"
#include "setup/Environment.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sim {

/// The memory of that name: one known by heart, or one whose name tells technology and size.
/// Nothing when the device list of `dialect` does not hold the name.
std::optional<Chip> findChip(const std::string &name, Dialect dialect);

/// The logic IC of that name; nothing when there is none. One that the simulator has no model of
/// has no vectors.
std::optional<LogicPart> findLogicPart(const std::string &name);

/// The names that hold `term` in any case, as the tool lists them for `model`: logic ICs first,
/// unsorted, "(custom)" after a user's own entries. Every name listed is a device that can be
/// used, without that suffix.
std::vector<std::string> listDevices(const std::string &term, ProgrammerModel model,
                                     Dialect dialect);

/// Whether `name`, as listDevices() gives it, is that of a user's own entry.
bool isCustom(std::string_view name);

} // namespace sim

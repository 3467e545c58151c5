#pragma once

#include "Chips.h"
#include "LogicParts.h"

#include <optional>
#include <string>
#include <vector>

namespace sim {

/// The memory of that name: one known by heart, or one of a family whose names tell technology
/// and size.
std::optional<Chip> findChip(const std::string &name);

/// The logic IC of that name; null when there is none.
const LogicPart *findLogicPart(const std::string &name);

/// The names that hold `term` in any case, as the tool lists them: logic ICs first, unsorted,
/// "(custom)" after a user's own entries. Every name listed is a device that can be used.
std::vector<std::string> listDevices(const std::string &term);

} // namespace sim

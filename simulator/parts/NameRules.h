// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "parts/Chips.h"

#include <string>

namespace sim {

/// The memory that a name stands for, as far as makers' naming schemes tell technology and size.
/// A name that follows none of them becomes a microcontroller-sized flash. It never has a chip ID.
Chip chipFromName(const std::string &name);

} // namespace sim

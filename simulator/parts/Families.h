// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "parts/Chips.h"

#include <functional>

namespace sim {

/// Goes through the memories that only their family's naming scheme describes, one at a time and
/// in a fixed order, until `visit` returns false. They have no chip ID.
void visitFamilyChips(const std::function<bool(const Chip &)> &visit);

} // namespace sim

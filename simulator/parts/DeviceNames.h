// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string_view>

namespace sim {

/// The tool's list of logic ICs and of all other devices: a name on a line, in the tool's order,
/// with "(custom)" after a user's own entries. Many names stand there more than once.
std::string_view logicNames();
std::string_view memoryNames();

} // namespace sim

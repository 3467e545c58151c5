// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

namespace sim {

/// How a run ended, or a step of it.
enum class Outcome { Good, Failed };

} // namespace sim

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>

namespace sim {

/// In bytes.
inline constexpr std::size_t kib = 1024;
inline constexpr std::size_t mib = 1024 * kib;

} // namespace sim

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

/// How a shell reports that it could not run a command, or that a signal killed it. The tool
/// itself ends with 0 or 1 alone.
namespace shellStatus {

inline constexpr int couldNotExecute = 126;
inline constexpr int didNotFind = 127;
/// A signal's number is added to it.
inline constexpr int signalBase = 128;

} // namespace shellStatus

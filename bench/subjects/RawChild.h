// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <vector>

/// Starts \a words by posix_spawn with three pipes as its standard streams, reads both outputs to
/// their ends into the bin, and waits for the child: as little as a program can do for one.
/// Throws if the child could not be started or failed.
void runRawChild(const std::vector<std::string> &words);

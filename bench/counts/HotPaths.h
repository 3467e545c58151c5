// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <string>
#include <vector>

/// Work that users wait for, or that is done very often.
struct HotPath {
    std::string name;
    /// Prepares it, and gives what is to be counted. That throws if it does not do its work.
    std::function<std::function<void()>()> prepared;
};

/// All of them, but for those of the grid.
std::vector<HotPath> hotPaths();

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "counts/HotPaths.h"

/// What the grid does: its cells, and an entry into one.
std::vector<HotPath> gridPaths();

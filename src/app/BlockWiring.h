// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "app/BlockActions.h"

/// Adds to \a menus what changes blocks of the data to burn, and has the grids of the window mark
/// the bytes that were edited. It lives as long as the window does.
void wireBlocks(const BlockActions::Surroundings &surroundings, WindowMenus &menus);

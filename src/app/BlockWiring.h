// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "app/BlockActions.h"

/// Adds what changes blocks of the data to burn to \a menus. It lives as long as the window does.
void wireBlocks(const BlockActions::Surroundings &surroundings, WindowMenus &menus);

/// Has the grids of \a window, which have their sources, mark which bytes of the data to burn of
/// \a delegate were edited.
void markEdits(MainWindow &window, AppDelegate &delegate);

/// Has an entry that is typed into the data to burn find them unshared, so that it costs the same
/// in an image of any size.
void readyEdits(MainWindow &window, AppDelegate &delegate);

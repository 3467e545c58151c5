// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

class MainWindow;
class Messages;
class QMenu;

/// Has a block that is selected in the grids of \a window end when another tab is shown, and
/// \a messages say what is too much to copy, from the console too. \a messages must live as long as
/// \a window.
void wireSelection(MainWindow &window, Messages &messages);

/// Adds the entries that select and copy bytes to \a edit and to menus of the grids of \a window,
/// and to \a edit the choice of how bytes are typed. The keys for copying and for selecting
/// everything work in the grids alone.
void addSelectionEntries(QMenu &edit, MainWindow &window);

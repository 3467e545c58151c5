// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

class MainWindow;
class Messages;
class QMenu;

/// Has what is selected in the grids of \a window end with the tab that it is of, and \a messages
/// say what is too much to copy. Both must live as long.
void wireSelection(MainWindow &window, Messages &messages);

/// Adds what selects bytes and copies them to \a edit, and to menus of the grids of \a window, and
/// to the former the choice how bytes are typed. The keys for copying and for selecting everything
/// work in the grids alone.
void addSelectionEntries(QMenu &edit, MainWindow &window);

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

class MainWindow;
class Messages;

/// Has what is selected in the grids of \a window end with the tab that it is of, and \a messages
/// say what is too much to copy. Both must live as long.
void wireSelection(MainWindow &window, Messages &messages);

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

class QDialog;
class QScrollArea;

/// Makes \a window as high as it takes to show all of \a column, where the screen has the room. It
/// never makes the window smaller.
void growToShow(QDialog &window, const QScrollArea &column);

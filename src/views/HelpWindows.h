// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

class QWidget;

/// Opens the user guide in a window of its own beside \a window, or brings it to the front.
void showGuide(QWidget *window);

/// Tells, in a window of its own beside \a window, what this program is.
void showAbout(QWidget *window);

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

class AppDelegate;
class ImageComparison;
class MainWindow;
class Messages;
class QMenu;
class SideBySide;

/// Makes what compares the images of \a delegate, and has the grid of \a window mark where they
/// differ. It lives as long as \a window does.
ImageComparison &makeComparison(MainWindow &window, AppDelegate &delegate);

/// Makes what shows the other image of \a delegate beside the one of the tab, where the window has
/// the room and \a comparison has something to compare. It lives as long as \a window does.
SideBySide &makeSideBySide(MainWindow &window, const AppDelegate &delegate,
                           ImageComparison &comparison);

/// Adds the steps from difference to difference to \a menu; what they have to say is said in
/// \a messages.
void addDifferenceSteps(QMenu &menu, MainWindow &window, const ImageComparison &comparison,
                        Messages &messages);

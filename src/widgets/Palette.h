// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>
#include <QPalette>

/// The one place of the program with literal colours. Each text colour is chosen for the palette
/// that it is shown in: it keeps a contrast of at least smallestTextContrast against the Base,
/// AlternateBase and Window colours, in light and in dark themes alike.
///
/// A colour alone tells nobody anything: whoever uses one also says it with a word, a shape or a
/// weight.

/// The contrast that small text needs to be read with impaired sight.
inline constexpr double smallestTextContrast = 4.5;

/// Contrast of two opaque colours after the Web Content Accessibility Guidelines, from 1 (the
/// same luminance) to 21 (black and white). The order of the arguments does not matter.
double contrastRatio(const QColor &one, const QColor &other);

/// \a from, moved towards \a to by \a share of the way, 0 to 1. Both are opaque.
QColor mixed(const QColor &from, const QColor &to, double share);

/// Red, for what failed.
QColor failureTextColor(const QPalette &palette);
/// Amber, for what needs a second look.
QColor warningTextColor(const QPalette &palette);
/// Green, for what went well.
QColor successTextColor(const QPalette &palette);
/// Violet, for what differs from another thing. It can be read on foundGroundColor() as well.
QColor differenceTextColor(const QPalette &palette);
/// A ground, for what was searched for and found: Base, moved towards yellow no further than
/// the colour of text and differenceTextColor() can be read on it.
QColor foundGroundColor(const QPalette &palette);
/// A ground, for what is selected and has a text colour of its own: Base, moved towards the colour
/// of selections no further than the colours of text, failures and differences can be read on it.
QColor selectedGroundColor(const QPalette &palette);

/// Inks of patterns that fill areas of a map, readable on the ground as text colours are: grey for
/// what has nothing in it, blue-green for text, blue for code.
QColor faintMarkColor(const QPalette &palette);
QColor textMarkColor(const QPalette &palette);
QColor codeMarkColor(const QPalette &palette);
/// The theme's colour of selections as a line around what has the focus, moved no further than it
/// must to be seen.
QColor focusLineColor(const QPalette &palette);

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QIcon>
#include <QPalette>
#include <QString>

// The program brings its icons with it: desktops without an icon theme have none, and those with
// one differ.

/// The icon \a name (of a file in widgets/icons; any other gives a null icon), drawn in the button
/// text colour of \a palette, faded for disabled controls. Take it anew when the palette changes.
QIcon themedIcon(const QString &name, const QPalette &palette);

/// The icon \a name in one \a color, for what is no control.
QIcon coloredIcon(const QString &name, const QColor &color);

/// The program's own icon.
QIcon programIcon();

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

class QWidget;

/// The most characters of a tip, which is to leave some of the screen free.
inline constexpr qsizetype longestTip = 2000;

/// The tool tip that shows \a text as it stands, whatever is in it, and wraps where it is long. Of
/// a text that is longer than longestTip the middle is left out.
QString plainToolTip(const QString &text);

/// Makes \a text the plain tool tip of \a widget. Assistive technology gets the same, without the
/// marks that wrap it.
void setPlainToolTip(QWidget &widget, const QString &text);

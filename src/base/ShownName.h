// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

/// The most characters of a name that are shown.
inline constexpr qsizetype longestShownName = 1000;

/// \a name as a list shows it and a screen reader says it: characters that are not seen, or that
/// change the order of others, stand as escapes ("\x1b", "\u202e"), and a name that is longer
/// than longestShownName ends there in an ellipsis. The time does not depend on its length.
QString shownName(QStringView name);

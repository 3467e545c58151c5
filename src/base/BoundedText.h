// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

/// The most characters of a sentence that are laid out while a user waits.
inline constexpr qsizetype longestSentence = 8192;

/// \a text, with the number of characters in the place of those of its middle if it has more than
/// \a longest, which is at least 200. What a tool or a settings file says may be of any length, and
/// its reason stands at the end.
QString boundedText(const QString &text, qsizetype longest = longestSentence);

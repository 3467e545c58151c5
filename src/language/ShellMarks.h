// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QStringView>

/// What the shell takes for more than itself in a double-quoted text, and what it does so outside
/// quotes as well: there a command ends, another begins, or a file is opened.
inline constexpr QStringView shellMarksInQuotes(u"$`\"\\");
inline constexpr QStringView shellMarksOutsideQuotes(u"$`\"\\;&|<>()");

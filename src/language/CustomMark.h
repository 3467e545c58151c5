// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringView>

// The tool marks a user's own devices in its list with a suffix that is no part of their names.

/// The mark, in the tool's letters.
inline constexpr QStringView customMark = u"(custom)";

/// The device's name in what the tool lists as \a name.
inline QString withoutCustomMark(const QString &name) {
    return name.endsWith(customMark) ? name.chopped(customMark.size()) : name;
}

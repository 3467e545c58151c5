// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

/// The device's name in what the tool lists as \a name: it marks a user's own devices with a suffix
/// that is no part of their names.
inline QString withoutCustomMark(const QString &name) {
    static const QString mark = QStringLiteral("(custom)");
    return name.endsWith(mark) ? name.chopped(mark.size()) : name;
}

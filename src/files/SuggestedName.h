// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

/// The name to suggest for a file that holds what belongs to \a device, with \a suffix behind it:
/// what a file name cannot hold, or a shell or another system would trip over, becomes "_". It
/// never begins with a dot, names "chip" where the device names nothing, and leaves room for a
/// longer ending.
QString suggestedName(const QString &device, const QString &suffix);

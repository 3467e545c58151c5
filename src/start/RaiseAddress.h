// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

/// Where the holder of a workspace listens for other starts.
struct RaiseAddress {
    /// A socket in the runtime folder, for the starts that have the same.
    QString path;
    /// The name of an abstract socket, for those with another one. It leaves nothing behind,
    /// however its process ends; but anybody may take it or call there, so either end has to look
    /// who the other is. Empty where the system has none: a file in its stead would stay.
    QString name;
};

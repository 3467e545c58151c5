// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

/// True if the system says that the file system of the folder at \a path has no room left for a
/// file of the user. False if it does not tell.
bool isFull(const QString &path);

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"

#include <QByteArray>
#include <QString>

/// \a path as the system's calls take it. A path with a null character, which they would take for
/// its end, fails like one that does not exist.
Result<QByteArray> systemName(const QString &path);

/// The failure where a folder, a device or a pipe stands and a file is needed.
Failure notRegularFile();

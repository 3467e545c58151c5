// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"

#include <QString>

/// Deletes the file or the link at \a path. Anything else (a folder, a device, a pipe) is refused,
/// and that there is nothing is a failure.
Result<void> removeFile(const QString &path);

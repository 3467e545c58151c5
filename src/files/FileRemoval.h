// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"

#include <QString>

/// Deletes the file or the link at \a path. Anything else (a folder, a device, a pipe) is refused,
/// and that there is nothing is a failure.
Result<void> removeFile(const QString &path);

/// Empties the regular file at \a path, in place.
Result<void> emptyFile(const QString &path);

/// Takes away what the file at \a path holds: deletes it, or empties it in a folder that may not be
/// changed. A link of the user's leads to where they want the file to be, and stays; one of
/// somebody else's is deleted. That there is nothing is no failure.
Result<void> clearFile(const QString &path);

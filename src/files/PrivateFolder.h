// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"

#include <QString>

/// Makes the folder at \a path, with those above it that are missing, for the user alone, whatever
/// the umask or an access list of a folder above allows: what is read from a chip may be nobody
/// else's business. Folders that exist stay as they are, and one that cannot be given to the user
/// does not stay.
Result<void> makePrivateFolder(const QString &path);

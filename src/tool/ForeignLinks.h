// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"
#include "language/RunOutcome.h"

#include <QStringList>

/// Removes every link of somebody else that stands at one of \a paths, where the tool or the shell
/// is about to write and would follow it. Fails with the first path whose link stays, or that
/// cannot be looked at; everything else at \a paths is left alone.
Result<void, StartTrouble> removeForeignLinks(const QStringList &paths);

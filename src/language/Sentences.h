// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"

#include <QString>

/// That nothing is run, since for \a failure the files of \a folder, through which they are
/// exchanged with the tool, may not be used (translated).
QString folderMayNotBeUsed(const QString &folder, const Failure &failure);

/// \a sentence and what follows it, which may be empty, as one text.
QString joinedSentences(const QString &sentence, const QString &following);

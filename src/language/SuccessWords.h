// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "language/RunOutcome.h"

/// True if the tool said that the operation came to its end, and nothing against it. The exit
/// status is another question.
bool saidSuccess(const RunFacts &facts);

/// The outcome of a run that ended well: Succeeded, or Qualified where the chip and the bytes
/// shown may differ, which the sentence then says.
RunOutcome outcomeOfSuccess(const RunFacts &facts);

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "language/RunOutcome.h"

/// Judges a finished run. It ended well only if it exited with status 0, the step that it reported
/// last came to its end and it named no cause of failure; a run that merely says nothing bad has
/// failed. A Write that the tool did not verify is Qualified.
RunOutcome judgeRun(const RunFacts &facts);

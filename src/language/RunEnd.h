// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "language/RunOutcome.h"
#include "language/ToolReport.h"

#include <variant>

/// How a run ended, or the first cause of its end that is known. The shell's word that there was
/// no tool counts before the tool's own words, and these before the status.
namespace runEnds {

/// The shell did not find the tool, or could not execute it.
struct ToolNotFound {};
struct ToolNotExecuted {};
/// The tool did not find its list of devices.
struct NoDatabase {};
struct NoAdapter {};
struct Killed {
    int signal = 0;
};
/// Nobody knows why.
struct BadStatus {
    int status = 1;
};
struct GoodStatus {};

} // namespace runEnds

using RunEnd = std::variant<StartTrouble, runEnds::ToolNotFound, runEnds::ToolNotExecuted,
                            ToolError, runEnds::NoDatabase, runEnds::NoAdapter, runEnds::Killed,
                            runEnds::BadStatus, runEnds::GoodStatus>;

/// How the operation or search of \a facts ended.
RunEnd endOf(const RunFacts &facts);

/// True if \a end says what was wrong.
bool namesCause(const RunEnd &end);

/// What the operation or search of \a facts came to: Succeeded if it exited with status 0 and,
/// which is the caller's to say, \a reachedItsAim; else Stopped, Failed or NotStarted.
RunOutcome::Verdict verdictOf(const RunFacts &facts, bool reachedItsAim);

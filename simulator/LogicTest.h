#pragma once

#include "Environment.h"
#include "LogicParts.h"
#include "Programmer.h"

namespace sim {

/// Tests the part: the table goes to standard output, block-buffered into a pipe, the verdict to
/// standard error.
Outcome testLogicPart(const LogicPart &part, const Environment &environment);

/// What the tool makes of a logic test of a memory: a table without rows that always succeeds.
Outcome testNothing(int pins);

} // namespace sim

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "parts/LogicParts.h"
#include "session/Outcome.h"
#include "setup/Environment.h"

#include <string>

namespace sim {

/// Tests the part: the verdict goes to standard error, the table to standard output when all
/// vectors are through. A run that breaks off leaves no table.
Outcome testLogicPart(const LogicPart &part, const Environment &environment);

/// What the tool makes of a logic test of a device without vectors: a table without rows that
/// always succeeds. The newer tool refuses it.
Outcome testNothing(const std::string &name, int pins, const Environment &environment);

} // namespace sim

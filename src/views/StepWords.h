// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "language/ToolSteps.h"

/// What the tool is doing, translated, for a line beside a bar: "Verifying code".
QString wordsForStep(const RunProgress &progress);
/// The same for a search for devices, which has no steps.
QString wordsForSearch();

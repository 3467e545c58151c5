// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "language/RunOutcome.h"

#include <QString>

#include <optional>

// What is said of a run however it ended.

/// What the tool took the file of a Write or Verify for: as it said, or else as it must have.
ImageEncoding encodingOf(const RunFacts &facts);

/// A translated sentence on the chip ID that the tool was told to put up with; empty if there was
/// none.
QString remarkOnChipId(const ToolReport &report);

/// What to do where the tool found no adapter for the chip, translated.
QString putIntoAdapter();

/// The step with which the data that the run of \a facts was handed come to \a size bytes; nothing
/// if there is none, or the data were not those shown.
std::optional<nextSteps::PadTo> padToReach(qint64 size, const RunFacts &facts);

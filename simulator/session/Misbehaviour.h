// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "setup/Environment.h"

namespace sim {

/// The faults that are not the chip's: how the process itself can trouble whoever started it.

/// To be called first of all.
void misbehaveAtStart(const Environment &environment);

/// The banner's serial number, with the characters that Fault::SplitUtf8 and Fault::InvalidUtf8
/// ask for.
void saySerialCode(const Environment &environment);

/// To be called where the chip's turn would come. Does not return when the run is to hang.
void misbehaveAfterBanner(const Environment &environment);

} // namespace sim

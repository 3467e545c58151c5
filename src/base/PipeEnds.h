// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/FileDescriptor.h"
#include "base/Result.h"

/// The two ends of a pipe. No child inherits them unless they are given to it.
struct PipeEnds {
    FileDescriptor reading;
    FileDescriptor writing;

    /// Opens a pipe; fails for want of descriptors.
    static Result<PipeEnds> open();
};

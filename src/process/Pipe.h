// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/FileDescriptor.h"
#include "base/Result.h"
#include "process/ReadHandle.h"

/// A pipe between this program and a child. Its two descriptors are opened by open(), not at
/// construction, so that a run that is never started costs none. Both are close-on-exec and
/// above the standard three.
class Pipe {
public:
    enum class Direction { ToChild, FromChild };

    explicit Pipe(Direction direction);

    /// Opens both ends; an open pipe stays as it is.
    Result<void> open();
    /// The end that becomes a standard stream of the child; -1 while closed.
    int childEnd() const;
    /// The end that stays here; -1 while closed.
    int ownEnd() const;
    void closeChildEnd();
    void closeOwnEnd();

    /// The reading end as a handle, there before the descriptors are; meant for FromChild.
    ReadHandle *fileHandleForReading();

private:
    Direction direction_;
    FileDescriptor child_;
    FileDescriptor own_;
    ReadHandle handle_;
};

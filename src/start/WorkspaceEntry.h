// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"

#include <QString>

#include <chrono>

class WorkspaceLock;

/// What became of a start of the program.
enum class WorkspaceEntry {
    First,  ///< The workspace is this process's own; its window may open.
    Raised, ///< Another process has the workspace, and its window came to the front.
    Silent  ///< Another process has the workspace and does not answer.
};

/// Takes \a lock, or asks the program that holds it to show its window and to open the file at the
/// absolute path \a binary (if not empty). A holder that does not listen yet is about to open its
/// window, or to end: it is asked again, and the lock tried again, for up to \a startUp. A failure
/// means that the lock cannot be had at all.
Result<WorkspaceEntry> enterWorkspace(WorkspaceLock &lock, const QString &binary,
                                      std::chrono::milliseconds startUp = std::chrono::seconds(15));

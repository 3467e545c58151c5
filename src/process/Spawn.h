// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"

#include <QString>
#include <QStringList>

#include <sys/types.h>

/// What a child is started with.
struct SpawnRequest {
    /// The program, by path.
    QString program;
    /// The words after the program's name.
    QStringList arguments;
    /// Where it starts; in this program's own folder if that cannot be entered.
    QString workingFolder;
    /// The descriptors that become its standard streams; all above the standard three.
    int input = -1;
    int output = -1;
    int error = -1;
};

/// Starts a child in a new session, with default signals, none of them blocked, and without any
/// descriptor beyond the three, and gives its number. Never forks plainly: the cost of that grows
/// with this program's memory.
Result<pid_t> spawnChild(const SpawnRequest &request);

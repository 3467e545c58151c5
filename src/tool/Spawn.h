// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>

#include <sys/types.h>
#include <variant>

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

/// A child that runs, or the system's error number.
struct SpawnedChild {
    pid_t pid = -1;
};
struct SpawnError {
    int error = 0;
};

/// Starts a child in a new session, with default signals, none of them blocked, and without any
/// descriptor beyond the three. Never forks plainly: the cost of that grows with this program's
/// memory.
std::variant<SpawnedChild, SpawnError> spawnChild(const SpawnRequest &request);

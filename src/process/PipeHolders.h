// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>

#include <optional>
#include <sys/types.h>

/// Tells a pipe from all others, also when this process has closed it.
struct PipeIdentity {
    quint64 number = 0;

    friend bool operator==(const PipeIdentity &, const PipeIdentity &) = default;
};

/// The pipe behind \a descriptor; nothing if it is something else, or the system does not tell.
std::optional<PipeIdentity> pipeIdentity(int descriptor);

/// Kills every other process of \a session that has an end of one of \a pipes open, as far as this
/// user may.
void killHoldersOf(const QList<PipeIdentity> &pipes, pid_t session);

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "process/ChildProcess.h"
#include "process/Pipe.h"
#include "process/PipeHolders.h"

#include <QList>
#include <QObject>

/// How the child of a run ended, as ChildProcess tells it.
struct ChildEnd {
    int status = -1;
    bool killedBySignal = false;
    bool stopRequested = false;
};

/// What a run needs as long as it lasts or is listened to: its child and the pipes to that. Runs
/// are kept, this is not.
struct RunPlumbing : QObject {
    explicit RunPlumbing(QObject *parent);

    /// How the child ended; to be asked once it has.
    ChildEnd childEnd() const;
    /// The pipes that the child prints into. Whatever holds one of them is found by its identity.
    QList<PipeIdentity> outputPipes() const;
    /// Nobody listens to them any more.
    void closeOutput();

    /// Nothing is ever written to it: the tool sees an open, empty input.
    Pipe stdinPipe{Pipe::Direction::ToChild};
    Pipe stdoutPipe{Pipe::Direction::FromChild};
    Pipe stderrorPipe{Pipe::Direction::FromChild};
    ChildProcess task;
};

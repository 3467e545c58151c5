// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "tool/RunPlumbing.h"

RunPlumbing::RunPlumbing(QObject *parent) : QObject(parent) {
    task.setStandardStreams(&stdinPipe, &stdoutPipe, &stderrorPipe);
}

ChildEnd RunPlumbing::childEnd() const {
    return {task.terminationStatus(), task.killedBySignal(), task.stopRequested()};
}

QList<PipeIdentity> RunPlumbing::outputPipes() const {
    QList<PipeIdentity> pipes;
    for (const Pipe *pipe : {&stdoutPipe, &stderrorPipe})
        if (const auto identity = pipeIdentity(pipe->ownEnd()))
            pipes.append(*identity);
    return pipes;
}

void RunPlumbing::closeOutput() {
    stdoutPipe.closeOwnEnd();
    stderrorPipe.closeOwnEnd();
}

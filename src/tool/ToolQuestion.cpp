// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "tool/ToolQuestion.h"

#include "process/ReadHandle.h"
#include "tool/UserShell.h"

#include <tuple>
#include <variant>

ToolQuestion::ToolQuestion(const QString &command, const SettingsStore &settings, QObject *parent)
    : QObject(parent) {
    giveToShell(child_, command, settings);
    child_.setStandardStreams(&input_, &output_, &error_);
    for (Pipe *pipe : {&output_, &error_})
        connect(pipe->fileHandleForReading(), &ReadHandle::dataAvailable, this,
                &ToolQuestion::take);
    // Queued: a start that fails ends the child inside start().
    connect(&child_, &ChildProcess::ended, this, &ToolQuestion::childEnded, Qt::QueuedConnection);
    patience_.setSingleShot(true);
    connect(&patience_, &QTimer::timeout, this, &ToolQuestion::giveUp);
}

void ToolQuestion::ask(std::chrono::milliseconds patience) {
    for (Pipe *pipe : {&output_, &error_})
        pipe->fileHandleForReading()->waitForDataInBackgroundAndNotify();
    patience_.start(patience);
    // A start that fails is told by the end that follows it.
    std::ignore = child_.start();
}

void ToolQuestion::take(ReadHandle *handle) {
    const ReadOutcome outcome = handle->availableData();
    if (const auto *bytes = outcome ? std::get_if<QByteArray>(&*outcome) : nullptr)
        (handle == output_.fileHandleForReading() ? outputBytes_ : errorBytes_).append(*bytes);
    if (outputBytes_.size() + errorBytes_.size() > largestAnswer)
        giveUp();
    else if (!handle->endSeen())
        handle->waitForDataInBackgroundAndNotify();
}

// Something that the command left behind may hold the pipes for ever, so their ends are not waited
// for.
void ToolQuestion::takeRest(Pipe &pipe) {
    ReadHandle *handle = pipe.fileHandleForReading();
    if (!isAnswered_ && handle->bytesAvailable() > 0)
        take(handle);
    pipe.closeOwnEnd();
}

void ToolQuestion::childEnded() {
    takeRest(output_);
    takeRest(error_);
    const bool exited = child_.terminationStatus() >= 0 && !child_.killedBySignal();
    answer({exited ? std::optional(child_.terminationStatus()) : std::nullopt,
            QString::fromUtf8(outputBytes_ + errorBytes_)});
}

void ToolQuestion::giveUp() {
    child_.stop();
    answer({});
}

void ToolQuestion::answer(const ToolAnswer &answer) {
    if (isAnswered_)
        return;
    isAnswered_ = true;
    patience_.stop();
    emit answered(answer);
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "process/ChildProcess.h"

#include "process/Pipe.h"
#include "process/ProcessDescriptor.h"
#include "process/Spawn.h"

#include <QSocketNotifier>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// How long a group may take to end by itself before it is killed.
constexpr std::chrono::seconds graceBeforeKill(2);
constexpr std::chrono::milliseconds pollInterval(10);

Failure failureOf(const QString &what, const Failure &failure) {
    return {what + QStringLiteral(": ") + failure.reason, failure.systemError};
}

} // namespace

ChildProcess::ChildProcess(QObject *parent) : QObject(parent) {
    pollTimer_.setInterval(pollInterval);
    connect(&pollTimer_, &QTimer::timeout, this, &ChildProcess::lookForEnd);
    killTimer_.setSingleShot(true);
    killTimer_.setInterval(graceBeforeKill);
    connect(&killTimer_, &QTimer::timeout, this, [this] { signalGroup(SIGKILL); });
}

ChildProcess::~ChildProcess() {
    if (!isRunning())
        return;
    signalGroup(SIGKILL);
    reapKilled(pid_, reaping_);
}

void ChildProcess::setLaunchPath(const std::optional<QString> &path) {
    launchPath_ = path;
}

void ChildProcess::setArguments(const QStringList &words) {
    arguments_ = words;
}

void ChildProcess::setWorkingFolder(const QString &path) {
    workingFolder_ = path;
}

void ChildProcess::setStandardStreams(Pipe *inputPipe, Pipe *outputPipe, Pipe *errorPipe) {
    input_ = inputPipe;
    output_ = outputPipe;
    error_ = errorPipe;
}

void ChildProcess::setEndWatch(EndWatch watch) {
    endWatch_ = watch;
}

void ChildProcess::setReaping(const Reaping &reaping) {
    reaping_ = reaping;
}

Result<void> ChildProcess::start() {
    Result<void> started = openPipesAndSpawn();
    for (Pipe *pipe : {input_, output_, error_}) {
        pipe->closeChildEnd();
        if (!started)
            pipe->closeOwnEnd();
    }
    if (!started) {
        state_ = State::NotStarted;
        emit ended();
        return started;
    }
    state_ = State::Running;
    awaitEnd();
    return started;
}

Result<void> ChildProcess::openPipesAndSpawn() {
    if (!launchPath_)
        return Failure{QStringLiteral("there is no launch path")};
    for (Pipe *pipe : {input_, output_, error_})
        if (const auto opened = pipe->open(); !opened)
            return failureOf(QStringLiteral("no pipe"), *opened.failure());
    const Result<pid_t> child = spawnChild({.program = *launchPath_,
                                            .arguments = arguments_,
                                            .workingFolder = workingFolder_,
                                            .input = input_->childEnd(),
                                            .output = output_->childEnd(),
                                            .error = error_->childEnd()});
    if (const Failure *failure = child.failure())
        return failureOf(*launchPath_, *failure);
    pid_ = *child;
    return {};
}

void ChildProcess::awaitEnd() {
    if (endWatch_ == EndWatch::Immediate)
        endDescriptor_ = openProcess(pid_);
    if (!endDescriptor_.isOpen()) {
        pollTimer_.start();
        return;
    }
    endNotifier_ = std::make_unique<QSocketNotifier>(endDescriptor_.get(), QSocketNotifier::Read);
    connect(endNotifier_.get(), &QSocketNotifier::activated, this, &ChildProcess::lookForEnd);
}

void ChildProcess::lookForEnd() {
    siginfo_t facts{};
    const int result = ::waitid(P_PID, id_t(pid_), &facts, WEXITED | WNOHANG | WNOWAIT);
    const bool lost = result != 0 && errno == ECHILD;
    // Until the child is reaped its number, and so the group's, cannot belong to somebody else.
    const bool waitsForReaping = result == 0 && facts.si_pid == pid_;
    if (waitsForReaping && stopRequested())
        signalGroup(SIGKILL);
    if (waitsForReaping || lost)
        childIsGone();
}

void ChildProcess::childIsGone() {
    pollTimer_.stop();
    killTimer_.stop();
    if (endNotifier_) {
        endNotifier_->setEnabled(false);
        endNotifier_.release()->deleteLater();
    }
    endDescriptor_.close();
    reap();
    state_ = stopRequested() ? State::EndedAfterStop : State::Ended;
    input_->closeOwnEnd();
    emit terminated();
    emit ended();
}

// It has ended, so this does not wait.
void ChildProcess::reap() {
    int result = 0;
    pid_t reaped = -1;
    do {
        reaped = ::waitpid(pid_, &result, 0);
    } while (reaped < 0 && errno == EINTR);
    if (reaped == pid_)
        waitStatus_ = result;
}

void ChildProcess::signalGroup(int signal) const {
    ::kill(-pid_, signal);
}

void ChildProcess::stop() {
    if (!isRunning())
        return;
    if (!killTimer_.isActive())
        killTimer_.start();
    state_ = State::Stopping;
    signalGroup(SIGTERM);
}

int ChildProcess::terminationStatus() const {
    if (!waitStatus_)
        return -1;
    return WIFSIGNALED(*waitStatus_) ? WTERMSIG(*waitStatus_) : WEXITSTATUS(*waitStatus_);
}

bool ChildProcess::killedBySignal() const {
    return waitStatus_ && WIFSIGNALED(*waitStatus_);
}

#include "tool/ChildProcess.h"

#include "tool/Pipe.h"
#include "tool/Spawn.h"

#include <QSocketNotifier>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// How long a group may take to end by itself before it is killed.
constexpr auto graceBeforeKill = std::chrono::seconds(2);
constexpr auto pollInterval = std::chrono::milliseconds(10);

/// A descriptor that becomes readable when the process ends; none where there are no such things.
FileDescriptor openProcess([[maybe_unused]] pid_t pid) {
#ifdef SYS_pidfd_open
    return FileDescriptor(static_cast<int>(::syscall(SYS_pidfd_open, pid, 0)));
#else
    return {};
#endif
}

QString reasonFor(const QString &what, int error) {
    return what + QLatin1String(": ") + qt_error_string(error);
}

} // namespace

ChildProcess::ChildProcess(QObject *parent) : QObject(parent) {
    pollTimer.setInterval(pollInterval);
    connect(&pollTimer, &QTimer::timeout, this, &ChildProcess::lookForEnd);
    killTimer.setSingleShot(true);
    killTimer.setInterval(graceBeforeKill);
    connect(&killTimer, &QTimer::timeout, this, [this] { signalGroup(SIGKILL); });
}

ChildProcess::~ChildProcess() {
    if (!isRunning())
        return;
    signalGroup(SIGKILL);
    reap();
}

void ChildProcess::setLaunchPath(const std::optional<QString> &path) {
    launchPath = path;
}

void ChildProcess::setArguments(const QStringList &words) {
    arguments = words;
}

void ChildProcess::setWorkingFolder(const QString &path) {
    workingFolder = path;
}

void ChildProcess::setStandardStreams(Pipe *inputPipe, Pipe *outputPipe, Pipe *errorPipe) {
    input = inputPipe;
    output = outputPipe;
    error = errorPipe;
}

void ChildProcess::setEndNotice(EndNotice notice) {
    endNotice = notice;
}

bool ChildProcess::start() {
    const std::optional<QString> problem = openPipesAndSpawn();
    for (Pipe *pipe : {input, output, error}) {
        pipe->closeChildEnd();
        if (problem)
            pipe->closeOwnEnd();
    }
    if (problem) {
        failure = *problem;
        over = true;
        emit ended();
        return false;
    }
    wasStarted = true;
    awaitEnd();
    return true;
}

std::optional<QString> ChildProcess::openPipesAndSpawn() {
    if (!launchPath)
        return QStringLiteral("there is no launch path");
    if (!input->open() || !output->open() || !error->open())
        return reasonFor(QStringLiteral("no pipe"), errno);
    const auto result = spawnChild({.program = *launchPath,
                                    .arguments = arguments,
                                    .workingFolder = workingFolder,
                                    .input = input->childEnd(),
                                    .output = output->childEnd(),
                                    .error = error->childEnd()});
    if (const auto *spawnError = std::get_if<SpawnError>(&result))
        return reasonFor(*launchPath, spawnError->error);
    pid = std::get<SpawnedChild>(result).pid;
    return std::nullopt;
}

void ChildProcess::awaitEnd() {
    if (endNotice == EndNotice::Immediate)
        endDescriptor = openProcess(pid);
    if (!endDescriptor.isOpen()) {
        pollTimer.start();
        return;
    }
    endNotifier = std::make_unique<QSocketNotifier>(endDescriptor.get(), QSocketNotifier::Read);
    connect(endNotifier.get(), &QSocketNotifier::activated, this, &ChildProcess::lookForEnd);
}

void ChildProcess::lookForEnd() {
    siginfo_t facts{};
    const int result = ::waitid(P_PID, static_cast<id_t>(pid), &facts, WEXITED | WNOHANG | WNOWAIT);
    const bool lost = result != 0 && errno == ECHILD;
    // Until the child is reaped its number, and so the group's, cannot belong to somebody else.
    const bool waitsForReaping = result == 0 && facts.si_pid == pid;
    if (waitsForReaping && stopAsked)
        signalGroup(SIGKILL);
    if (waitsForReaping || lost)
        childIsGone();
}

void ChildProcess::childIsGone() {
    pollTimer.stop();
    killTimer.stop();
    if (endNotifier) {
        endNotifier->setEnabled(false);
        endNotifier.release()->deleteLater();
    }
    endDescriptor.close();
    reap();
    over = true;
    input->closeOwnEnd();
    emit terminated();
    emit ended();
}

void ChildProcess::reap() {
    int result = 0;
    pid_t reaped = -1;
    do {
        reaped = ::waitpid(pid, &result, 0);
    } while (reaped < 0 && errno == EINTR);
    if (reaped != pid)
        return;
    bySignal = WIFSIGNALED(result);
    status = bySignal ? WTERMSIG(result) : WEXITSTATUS(result);
}

void ChildProcess::signalGroup(int signal) const {
    ::kill(-pid, signal);
}

void ChildProcess::stop() {
    if (!isRunning())
        return;
    if (!killTimer.isActive())
        killTimer.start();
    stopAsked = true;
    signalGroup(SIGTERM);
}

bool ChildProcess::isRunning() const {
    return wasStarted && !over;
}

bool ChildProcess::started() const {
    return wasStarted;
}

bool ChildProcess::hasEnded() const {
    return over;
}

bool ChildProcess::stopRequested() const {
    return stopAsked;
}

QString ChildProcess::startFailure() const {
    return failure;
}

int ChildProcess::terminationStatus() const {
    return status;
}

bool ChildProcess::killedBySignal() const {
    return bySignal;
}

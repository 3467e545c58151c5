// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/FileDescriptor.h"
#include "base/Result.h"
#include "process/KilledChild.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>

#include <memory>
#include <optional>
#include <sys/types.h>

class Pipe;
class QSocketNotifier;

/// One child process in a session and process group of its own, with three pipes as its standard
/// streams, default signals, and no other descriptor of this program.
///
/// Its end is learned through the event loop and only for this very child: others of the program
/// are left to their owners. An object is good for one start().
class ChildProcess final : public QObject {
    Q_OBJECT

public:
    /// How the end of the child is learned.
    enum class EndWatch {
        /// By a process descriptor where the system has them, else by polling.
        Immediate,
        /// By looking every few milliseconds.
        Polling
    };

    explicit ChildProcess(QObject *parent = nullptr);
    /// Kills a child that is still running, with its group. Waits a tenth of a second at most until
    /// it can be reaped; one that needs longer is reaped later.
    ~ChildProcess() override;

    /// The program, by path; absent if there is none to start, which start() reports.
    void setLaunchPath(const std::optional<QString> &path);
    /// The words after the program's own name.
    void setArguments(const QStringList &words);
    /// The folder to start in; where it cannot be entered the child starts in this program's own.
    void setWorkingFolder(const QString &path);
    /// The pipes, which must live longer than this object. The child's ends are closed here as
    /// soon as it has them; the end that writes to the child is kept until it is reaped.
    void setStandardStreams(Pipe *input, Pipe *output, Pipe *error);
    /// For tests of the other way on a system that has process descriptors.
    void setEndWatch(EndWatch watch);
    /// For tests of a child that does not end when it is killed.
    void setReaping(const Reaping &reaping);

    /// Opens the pipes and starts the child. If that failed the pipes are closed, the status is -1,
    /// and ended() has been emitted.
    Result<void> start();
    /// Asks the whole group to terminate and kills it two seconds later; what is left of the
    /// group when the child itself ends is killed then. Does nothing unless the child is running.
    void stop();

    /// True from a successful start until the child has been reaped.
    bool isRunning() const { return state_ == State::Running || state_ == State::Stopping; }
    /// The child's session, which may outlive it; -1 if none was started.
    pid_t session() const { return pid_; }
    /// True once the child has been reaped or could not be started.
    bool hasEnded() const { return state_ != State::New && !isRunning(); }
    /// True if stop() was called on a running child.
    bool stopRequested() const {
        return state_ == State::Stopping || state_ == State::EndedAfterStop;
    }
    /// The exit code, or the number of the signal that killed the child; -1 if it could not be
    /// started or its status was lost.
    int terminationStatus() const;
    bool killedBySignal() const;

signals:
    /// A child that had been started has been reaped.
    void terminated();
    /// Emitted exactly once after start(): behind terminated(), or inside a start() that failed.
    void ended();

private:
    enum class State {
        New, ///< start() has not been called
        NotStarted,
        Running,
        Stopping, ///< running, and asked to end
        Ended,
        EndedAfterStop
    };

    Result<void> openPipesAndSpawn();
    void awaitEnd();
    void lookForEnd();
    void childIsGone();
    void reap();
    void signalGroup(int signal) const;

    std::optional<QString> launchPath_;
    QStringList arguments_;
    QString workingFolder_;
    Pipe *input_ = nullptr;
    Pipe *output_ = nullptr;
    Pipe *error_ = nullptr;
    EndWatch endWatch_ = EndWatch::Immediate;
    Reaping reaping_ = reapIfEnded;

    pid_t pid_ = -1;
    FileDescriptor endDescriptor_;
    std::unique_ptr<QSocketNotifier> endNotifier_;
    QTimer pollTimer_;
    QTimer killTimer_;
    State state_ = State::New;
    /// What the system said of the end; nothing if it said nothing.
    std::optional<int> waitStatus_;
};

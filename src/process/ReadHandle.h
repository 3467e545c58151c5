// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"
#include "base/Units.h"

#include <QByteArray>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>
#include <sys/types.h>
#include <variant>

class QSocketNotifier;

/// What one attempt to read from a pipe gave.
struct EndOfFile {};
struct ReadInterrupted {};
using ReadOutcome = Result<std::variant<QByteArray, EndOfFile, ReadInterrupted>>;

/// The end of a pipe that this program reads from. It says once for each arming that something
/// can be read, and never blocks.
///
/// A handle works without a descriptor: arming is remembered until it gets one.
class ReadHandle final : public QObject {
    Q_OBJECT

public:
    using ReadFunction = std::function<ssize_t(int, void *, size_t)>;

    /// The most that one read takes, in bytes: large enough to keep up with a tool that floods
    /// its output, small enough to leave the window responsive.
    static constexpr qint64 largestChunk = 64 * kibibyte;

    explicit ReadHandle(QObject *parent = nullptr);
    ~ReadHandle() override;

    /// Arms the handle: it gives one dataAvailable() when there is something to read, or the end
    /// of file, and is then disarmed. Arming an armed handle changes nothing.
    void waitForDataInBackgroundAndNotify();

    /// Takes up to \a limit of the bytes that are there (at most largestChunk). With none there
    /// and the pipe still open, the outcome is the failure EAGAIN.
    ReadOutcome availableData(qint64 limit = largestChunk);
    /// How many bytes can be read at this moment; 0 without a descriptor.
    qint64 bytesAvailable() const;
    /// True once a read has found the end of file.
    bool endSeen() const { return endSeen_; }

    /// After the first read at end of file a handle is silent until this is called: the end
    /// stays readable for ever, and would keep the event loop busy while others still write
    /// elsewhere.
    void allowRepeatedEnd();

    /// From here on at least \a interval passes between two signals of something to read.
    void setPace(std::chrono::milliseconds interval);

    /// Reads from \a descriptor from here on, which stays the caller's and is set to non-blocking.
    void attach(int descriptor);
    /// Forgets the descriptor; no signal follows.
    void detach();

    /// Replaces the system's read(), for tests: no pipe fails, or is interrupted, when it should.
    void setReadFunction(ReadFunction function);

signals:
    /// There is something to read, or the end of file.
    void dataAvailable(ReadHandle *handle);

private:
    void notify();
    void updateNotifier();
    bool isReadable() const;

    std::unique_ptr<QSocketNotifier> notifier_;
    ReadFunction readFunction_;
    QTimer pause_;
    int source_ = -1;
    bool armed_ = false;
    bool endSeen_ = false;
    bool repeatedEndAllowed_ = false;
};

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QBasicTimer>
#include <QWidget>

#include <functional>

class QLabel;
class QProgressBar;

/// Shows that something is running, and for how long. Takes its room also while it is stopped and
/// shows nothing then, so that nothing beside it moves.
class BusyIndicator final : public QWidget {
    Q_OBJECT

public:
    /// A clock: milliseconds since any fixed moment, never going back.
    using Clock = std::function<qint64()>;

    /// A stopped indicator that takes the time from \a clock.
    explicit BusyIndicator(QWidget *parent = nullptr, Clock clock = monotonicClock);

    /// Starts counting from zero.
    void start();
    /// Stops and shows nothing.
    void stop();

    /// True between start() and stop().
    bool isRunning() const { return timer_.isActive(); }
    /// The elapsed time as it is shown ("0:07"); empty while stopped.
    QString text() const;

    /// \a milliseconds as minutes and seconds ("0:07"), from an hour on with hours ("1:02:03").
    static QString elapsedText(qint64 milliseconds);
    /// The clock of the machine.
    static qint64 monotonicClock();

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    void showElapsed();

    Clock clock_;
    qint64 startedAt_ = 0;
    QBasicTimer timer_;
    QProgressBar *bar_ = nullptr;
    QLabel *time_ = nullptr;
};

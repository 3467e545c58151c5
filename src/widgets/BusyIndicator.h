// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QBasicTimer>
#include <QWidget>

#include <chrono>
#include <functional>
#include <optional>

class QLabel;
class QProgressBar;

/// Shows that something is running: what it does, how far it has come, for how long, and since when
/// nothing was heard of it. Takes its room also while it is stopped and shows nothing then, so that
/// nothing beside it moves.
class BusyIndicator final : public QWidget {
    Q_OBJECT

public:
    /// A clock: the time since any fixed moment, never going back.
    using Clock = std::function<std::chrono::milliseconds()>;

    /// A stopped indicator that takes the time from \a clock.
    explicit BusyIndicator(QWidget *parent = nullptr, Clock clock = monotonicClock);

    /// How long nothing may be heard before that is said.
    static constexpr std::chrono::milliseconds longestUnsaidSilence{10'000};

    /// Starts counting from zero, with \a step (translated) as what is done.
    void start(const QString &step = {});
    /// Something was heard: \a step (translated) is what is done, and \a done how much of the whole
    /// is over, from 0 to 1; nothing if that is not known. The bar follows a few times in a second.
    /// While it is stopped nothing changes.
    void showStep(const QString &step, std::optional<double> done);
    /// Stops and shows nothing.
    void stop();

    /// True between start() and stop().
    bool isRunning() const { return timer_.isActive(); }

    /// \a time as minutes and seconds ("0:07"), from an hour on with hours ("1:02:03").
    static QString elapsedText(std::chrono::milliseconds time);
    /// The clock of the machine.
    static std::chrono::milliseconds monotonicClock();

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    void enterStep(const QString &step, std::optional<double> done);
    void showDone();
    void showTimes();
    QList<QWidget *> parts() const;

    Clock clock_;
    std::chrono::milliseconds startedAt_{};
    std::chrono::milliseconds heardAt_{};
    QBasicTimer timer_;
    std::optional<double> done_;
    QLabel *step_ = nullptr;
    QProgressBar *bar_ = nullptr;
    QLabel *time_ = nullptr;
    QLabel *silence_ = nullptr;
};

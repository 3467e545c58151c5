// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "control/RunConsent.h"
#include "language/LogicReport.h"
#include "language/PinTally.h"

#include <QObject>
#include <QString>
#include <QTimer>

#include <functional>

class ActionGate;
class WorkState;
struct RunRecord;

/// Repeats the logic test of one IC and counts what fails. Each run is an ordinary press of the
/// button, a turn of the event loop after the run before.
class LogicSeries final : public QObject {
    Q_OBJECT

public:
    /// What it works with; all must outlive it.
    struct Sources {
        const WorkState &work;
        const ActionGate &gate;
        /// The device as the settings have it.
        std::function<QString()> device;
        /// Tests it once, and returns when the run is over; false if there was none, be it that
        /// it was refused or that the user is asked first.
        std::function<bool(RunPress)> test;
        /// The report that the newest run left.
        std::function<LogicReport()> report;
    };

    enum class State {
        None, ///< the newest run was a single one
        Running,
        Complete,
        NotBegun,    ///< the first press ran nothing, and what it waits for is said elsewhere
        Stopped,     ///< or a later press ran nothing
        NoReport,    ///< a run left no whole report
        OtherDevice, ///< the device is another one than in the first run
    };

    explicit LogicSeries(const Sources &sources, QObject *parent = nullptr);

    /// Tests \a runs times from now on (2 or more), unless a series goes on or the gate refuses.
    void begin(int runs);
    /// Presses no more, and does not count a run that is under way. Does nothing without a series.
    void stop();
    /// A run is over; \a run counts if it was pressed here.
    void takeRun(const RunRecord &run);

    State state() const { return state_; }
    bool isRunning() const { return state_ == State::Running; }
    int plannedRuns() const { return planned_; }
    const PinTally &tally() const { return tally_; }
    /// Translated, without a full stop: which run it is, or how the series ended. Empty for None
    /// and NotBegun.
    QString words() const;
    /// The same as sentences, with what was counted once it is over.
    QString sentences() const;

signals:
    /// The state or the tally has changed.
    void changed();

private:
    void testAgain();
    void workChanged();
    void become(State state);

    const Sources with_;
    State state_ = State::None;
    int planned_ = 0;
    PinTally tally_;
    QTimer next_;
    QString device_;          ///< of the newest run that was counted
    bool pressing_ = false;   ///< a run of the series is under way
    bool hasCounted_ = false; ///< and has been counted
};

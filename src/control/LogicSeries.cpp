// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "control/LogicSeries.h"

#include "base/WorkState.h"
#include "control/ActionGate.h"
#include "language/PinFailures.h"
#include "language/PinLevels.h"
#include "language/RunRecord.h"

namespace {

/// True if \a report is that of a test that came to its end. One that broke off may have left a
/// part of its table, and a full disk as well.
bool isWhole(const RunRecord &run, const LogicReport &report, const QList<PinFailure> &failures) {
    if (run.report != RunRecord::Report::Whole || !tellsOfPackage(report))
        return false;
    if (run.outcome.verdict == RunOutcome::Verdict::Succeeded)
        return failures.isEmpty();
    return run.outcome.verdict == RunOutcome::Verdict::Failed && !failures.isEmpty();
}

} // namespace

LogicSeries::LogicSeries(const Sources &sources, QObject *parent)
    : QObject(parent), with_(sources) {
    next_.setSingleShot(true);
    connect(&next_, &QTimer::timeout, this, &LogicSeries::testAgain);
    connect(&sources.work, &WorkState::changed, this, &LogicSeries::workChanged);
}

void LogicSeries::begin(int runs) {
    if (isRunning() || with_.gate.refuses())
        return;
    planned_ = runs;
    tally_ = {};
    become(State::Running);
    testAgain();
}

void LogicSeries::stop() {
    if (isRunning())
        become(State::Stopped);
}

void LogicSeries::testAgain() {
    if (tally_.runs() > 0 && with_.device() != device_)
        return become(State::OtherDevice);
    hasCounted_ = false;
    pressing_ = true;
    const bool isFirst = tally_.runs() == 0;
    const bool hasRun = with_.test(isFirst ? RunPress::Own : RunPress::Repeated);
    pressing_ = false;
    if (!isRunning())
        return;
    if (!hasRun)
        return become(isFirst ? State::NotBegun : State::Stopped);
    if (!hasCounted_)
        return become(State::NoReport);
    if (tally_.runs() == planned_)
        return become(State::Complete);
    emit changed();
    next_.start();
}

void LogicSeries::takeRun(const RunRecord &run) {
    if (!pressing_ || !isRunning())
        return;
    if (run.outcome.verdict == RunOutcome::Verdict::Stopped)
        return stop();
    const LogicReport report = with_.report();
    const QList<PinFailure> failures = pinFailures(report);
    if (!isWhole(run, report, failures))
        return;
    device_ = run.device;
    tally_.add(failures);
    hasCounted_ = true;
}

// A run that was started elsewhere is a single one: it ends the series and its count.
void LogicSeries::workChanged() {
    if (with_.work.now() != Work::Running || pressing_)
        return;
    tally_ = {};
    become(State::None);
}

void LogicSeries::become(State state) {
    if (state_ == state)
        return;
    state_ = state;
    next_.stop();
    emit changed();
}

QString LogicSeries::words() const {
    const QString runs = QString::number(tally_.runs());
    const QString planned = QString::number(planned_);
    switch (state_) {
    case State::None:
    case State::NotBegun:
        break;
    case State::Running:
        return tr("Run %1 of %2").arg(QString::number(tally_.runs() + 1), planned);
    case State::Complete:
        return tr("%1 runs").arg(runs);
    case State::Stopped:
        return tr("Stopped after %1 of %2 runs").arg(runs, planned);
    case State::NoReport:
        return tr("Ended after %1 of %2 runs: the next one left no whole report")
            .arg(runs, planned);
    case State::OtherDevice:
        return tr("Ended after %1 of %2 runs: the device is another one now").arg(runs, planned);
    }
    return {};
}

QString LogicSeries::sentences() const {
    if (state_ == State::None || state_ == State::NotBegun)
        return {};
    if (state_ == State::Complete)
        return tally_.summary();
    const QString now = words() + u'.';
    if (isRunning() || tally_.runs() == 0)
        return now;
    return now + u' ' + tally_.summary();
}

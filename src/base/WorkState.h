// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QString>

/// What the program is at work on.
enum class Work {
    Idle,
    Running,   ///< the programmer tool runs for an operation
    Searching, ///< the programmer tool lists devices
    Stopping   ///< a run or a search was told to stop and has not ended yet
};

/// What is running while \a work goes on, translated, as the beginning of a sentence: "A search is
/// running". Between two runs of a series, when work is Idle, the tool is said to run.
QString whatIsRunning(Work work);

/// The one state of work. There is one programmer and one set of files, so only one thing goes on
/// at a time. Whatever would start a run, change a setting or change an image asks here before it
/// does anything; controls that are off are a courtesy to the eye and protect nothing, since
/// assistive technology reaches them all the same.
class WorkState final : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    Work now() const { return now_; }
    bool isIdle() const { return now_ == Work::Idle; }

    /// Begins \a work (Running or Searching). False, with nothing changed, unless idle.
    bool begin(Work work);
    /// What is going on was told to stop. Does nothing when idle.
    void stop();
    /// What was begun has ended.
    void end();

signals:
    /// The state has changed to \a now.
    void changed(Work now);

private:
    void become(Work work);

    Work now_ = Work::Idle;
};

#pragma once

#include "tool/CommandLine.h"
#include "tool/ToolReport.h"

#include <QString>

/// Everything that tells what became of a run of the programmer tool.
struct RunFacts {
    Operation operation = ReadOperation;
    /// The tool's path as the settings give it.
    QString tool;
    /// A child was started; if not, startFailure says why.
    bool started = false;
    QString startFailure;
    /// The exit code, or the signal's number if killedBySignal.
    int status = 0;
    bool killedBySignal = false;
    bool stopRequested = false;
    /// What the tool said on both streams.
    ToolReport report;
};

/// What a run came to.
struct RunOutcome {
    enum class Verdict { Succeeded, Failed, Stopped, NotStarted };
    Verdict verdict = Verdict::Failed;
    /// One translated sentence (or two) for the message line.
    QString sentence;
};

/// Judges a finished run. It succeeded only if it exited with status 0, printed the sentence that
/// belongs to its operation and no sentence of failure; a run that merely says nothing bad has
/// failed.
RunOutcome judgeRun(const RunFacts &facts);

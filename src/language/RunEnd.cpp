// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/RunEnd.h"

namespace {

using namespace runEnds;

/// How a shell reports that it could not run a command, or that a signal killed it. The tool
/// itself ends with 0 or 1 alone.
constexpr int couldNotExecute = 126;
constexpr int didNotFind = 127;
/// A signal's number is added to it.
constexpr int signalBase = 128;
/// The highest number of a signal on Linux.
constexpr int largestSignal = 64;

/// A shell that did not give its place to the tool tells of a signal by its exit code.
RunEnd endByStatus(const RunFacts &facts) {
    if (facts.killedBySignal)
        return Killed{facts.status};
    const int signal = facts.status - signalBase;
    if (signal > 0 && signal <= largestSignal)
        return Killed{signal};
    return facts.status == 0 ? RunEnd(GoodStatus{}) : RunEnd(BadStatus{facts.status});
}

bool exitedWell(const RunFacts &facts) {
    return facts.start && facts.status == 0 && !facts.killedBySignal;
}

} // namespace

RunEnd endOf(const RunFacts &facts) {
    if (const StartTrouble *trouble = facts.start.failure())
        return *trouble;
    if (!facts.killedBySignal && facts.status == didNotFind)
        return ToolNotFound{};
    if (!facts.killedBySignal && facts.status == couldNotExecute)
        return ToolNotExecuted{};
    const ToolReport &report = facts.report;
    if (report.error)
        return *report.error;
    if (report.adapterMissing)
        return NoAdapter{};
    return report.missingDatabase.isEmpty() ? endByStatus(facts) : NoDatabase{};
}

bool namesCause(const RunEnd &end) {
    return !std::holds_alternative<BadStatus>(end) && !std::holds_alternative<GoodStatus>(end);
}

RunOutcome::Verdict verdictOf(const RunFacts &facts, bool reachedItsAim) {
    if (exitedWell(facts) && reachedItsAim)
        return RunOutcome::Verdict::Succeeded;
    if (facts.stopRequested)
        return RunOutcome::Verdict::Stopped;
    return facts.start ? RunOutcome::Verdict::Failed : RunOutcome::Verdict::NotStarted;
}

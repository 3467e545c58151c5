// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/RunLog.h"

#include <utility>

namespace {

void shareIfEqual(QString &words, const QString &before) {
    if (words == before)
        words = before;
}

/// Most runs do what the one before them did, in the same words: those are in memory once.
void shareWords(RunRecord &run, const RunRecord &before) {
    shareIfEqual(run.device, before.device);
    shareIfEqual(run.tool, before.tool);
    shareIfEqual(run.commandLine, before.commandLine);
    shareIfEqual(run.fileMark, before.fileMark);
    shareIfEqual(run.outcome.sentence, before.outcome.sentence);
    shareIfEqual(run.outcome.nextStep, before.outcome.nextStep);
}

} // namespace

void RunLog::add(const RunRecord &record) {
    RunRecord run = record;
    if (!records_.isEmpty())
        shareWords(run, records_.last());
    records_.append(std::move(run));
    if (records_.size() > maxRememberedWords)
        records_[records_.size() - 1 - maxRememberedWords].said.clear();
    emit added();
}

bool RunLog::nothingWrittenSinceRead() const {
    for (auto run = records_.rbegin(); run != records_.rend(); ++run) {
        const bool hasBegun = run->outcome.verdict != RunOutcome::Verdict::NotStarted;
        if (run->operation == ReadOperation && hasBegun)
            return run->outcome.endedWell();
        if (run->operation == WriteOperation && hasBegun)
            return false;
    }
    return false;
}

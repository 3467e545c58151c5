// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/RunJudgement.h"

#include "language/FailureWords.h"
#include "language/RunEnd.h"
#include "language/Sentences.h"
#include "language/SuccessWords.h"

#include <QCoreApplication>

#include <optional>

namespace {

using Verdict = RunOutcome::Verdict;

/// The sentences for one run.
class OutcomeWording {
    Q_DECLARE_TR_FUNCTIONS(RunOutcome)

public:
    explicit OutcomeWording(const RunFacts &run) : facts_(run) {}

    RunOutcome stopped() const;

private:
    QString stopSentence() const;
    QString afterStop() const {
        return facts_.operation == WriteOperation ? tr("Write it again before you use it.")
                                                  : QString();
    }

    const RunFacts &facts_;
};

RunOutcome OutcomeWording::stopped() const {
    const std::optional<FailureWords> cause = wordsForCauseBeforeStop(facts_);
    if (!cause)
        return {Verdict::Stopped, stopSentence(), afterStop()};
    return {Verdict::Stopped,
            joinedSentences(stopSentence(), tr("Before that: %1").arg(cause->sentence)),
            cause->nextStep, cause->offer};
}

QString OutcomeWording::stopSentence() const {
    switch (facts_.operation) {
    case ReadOperation:
        return tr("Read stopped.");
    case VerifyOperation:
        return tr("Verify stopped.");
    case WriteOperation:
        return tr("Write stopped: the chip may be written in part.");
    case LogicOperation:
        break;
    }
    return tr("Logic test stopped.");
}

} // namespace

RunOutcome judgeRun(const RunFacts &facts) {
    const Verdict verdict = verdictOf(facts, saidSuccess(facts));
    if (verdict == Verdict::Succeeded)
        return outcomeOfSuccess(facts);
    if (verdict == Verdict::Stopped)
        return OutcomeWording(facts).stopped();
    FailureWords words = wordsForFailedRun(facts);
    if (!words.offer && facts.operation == ReadOperation)
        words.offer = nextSteps::ReadAgain{};
    return {verdict, words.sentence, words.nextStep, words.offer};
}

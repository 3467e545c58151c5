#pragma once

#include "tool/RunOutcome.h"

#include <QString>

/// What went wrong and what to do about it, translated.
struct FailureWords {
    QString sentence;
    /// Empty where the sentence says it.
    QString nextStep;
};

/// The words for an operation that was started and failed.
FailureWords wordsForFailedRun(const RunFacts &facts);

/// The same for a search; the facts about an operation play no part.
FailureWords wordsForFailedSearch(const RunFacts &facts);

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "language/RunOutcome.h"

#include <QString>

#include <optional>

/// What went wrong and what to do about it, translated.
struct FailureWords {
    QString sentence;
    /// Empty where the sentence says it.
    QString nextStep;
    /// What the program can do about it.
    std::optional<NextStep> offer = std::nullopt;
};

/// The words for an operation that failed or was not even started.
FailureWords wordsForFailedRun(const RunFacts &facts);

/// The same for a search; the facts about an operation play no part.
FailureWords wordsForFailedSearch(const RunFacts &facts);

/// What to do where a search may have started something else than the tool, translated.
QString checkToolAndSearchAgain();

/// What went wrong in an operation before it was stopped, as a sentence that follows a colon;
/// nothing if the tool named no cause.
std::optional<FailureWords> wordsForCauseBeforeStop(const RunFacts &facts);

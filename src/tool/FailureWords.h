#pragma once

#include "tool/RunOutcome.h"

#include <QString>

/// What became of a run that failed, in one translated sentence (or two). \a facts are those of a
/// run that was started.
QString wordsForFailure(const RunFacts &facts);

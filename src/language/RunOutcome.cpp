// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/RunOutcome.h"

#include "base/BoundedText.h"
#include "language/Sentences.h"

QString RunOutcome::words() const {
    return joinedSentences(sentence, nextStep);
}

// boundedText() keeps the end, where earlier remarks stand.
void RunOutcome::add(const QString &remark) {
    const QString whole = joinedSentences(sentence, remark);
    constexpr qsizetype half = longestSentence / 2;
    sentence = whole.size() <= longestSentence
                   ? whole
                   : joinedSentences(boundedText(sentence, half), boundedText(remark, half - 1));
}

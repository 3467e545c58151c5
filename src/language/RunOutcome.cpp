// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/RunOutcome.h"

#include "language/Sentences.h"

QString RunOutcome::words() const {
    return joinedSentences(sentence, nextStep);
}

void RunOutcome::add(const QString &remark) {
    sentence = joinedSentences(sentence, remark);
    if (sentence.size() > longestSentence)
        sentence = sentence.first(longestSentence - 1) + u'\u2026';
}

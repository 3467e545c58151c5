// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "control/VerdictLine.h"

#include "control/Messages.h"
#include "language/RunLog.h"

VerdictLine::VerdictLine(const RunLog &runs, Messages &messages, Ask ask, QObject *parent)
    : QObject(parent), runs_(runs), messages_(messages), ask_(std::move(ask)) {
    connect(&runs, &RunLog::added, this, &VerdictLine::showNewest);
}

void VerdictLine::showNewest() {
    shown_.clear();
    refresh();
}

void VerdictLine::refresh() {
    const std::optional<ShownNow> now = ask_();
    if (!now || runs_.records().isEmpty())
        return;
    const VerdictWords words = wordsFor(runs_.records().last(), *now);
    if (words.sentence == shown_)
        return;
    shown_ = words.sentence;
    messages_.sayVerdict(words.severity, words.sentence,
                         words.offer && offer_ ? offer_(*words.offer) : Messages::Action());
}

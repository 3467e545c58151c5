// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "control/VerdictLine.h"

#include "control/Messages.h"
#include "files/FileStamp.h"
#include "language/RunLog.h"

VerdictLine::VerdictLine(const RunLog &runs, Messages &messages, Ask ask, QObject *parent)
    : QObject(parent), runs_(runs), messages_(messages), ask_(std::move(ask)) {
    connect(&runs, &RunLog::added, this, &VerdictLine::showNewest);
}

void VerdictLine::showNewest() {
    shown_.clear();
    seenMark_.clear();
    refresh();
}

void VerdictLine::refresh() {
    std::optional<ShownNow> now = ask_();
    if (!now || runs_.records().isEmpty())
        return;
    const RunRecord &run = runs_.records().last();
    const bool isUnknown = now->fileMark == FileStamp::unknownMark;
    // What was seen to be another file stays that, though nobody can see it now.
    if (!isUnknown)
        seenMark_ = now->fileMark;
    else if (!seenMark_.isEmpty() && seenMark_ != run.fileMark)
        now->fileMark = seenMark_;
    const VerdictWords words = wordsFor(run, *now);
    if (words.sentence == shown_)
        return;
    shown_ = words.sentence;
    messages_.sayVerdict(words.severity, words.sentence,
                         words.offer && offer_ ? offer_(*words.offer) : Messages::Action());
}

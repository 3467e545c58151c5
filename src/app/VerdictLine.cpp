// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "app/VerdictLine.h"

#include "app/RunLog.h"

namespace {

const QString topic = QStringLiteral("run");

} // namespace

VerdictLine::VerdictLine(const RunLog &runs, MessageLine &line, Ask ask, QObject *parent)
    : QObject(parent), runs_(runs), line_(line), ask_(std::move(ask)) {
    connect(&runs, &RunLog::added, this, &VerdictLine::showNewest);
}

void VerdictLine::clear() {
    shown_.clear();
    line_.clearNotice(topic);
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
    line_.setNotice(topic, words.severity, words.sentence);
}

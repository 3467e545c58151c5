// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/ToolSteps.h"

#include "base/Digits.h"

#include <algorithm>
#include <array>

namespace {

/// The share of a run until the end of each of its phases. A Write erases, which no tool counts,
/// writes, and reads everything back; both concern one part of the chip.
constexpr double eraseEnd = 0.05;
constexpr double writeEnd = 0.6;
/// Parts of a chip that may follow the one being read are named only once they begin.
constexpr double shareOfAPart = 0.9;

constexpr int wholePercent = 100;
constexpr QStringView dots = u"...";

struct Verb {
    QStringView start;
    RunPhase phase;
};
constexpr std::array verbs{
    Verb{readingVerb, RunPhase::Reading}, Verb{writingVerb, RunPhase::Writing},
    Verb{u"Erasing", RunPhase::Erasing}, Verb{u"Protect o", RunPhase::Protecting}};

const Verb *verbOf(QStringView line) {
    if (line.isEmpty())
        return nullptr;
    const auto found = std::find_if(verbs.begin(), verbs.end(), [line](const Verb &verb) {
        return line.front() == verb.start.front() && line.startsWith(verb.start);
    });
    return found == verbs.end() ? nullptr : found;
}

/// The name of a step: what is \a spelled, with single blanks and without the dots.
QString nameOf(const QString &spelled) {
    return spelled.chopped(dots.size()).simplified();
}

/// The number if \a rest begins with one and a percent sign; else nothing. Trouble is said right
/// behind it.
std::optional<int> percentIn(QStringView rest) {
    int percent = 0;
    for (const QChar character : rest) {
        if (character == u'%')
            return percent <= wholePercent ? std::optional(percent) : std::nullopt;
        const std::optional<int> digit = digitValue(character, decimal);
        if (!digit || percent > wholePercent)
            return std::nullopt;
        percent = percent * decimal + *digit;
    }
    return std::nullopt;
}

} // namespace

QString partIn(QStringView step) {
    const qsizetype blank = step.indexOf(u' ');
    return blank < 0 ? QString() : step.sliced(blank).trimmed().toString();
}

bool isStep(QStringView line) {
    return verbOf(line) && line.contains(dots);
}

// What is said behind an "OK" can make something else of it, as long as its line has not ended.
bool ToolSteps::take(QStringView line) {
    if (!takeUnended(line))
        return false;
    // The letter alone tells nearly all lines, which end with a percent sign.
    if (line.endsWith(u'K') && line.endsWith(u"OK"))
        done_ = std::max(done_, to_);
    return true;
}

bool ToolSteps::takeUnended(QStringView line) {
    if (!goesOn(line)) {
        if (!isStep(line))
            return false;
        spelled_ = line.first(line.indexOf(dots) + dots.size()).toString();
        // One step is spelled in two ways: "Writing  Code" while it counts, with one blank after.
        if (nameOf(spelled_) != step_)
            begin();
    }
    const QStringView rest = line.sliced(spelled_.size()).trimmed();
    double share = 0;
    if (const std::optional<int> percent = percentIn(rest))
        share = double(*percent) / wholePercent;
    counts_ = counts_ || !rest.isEmpty();
    done_ = std::max(done_, from_ + (to_ - from_) * share);
    return true;
}

// Nearly all lines of a run count one step up.
bool ToolSteps::goesOn(QStringView line) const {
    return !spelled_.isEmpty() && line.startsWith(spelled_);
}

RunPhase ToolSteps::phaseOf(QStringView step) const {
    const Verb *verb = verbOf(step);
    const RunPhase phase = verb ? verb->phase : RunPhase::Starting;
    const bool comparing = operation_ == VerifyOperation || written_;
    return phase == RunPhase::Reading && comparing ? RunPhase::Verifying : phase;
}

void ToolSteps::begin() {
    step_ = nameOf(spelled_);
    part_ = partIn(step_);
    phase_ = phaseOf(step_);
    written_ = written_ || phase_ == RunPhase::Writing;
    from_ = done_;
    switch (phase_) {
    case RunPhase::Erasing:
        to_ = std::max(from_, eraseEnd);
        break;
    case RunPhase::Writing:
        from_ = std::max(from_, eraseEnd);
        to_ = std::max(from_, writeEnd);
        break;
    case RunPhase::Verifying:
        to_ = 1;
        break;
    case RunPhase::Reading:
        to_ = from_ + (1 - from_) * shareOfAPart;
        break;
    case RunPhase::Starting:
    case RunPhase::Protecting:
    case RunPhase::Testing:
        to_ = from_;
        break;
    }
}

RunProgress ToolSteps::progress() const {
    if (operation_ == LogicOperation)
        return {RunPhase::Testing, {}, std::nullopt};
    return {phase_, part_, counts_ ? std::optional(done_) : std::nullopt};
}

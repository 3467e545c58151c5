// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "devices/ChipInquiry.h"

#include "base/ShownName.h"
#include "language/CommandLine.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "settings/ToolTrust.h"
#include "tool/ToolProgram.h"
#include "tool/ToolQuestion.h"

#include <variant>

namespace {

/// How many devices' answers are remembered: more than somebody looks through in a day, in little
/// memory.
constexpr int maxAnswers = 500;

} // namespace

ChipInquiry::ChipInquiry(const Surroundings &surroundings)
    : with_(surroundings), answers_(maxAnswers) {
    settling_.setSingleShot(true);
    settling_.setInterval(settlingTime);
    connect(&settling_, &QTimer::timeout, this, &ChipInquiry::ask);
    connect(&with_.work, &WorkState::changed, this, &ChipInquiry::followWork);
    connect(&with_.settings, &SettingsStore::valueChanged, this, [this](const QString &key) {
        if (key == settingsKeys::device || key == settingsKeys::miniproLocation)
            lookAnew();
    });
    lookAnew();
}

ChipInquiry::~ChipInquiry() = default;

ChipInquiry::Subject ChipInquiry::subject() const {
    return {with_.settings.stringValue(settingsKeys::miniproLocation),
            with_.settings.stringValue(settingsKeys::device)};
}

bool ChipInquiry::mayAsk(const Subject &subject) const {
    const auto &[tool, device] = subject;
    const bool isName = !device.isEmpty() && device.size() <= longestShownName;
    // The command of a logic test holds the tool and the device alone.
    const auto odd = [this] {
        return oddCharacters(LogicOperation, ToolSettings::readFrom(with_.settings));
    };
    return isName && with_.trust.covers(tool) && programOf(tool) && odd().isEmpty();
}

void ChipInquiry::lookAnew() {
    question_.reset();
    const DeviceAnswer *answer = answers_.object(subject());
    setKnown(answer ? *answer : DeviceAnswer());
    if (answer)
        settling_.stop();
    else
        settling_.start();
}

void ChipInquiry::followWork(Work now) {
    if (now == Work::Idle)
        return lookAfterRun();
    settling_.stop();
    question_.reset();
}

// A tool may have been replaced by one that knows more devices. Until it answers, what it said last
// stands.
void ChipInquiry::lookAfterRun() {
    if (!std::holds_alternative<NoSuchDevice>(known_))
        return lookAnew();
    answers_.remove(subject());
    settling_.start();
}

void ChipInquiry::ask() {
    const Subject asked = subject();
    if (!with_.work.isIdle() || held_() || !mayAsk(asked))
        return;
    question_ = std::make_unique<ToolQuestion>(descriptionCommand(asked.first, asked.second),
                                               with_.settings);
    connect(question_.get(), &ToolQuestion::answered, this,
            [this, asked](const ToolAnswer &answer) { take(asked, answer); });
    question_->ask();
}

// Only answers are kept: the tool may give one later, once it is there or has its lists.
void ChipInquiry::take(const Subject &subject, const ToolAnswer &answer) {
    question_.release()->deleteLater();
    if (!answer.status)
        return;
    const DeviceAnswer read = readDeviceAnswer(answer.text, *answer.status);
    if (std::holds_alternative<std::monostate>(read))
        return;
    answers_.insert(subject, new DeviceAnswer(read));
    setKnown(read);
}

void ChipInquiry::setKnown(const DeviceAnswer &answer) {
    if (known_ == answer)
        return;
    known_ = answer;
    emit changed();
}

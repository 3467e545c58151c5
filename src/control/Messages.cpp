// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "control/Messages.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>

namespace {

using Severity = MessageLine::Severity;

constexpr auto information = Severity::Information;
constexpr auto success = Severity::Success;
constexpr auto warning = Severity::Warning;
constexpr auto problem = Severity::Problem;

/// The events that make a message untrue; the rest are nothing.
using Ends = std::array<std::optional<Event>, 3>;

struct Rule {
    Topic topic;
    Severity usual;
    Severity inTrouble;
    Ends ends;
};

/// No event ends the message. It tells of a state, which stands beside the topic; whoever says it
/// follows that state, and says it anew or takes it back at each change.
constexpr Ends followed = {};

constexpr std::array rules = {
    Rule{Topic::Verdict, information, problem, {Event::RunBegan}},
    // How far the series has come.
    Rule{Topic::LogicSeries, information, warning, followed},
    Rule{Topic::Busy, warning, warning, {Event::WorkEnded}},
    // The press that is remembered, and counts only while this stands.
    Rule{Topic::SecondPress, warning, warning, followed},
    // Whether something prints.
    Rule{Topic::Leftovers, information, information, followed},
    Rule{Topic::StaleRead, warning, warning, {Event::ReadTaken}},
    Rule{Topic::NothingRead, warning, warning, {Event::BytesRead}},
    Rule{Topic::NothingToBurn, warning, warning, {Event::ImageHasBytes}},
    // Whether the image is the one composed last.
    Rule{Topic::Composition, information, problem, followed},
    Rule{Topic::Workspace, problem, problem, {Event::ImageWritten}},
    Rule{Topic::SharedFolder, warning, warning, {Event::FileMoved}},
    Rule{Topic::ImageFile,
         information,
         problem,
         {Event::ImageChanged, Event::RunBegan, Event::ImageMoved}},
    Rule{Topic::Binary, warning, warning, {Event::BinaryLoading}},
    Rule{Topic::OpenedFile, information, warning, {Event::BinaryLoading, Event::BinaryOnDisk}},
    Rule{Topic::Import, warning, warning, {Event::ImportAsked, Event::BinaryLoading}},
    Rule{Topic::ImportedFile, warning, warning, {Event::BinaryLoading, Event::ImportsOnDisk}},
    Rule{Topic::Saving, success, problem, {Event::SavingBegan}},
    Rule{Topic::TakenNames, warning, warning, {Event::SavingBegan, Event::RunBegan}},
    Rule{Topic::OtherMemories, information, warning, {Event::RunBegan, Event::DeviceChanged}},
    Rule{Topic::Entry, warning, warning, {Event::ImageChanged, Event::BlockDone}},
    Rule{Topic::Block, information, information, {Event::ImageChanged}},
    Rule{Topic::BlockRefused,
         warning,
         warning,
         {Event::BytesSelected, Event::ImageChanged, Event::BlockAsked}},
    Rule{Topic::Clipboard, information, information, {Event::ClipboardRead}},
    // What the history can take back.
    Rule{Topic::ForgottenEdits, information, information, followed},
    // How many can be restored.
    Rule{Topic::ReplacedEdits, warning, warning, followed},
    // Which controls differ from those that it was made with.
    Rule{Topic::RestoredImage, information, information, followed},
    // The text that is shown.
    Rule{Topic::HiddenBytes, information, information, followed},
    Rule{Topic::Copy, warning, warning, {Event::RowsSelected}},
    Rule{Topic::Address, warning, warning, {Event::AddressChanged}},
    Rule{Topic::Differences,
         information,
         information,
         {Event::BytesSelected, Event::RowsSelected, Event::ImageChanged}},
    Rule{Topic::Device, warning, warning, {Event::DeviceChanged}},
    Rule{Topic::Tool, warning, warning, {Event::ToolChanged, Event::RunBegan}},
    Rule{Topic::Favourites,
         information,
         information,
         {Event::DeviceChanged, Event::FavouritesChanged, Event::FavouritesShown}},
    Rule{Topic::Console, information, information, {Event::ConsoleCleared}},
    Rule{Topic::Settings, warning, problem, {Event::SettingsSaved}},
    // Where the file is kept, which is not taken back.
    Rule{Topic::SettingsKept, warning, warning, followed},
    Rule{Topic::SettingsNotRead, problem, problem, {Event::SettingsSaved}},
};

constexpr bool inOrder() {
    for (std::size_t i = 0; i < rules.size(); ++i)
        if (std::size_t(rules[i].topic) != i)
            return false;
    return rules.back().topic == Topic::SettingsNotRead;
}
static_assert(inOrder(), "one rule for each topic, in the topics' order");

constexpr int number(Topic topic) {
    return int(topic);
}

constexpr const Rule &ruleOf(Topic topic) {
    return rules[std::size_t(topic)];
}

void assertFollowed(Topic topic) {
    Q_ASSERT_X(ruleOf(topic).ends == followed, "Messages", "an event ends this topic");
}

} // namespace

void Messages::say(Topic topic, const QString &sentence, const Action &action) {
    set(topic, ruleOf(topic).usual, sentence, action);
}

void Messages::sayTrouble(Topic topic, const QString &sentence, const Action &action) {
    set(topic, ruleOf(topic).inTrouble, sentence, action);
}

void Messages::sayVerdict(MessageLine::Severity severity, const QString &sentence,
                          const Action &action) {
    set(Topic::Verdict, severity, sentence, action);
}

void Messages::takeBack(Topic topic) {
    assertFollowed(topic);
    clear(topic);
}

void Messages::happened(Event event) {
    for (const Rule &rule : rules)
        if (std::find(rule.ends.begin(), rule.ends.end(), event) != rule.ends.end())
            clear(rule.topic);
}

void Messages::set(Topic topic, Severity severity, const QString &sentence, const Action &action) {
    if (sentence.isEmpty())
        return takeBack(topic);
    line_.setMessage(number(topic), severity, sentence, action);
}

void Messages::clear(Topic topic) {
    line_.clearMessage(number(topic));
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "control/Messages.h"

#include <QTest>

/// What the user sees of each topic: how serious it is, and what makes it go.
class TestMessages : public QObject {
    Q_OBJECT

private slots:
    void everyTopic_isTried();
    void topic_data();
    void topic();
    void topics_areSaidBesideEachOther();
    void verdict_isAsSeriousAsItsJudgeSays();
};

namespace {

const QString done = QStringLiteral("Done: ");
const QString warning = QStringLiteral("Warning: ");
const QString problem = QStringLiteral("Problem: ");
const QString plain; // information has no word before it

const QList<Event> everything = {
    Event::RunBegan,       Event::WorkEnded,     Event::ReadTaken,         Event::BytesRead,
    Event::ImageChanged,   Event::ImageHasBytes, Event::ImageWritten,      Event::ImageMoved,
    Event::BinaryLoading,  Event::BinaryOnDisk,  Event::ImportsOnDisk,     Event::ImportAsked,
    Event::SavingBegan,    Event::SettingsSaved, Event::DeviceChanged,     Event::ToolChanged,
    Event::BlockAsked,     Event::BlockDone,     Event::BytesSelected,     Event::RowsSelected,
    Event::AddressChanged, Event::ClipboardRead, Event::FavouritesChanged, Event::FavouritesShown,
    Event::ConsoleCleared, Event::FileMoved};

constexpr Topic lastTopic = Topic::SettingsNotRead;

struct Expectation {
    const char *name;
    Topic topic;
    QString usual;
    QString trouble;
    QList<Event> ends;
};

/// What tells of a state goes with that state, by its speaker, and has no end.
const QList<Expectation> expectations = {
    {"a verdict is of one run", Topic::Verdict, plain, problem, {Event::RunBegan}},
    {"repeated tests are told of until another run", Topic::LogicSeries, plain, warning, {}},
    {"a refusal lasts as long as the work", Topic::Busy, warning, warning, {Event::WorkEnded}},
    {"a question waits for its answer", Topic::SecondPress, warning, warning, {}},
    {"what still prints is no trouble", Topic::Leftovers, plain, plain, {}},
    {"older bytes, until the next Read", Topic::StaleRead, warning, warning, {Event::ReadTaken}},
    {"nothing read, until there is", Topic::NothingRead, warning, warning, {Event::BytesRead}},
    {"nothing to burn, until there is",
     Topic::NothingToBurn,
     warning,
     warning,
     {Event::ImageHasBytes}},
    {"how an image came out, or that it did not", Topic::Composition, plain, problem, {}},
    {"an image that could not be written, until it is",
     Topic::Workspace,
     problem,
     problem,
     {Event::ImageWritten}},
    {"a folder of others, until it is another one",
     Topic::SharedFolder,
     warning,
     warning,
     {Event::FileMoved}},
    {"a file that was written again, until it is used, stale or another",
     Topic::ImageFile,
     plain,
     problem,
     {Event::ImageChanged, Event::RunBegan, Event::ImageMoved}},
    {"a binary, until it is read again", Topic::Binary, warning, warning, {Event::BinaryLoading}},
    {"a file that changed, until it is read again or as it was",
     Topic::OpenedFile,
     plain,
     warning,
     {Event::BinaryLoading, Event::BinaryOnDisk}},
    {"a file that could not be imported, until another is or is opened",
     Topic::Import,
     warning,
     warning,
     {Event::ImportAsked, Event::BinaryLoading}},
    {"an import that changed, until it is read again or as it was",
     Topic::ImportedFile,
     warning,
     warning,
     {Event::BinaryLoading, Event::ImportsOnDisk}},
    {"a saved file, until the next", Topic::Saving, done, problem, {Event::SavingBegan}},
    {"files of a set that are there, until they are saved or used",
     Topic::TakenNames,
     warning,
     warning,
     {Event::SavingBegan, Event::RunBegan}},
    {"other memories are of one Read and one device",
     Topic::OtherMemories,
     plain,
     warning,
     {Event::RunBegan, Event::DeviceChanged}},
    {"an entry that was not taken, until the next is",
     Topic::Entry,
     warning,
     warning,
     {Event::ImageChanged, Event::BlockDone}},
    {"a changed block, until the next change", Topic::Block, plain, plain, {Event::ImageChanged}},
    {"a block that was not changed, until the next move, image or try",
     Topic::BlockRefused,
     warning,
     warning,
     {Event::BytesSelected, Event::ImageChanged, Event::BlockAsked}},
    {"a text is read until it has been", Topic::Clipboard, plain, plain, {Event::ClipboardRead}},
    {"forgotten edits are told with each change", Topic::ForgottenEdits, plain, plain, {}},
    {"edits that are gone warn", Topic::ReplacedEdits, warning, warning, {}},
    {"an image that came back is good news", Topic::RestoredImage, plain, plain, {}},
    {"hidden bytes are a fact", Topic::HiddenBytes, plain, plain, {}},
    {"too much to copy, until less is selected",
     Topic::Copy,
     warning,
     warning,
     {Event::RowsSelected}},
    {"no such address, until another is typed",
     Topic::Address,
     warning,
     warning,
     {Event::AddressChanged}},
    {"a step to a difference, until the next move or image",
     Topic::Differences,
     plain,
     plain,
     {Event::BytesSelected, Event::RowsSelected, Event::ImageChanged}},
    {"an odd device, until another is chosen",
     Topic::Device,
     warning,
     warning,
     {Event::DeviceChanged}},
    {"a tool that is missing, until it is another one or has been tried",
     Topic::Tool,
     warning,
     warning,
     {Event::ToolChanged, Event::RunBegan}},
    {"a favourite, until the device or the list is another, or is shown",
     Topic::Favourites,
     plain,
     plain,
     {Event::DeviceChanged, Event::FavouritesChanged, Event::FavouritesShown}},
    {"text was dropped, until all of it is", Topic::Console, plain, plain, {Event::ConsoleCleared}},
    {"unsaved settings, until they are saved",
     Topic::Settings,
     warning,
     problem,
     {Event::SettingsSaved}},
    {"where a damaged settings file is kept", Topic::SettingsKept, warning, warning, {}},
    {"settings that were not read, until they are",
     Topic::SettingsNotRead,
     problem,
     problem,
     {Event::SettingsSaved}},
};

/// A line with messages in it, as a window has them.
struct Said {
    MessageLine line;
    Messages messages{line};
};

} // namespace

void TestMessages::everyTopic_isTried() {
    QCOMPARE(expectations.size(), int(lastTopic) + 1);
    for (int topic = 0; topic <= int(lastTopic); ++topic)
        QCOMPARE(int(expectations[topic].topic), topic);
    for (int event = 0; event <= int(Event::ConsoleCleared); ++event)
        QVERIFY(everything.contains(Event(event)));
}

void TestMessages::topic_data() {
    QTest::addColumn<int>("number");
    for (int number = 0; number < expectations.size(); ++number)
        QTest::newRow(expectations[number].name) << number;
}

void TestMessages::topic() {
    QFETCH(const int, number);
    const Expectation &expected = expectations[number];
    const QString sentence = QStringLiteral("It is so.");
    Said said;
    said.messages.say(expected.topic, sentence);
    QCOMPARE(said.line.toPlainText(), expected.usual + sentence);
    said.messages.sayTrouble(expected.topic, sentence);
    QCOMPARE(said.line.toPlainText(), expected.trouble + sentence);
    for (const Event event : everything) {
        said.messages.say(expected.topic, sentence);
        said.messages.happened(event);
        QCOMPARE(said.line.toPlainText().isEmpty(), expected.ends.contains(event));
    }
    if (!expected.ends.isEmpty())
        return;
    said.messages.takeBack(expected.topic);
    QCOMPARE(said.line.toPlainText(), QString());
    said.messages.say(expected.topic, sentence);
    said.messages.say(expected.topic, QString());
    QCOMPARE(said.line.toPlainText(), QString());
}

void TestMessages::topics_areSaidBesideEachOther() {
    Said said;
    said.messages.say(Topic::Copy, QStringLiteral("One."));
    said.messages.say(Topic::Saving, QStringLiteral("Two."));
    said.messages.say(Topic::Copy, QStringLiteral("Three."));
    QCOMPARE(said.line.toPlainText(), QStringLiteral("Warning: Three.\nDone: Two."));
    said.messages.happened(Event::RowsSelected);
    QCOMPARE(said.line.toPlainText(), QStringLiteral("Done: Two."));
}

void TestMessages::verdict_isAsSeriousAsItsJudgeSays() {
    Said said;
    said.messages.sayVerdict(MessageLine::Severity::Success, QStringLiteral("Read."));
    QCOMPARE(said.line.toPlainText(), QStringLiteral("Done: Read."));
    said.messages.sayVerdict(MessageLine::Severity::Problem, QStringLiteral("Failed."));
    QCOMPARE(said.line.toPlainText(), QStringLiteral("Problem: Failed."));
    said.messages.happened(Event::RunBegan);
    QCOMPARE(said.line.toPlainText(), QString());
}

QTEST_MAIN(TestMessages)
#include "tst_messages.moc"

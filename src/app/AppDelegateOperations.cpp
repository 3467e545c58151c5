// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

// The operation buttons: one tool run for each press, and what it left.

#include "app/AppDelegate.h"

#include "base/Log.h"
#include "base/WorkState.h"
#include "devices/device_searcher.h"
#include "files/FileLoading.h"
#include "files/FileStamp.h"
#include "grid/GridColumns.h"
#include "grid/GridView.h"
#include "settings/FilePaths.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "tool/LogicReport.h"
#include "tool/PinFailures.h"
#include "tool/ScriptedMiniPro.h"
#include "widgets/ConsoleView.h"
#include "widgets/TabView.h"

#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QLocale>

namespace {

ImageEncoding encodingOf(const ByteBuffer &image) {
    return image ? encodingForTool(*image) : ImageEncoding::Raw;
}

bool endedWell(const RunOutcome &outcome) {
    return outcome.verdict == RunOutcome::Verdict::Succeeded ||
           outcome.verdict == RunOutcome::Verdict::Qualified;
}

bool takesImage(int tag) {
    return tag == VerifyOperation || tag == WriteOperation;
}

} // namespace

void AppDelegate::go(QObject *sender) {
    if (gate_.refusesElseCommits())
        return;
    auto *run = new ScriptedMiniPro(defaults_, log_, queue_, this);
    state_.retainArray.append(run);
    emit runMade(run);
    run->setOutputView(outlets.textView);
    const int tag = sender->property("tag").toInt();
    chooseOperation(*run, tag);
    const BurnSituation burn = burnSituation(tag);
    if (asksBeforeRun(burn))
        return;

    work_.begin(Work::Running);
    RunRecord record = launchAndWait(*run, burn);
    if (tag == ReadOperation) {
        const QString trouble = takeReadData();
        sayWhatReadLeft(record, trouble);
    } else if (tag == LogicOperation) {
        takeLogicReport(record);
    }
    work_.end();
    emit runEnded(record);
}

void AppDelegate::testLogic(QObject *sender) {
    if (gate_.refuses())
        return;
    if (selectedTab() == logicTabIdentifier())
        tabView_didSelectTabViewItem(outlets.tabview, outlets.tabview->selectedTabViewItem());
    else
        outlets.tabview->selectTabViewItem(logicTabIdentifier());
    go(sender);
}

void AppDelegate::chooseOperation(ScriptedMiniPro &run, int tag) {
    switch (tag) {
    case ReadOperation:
        log_.write(QStringLiteral("ReadOperation"));
        run.setReadOperation();
        break;
    case VerifyOperation:
        log_.write(QStringLiteral("VerifyOperation"));
        run.setVerifyOperation();
        break;
    case WriteOperation:
        log_.write(QStringLiteral("WriteOperation"));
        run.setWriteOperation();
        break;
    case LogicOperation:
        log_.write(QStringLiteral("LogicOperation"));
        run.setLogicOperation();
        state_.logictest_rows = {};
        outlets.tableview->reloadData();
        break;
    default:
        break; // the run keeps the operation that it was made with
    }
}

BurnSituation AppDelegate::burnSituation(int tag) const {
    if (!takesImage(tag)) {
        BurnSituation nothingToBurn;
        nothingToBurn.operation = Operation(tag);
        return nothingToBurn;
    }
    const Failure *problem = workspace_.lastWrite().failure();
    return {.operation = Operation(tag),
            .hasImage = state_.output_data != nullptr,
            .imageLength = lengthOf(state_.output_data),
            .encoding = encodingOf(state_.output_data),
            .path = resolvedPathOf(defaults_, settingsKeys::temp_output_file),
            .fileIsImage = workspace_.outputFileHolds(state_.output_data),
            .writeProblem = problem ? problem->reason : QString()};
}

// What the tool would get may not be what the window shows, or hardly what somebody means to burn.
bool AppDelegate::asksBeforeRun(const BurnSituation &burn) {
    const std::optional<BurnDoubt> doubt = doubtAbout(burn);
    if (!doubt) {
        secondPress_.withdraw();
        return false;
    }
    SecondPress::Question question;
    question.thing =
        QStringLiteral("%1 %2 %3 %4 %5")
            .arg(doubt->key, QString::number(burn.operation), QString::number(imageRevision()),
                 burn.path, FileStamp::text(FileStamp::of(burn.path)));
    question.sentence = doubt->sentence;
    if (doubt->canWriteAgain && state_.output_data)
        question.action = {tr("Write the image file again"), [this] { writeImageAgain(); }};
    return !secondPress_.confirms(question);
}

void AppDelegate::writeImageAgain() {
    if (gate_.refuses())
        return;
    secondPress_.withdraw();
    write_output_data_to_temp_file(this);
    if (workspace_.outputFileHolds(state_.output_data))
        messages_.say(Topic::ImageFile, tr("The image file holds the data to burn again."));
}

RunRecord AppDelegate::launchAndWait(ScriptedMiniPro &run, const BurnSituation &burn) {
    const ToolSettings settings = ToolSettings::readFrom(defaults_);
    RunRecord record;
    record.operation = run.facts().operation;
    record.device = settings.device;
    record.tool = settings.tool;
    record.commandLine = operationCommand(record.operation, settings);
    record.started = QDateTime::currentDateTime();
    const bool handsImage = takesImage(record.operation) && burn.fileIsImage;
    record.imageRevision = handsImage ? imageRevision() : 0;
    if (takesImage(record.operation) && !burn.fileIsImage)
        record.fileMark = FileStamp::text(FileStamp::of(burn.path));
    record.imageLength = handsImage ? burn.imageLength : QFileInfo(burn.path).size();
    messages_.happened(Event::RunBegan);
    currentRun_ = &run;
    record.status = run.launch();
    currentRun_ = nullptr;
    record.ended = QDateTime::currentDateTime();
    RunFacts facts = run.facts();
    facts.imageLength = record.imageLength;
    facts.imageIsShown = burn.fileIsImage;
    if (handsImage)
        facts.encoding = burn.encoding;
    facts.programmers = pluggedProgrammers();
    record.outcome = judgeRun(facts);
    record.said = run.saidTail();
    run.releaseOutput();
    return record;
}

void AppDelegate::stopRun() {
    outlets.devicesearcher->stop();
    if (!currentRun_)
        return;
    work_.stop();
    currentRun_->stop();
}

// Says why there are no bytes, if there are none.
QString AppDelegate::takeReadData() {
    // The redisplay comes a turn later; until then the grid keeps the bytes that it shows.
    auto loaded = loadWholeFile(resolvedPathOf(defaults_, settingsKeys::temp_read_from_chip_file));
    if (const Failure *failure = loaded.failure()) {
        state_.read_from_chip_data = nullptr;
        log_.write(QStringLiteral("error reading temp file: ") + failure->reason);
        build_and_reload();
        return failure->reason;
    }
    state_.read_from_chip_data = *std::move(loaded);
    messages_.happened(Event::BytesRead);
    build_and_reload();
    return lengthOf(state_.read_from_chip_data) == 0 ? tr("the file is empty") : QString();
}

// A tool that failed may leave the file of an earlier Read in place, and these bytes must not
// pass for the chip that is in the socket now.
void AppDelegate::sayWhatReadLeft(RunRecord &record, const QString &trouble) {
    messages_.happened(Event::ReadTaken);
    record.imageLength = lengthOf(state_.read_from_chip_data);
    const QString path = resolvedPathOf(defaults_, settingsKeys::temp_read_from_chip_file);
    if (record.imageLength == 0 && endedWell(record.outcome))
        record.outcome = {RunOutcome::Verdict::Failed,
                          tr("The tool says that it has read the chip, but there are no bytes in "
                             "%1: %2.")
                              .arg(QDir::toNativeSeparators(path), trouble),
                          tr("See whether the tool may write there, and read again.")};
    if (record.imageLength == 0)
        return;
    if (endedWell(record.outcome)) {
        readDevice_ = record.device;
        record.outcome.sentence =
            tr("%1 %2 bytes.").arg(record.outcome.sentence, QLocale().toString(record.imageLength));
        return;
    }
    const QFileInfo file(path);
    const QDateTime written = file.lastModified();
    const QString when = written.date() == record.started.date()
                             ? QLocale().toString(written.time(), QStringLiteral("HH:mm"))
                             : QLocale().toString(written, QLocale::ShortFormat);
    messages_.say(Topic::StaleRead, tr("The last Read failed; these bytes are from %1.").arg(when));
}

// The heading and the rows belong to the results tab, whichever was looked at meanwhile.
void AppDelegate::takeLogicReport(RunRecord &record) {
    state_.logictest_rows = {};
    const auto loaded =
        loadUtf8Text(resolvedPathOf(defaults_, settingsKeys::temp_logic_chip_test_results_file));
    if (const Failure *failure = loaded.failure()) {
        log_.write(QStringLiteral("error reading temp file: ") + failure->reason);
        return;
    }
    const QString &text = *loaded;
    log_.write(QStringLiteral("we have successfully obtained the chip test results! %1 bytes")
                   .arg(text.size()));
    if (selectedTab() != logicTabIdentifier())
        outlets.tabview->selectTabViewItem(logicTabIdentifier());
    const LogicReport report = parseLogicReport(text);
    for (const QString &line : report.log)
        log_.write(line);
    if (report.title)
        outlets.peeping_at->setText(*report.title);
    if (report.headers)
        state_.logictest_headers = *report.headers;
    state_.logictest_rows = report.rows;
    outlets.tableview->reloadData();
    const QString failedPins = wordsFor(pinFailures(report), state_.logictest_headers.size());
    if (!failedPins.isEmpty())
        record.outcome.sentence += QLatin1Char(' ') + failedPins;
}

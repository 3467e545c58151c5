// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

// The operation buttons: one tool run for each press, and what it left.

#include "control/AppDelegate.h"

#include "base/WorkState.h"
#include "control/OperationRun.h"
#include "devices/device_searcher.h"
#include "grid/GridColumns.h"
#include "language/CommandLine.h"
#include "language/LogicReport.h"
#include "language/PinFailures.h"
#include "settings/FilePaths.h"
#include "settings/SettingsKeys.h"
#include "tool/ScriptedMiniPro.h"
#include "widgets/ConsoleView.h"
#include "widgets/TabView.h"

#include <QLabel>

ScriptedMiniPro *AppDelegate::makeRun(int tag) {
    auto *run = new ScriptedMiniPro(with_.defaults, with_.log, with_.queue, this);
    state_.retainArray.append(run);
    emit runMade(run);
    run->setOutputView(outlets.textView);
    chooseOperation(*run, tag, with_.log);
    return run;
}

bool AppDelegate::go(QObject *sender, RunPress press) {
    if (with_.gate.refusesElseCommits())
        return false;
    const int tag = sender->property("tag").toInt();
    ScriptedMiniPro *run = makeRun(tag);
    if (tag == LogicOperation) {
        state_.logictest_rows = {};
        showAnew();
    }
    const BurnSituation burn = burnFile_.situation(Operation(tag));
    if (consent_.asks(burn, imageRevision(), press))
        return false;

    with_.work.begin(Work::Running);
    with_.messages.happened(Event::RunBegan);
    currentRun_ = run;
    const ToolSettings settings = ToolSettings::readFrom(with_.defaults);
    readOrigin_.expect(settings.readPath);
    RunRecord record = carryOut(*run, settings, burn, imageRevision());
    currentRun_ = nullptr;
    if (tag == ReadOperation)
        takeReadData(record);
    else if (tag == LogicOperation)
        takeLogicReport(record);
    with_.work.end();
    emit runEnded(record);
    return true;
}

bool AppDelegate::testLogic(QObject *sender, RunPress press) {
    if (with_.gate.refuses())
        return false;
    if (selectedTab() == ShownTab::LogicTest)
        showSelectedTab();
    else
        outlets.tabview->selectTabViewItem(logicTabIdentifier());
    return go(sender, press);
}

void AppDelegate::stopRun() {
    outlets.devicesearcher->stop();
    if (!currentRun_)
        return;
    with_.work.stop();
    currentRun_->stop();
}

void AppDelegate::takeReadData(RunRecord &record) {
    const ReadFile file = loadReadFile(
        resolvedPathOf(with_.defaults, settingsKeys::temp_read_from_chip_file), with_.log);
    state_.read_from_chip_data = file.bytes ? *file.bytes : nullptr;
    with_.messages.happened(Event::ReadTaken);
    if (state_.read_from_chip_data)
        with_.messages.happened(Event::BytesRead);
    // The redisplay comes a turn later; until then the grid keeps the bytes that it shows.
    build_and_reload();
    const bool isOfThisChip = judgeRead(record, file);
    readOrigin_.take(record, file, isOfThisChip);
    if (!isOfThisChip && file.length() > 0)
        with_.messages.say(Topic::StaleRead, staleReadRemark(record, file.path));
    emit readDataTaken();
}

// The heading and the rows belong to the results tab, whichever was looked at meanwhile.
void AppDelegate::takeLogicReport(RunRecord &record) {
    state_.logictest_rows = {};
    if (record.report == RunRecord::Report::Older)
        return;
    const Result<LogicReport> report = loadLogicReport(
        resolvedPathOf(with_.defaults, settingsKeys::temp_logic_chip_test_results_file), with_.log);
    if (const Failure *failure = report.failure())
        return record.outcome.add(wordsForUnreadReport(*failure));
    if (selectedTab() != ShownTab::LogicTest)
        outlets.tabview->selectTabViewItem(logicTabIdentifier());
    outlets.peeping_at->setText(report->title.value_or(outlets.peeping_at->text()));
    state_.logictest_headers = report->headers.value_or(state_.logictest_headers);
    state_.logictest_rows = report->rows;
    showAnew();
    record.outcome.add(wordsFor(pinFailures(*report), state_.logictest_headers.size()));
}

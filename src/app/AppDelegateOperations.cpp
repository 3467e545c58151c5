// The operation buttons: one tool run for each press, and what it left.

#include "app/AppDelegate.h"

#include "app/BurnDoubt.h"
#include "base/Log.h"
#include "base/WorkState.h"
#include "devices/device_searcher.h"
#include "grid/GridView.h"
#include "image/FileLoading.h"
#include "settings/FilePaths.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "tool/LogicReport.h"
#include "tool/ScriptedMiniPro.h"
#include "widgets/ConsoleView.h"

#include <QFileInfo>
#include <QLabel>
#include <QLocale>

namespace {

const QString runTopic = QStringLiteral("run");
const QString readTopic = QStringLiteral("read");
const QString pressTopic = QStringLiteral("press");

MessageLine::Severity severityOf(RunOutcome::Verdict verdict) {
    switch (verdict) {
    case RunOutcome::Verdict::Succeeded:
        return MessageLine::Severity::Success;
    case RunOutcome::Verdict::Qualified:
    case RunOutcome::Verdict::Stopped:
        return MessageLine::Severity::Warning;
    case RunOutcome::Verdict::Failed:
    case RunOutcome::Verdict::NotStarted:
        break;
    }
    return MessageLine::Severity::Problem;
}

RunFacts factsOf(const ScriptedMiniPro &run, const ByteBuffer &image) {
    RunFacts facts = run.facts();
    facts.imageLength = lengthOf(image);
    if (image)
        facts.encoding = encodingForTool(*image);
    facts.programmers = pluggedProgrammers();
    return facts;
}

} // namespace

void AppDelegate::go(QObject *sender) {
    if (refusesWhileBusy())
        return;
    commitPendingInput();
    auto *run = new ScriptedMiniPro(defaults_, log_, queue_, this);
    state_.retainArray.append(run);
    run->setOutputView(outlets.textView);
    const int tag = sender->property("tag").toInt();
    chooseOperation(*run, tag);
    if (asksBeforeRun(tag))
        return;

    const QDateTime started = QDateTime::currentDateTime();
    work_.begin(Work::Running);
    const RunOutcome outcome = launchAndWait(*run);
    if (tag == ReadOperation) {
        takeReadData();
        sayWhatReadLeft(outcome, started);
    } else if (tag == LogicOperation) {
        takeLogicReport();
    }
    work_.end();
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

// What the tool would get may not be what the window shows, or hardly what somebody means to burn.
bool AppDelegate::asksBeforeRun(int tag) {
    if (tag != VerifyOperation && tag != WriteOperation)
        return false;
    const BurnSituation situation{.operation = Operation(tag),
                                  .imageLength = lengthOf(state_.output_data),
                                  .path = resolvedPathOf(defaults_, settingsKeys::temp_output_file),
                                  .fileIsImage = workspace_.outputFileHolds(state_.output_data),
                                  .writeProblem =
                                      workspace_.lastWriteProblem().value_or(QString())};
    const std::optional<BurnDoubt> doubt = doubtAbout(situation);
    if (!doubt ||
        secondPress_.confirms(QStringLiteral("%1 %2 %3 %4")
                                  .arg(doubt->key, QString::number(tag),
                                       QString::number(edits_.state().revision), situation.path))) {
        outlets.messageLine->clearNotice(pressTopic);
        return false;
    }
    MessageLine::Action again;
    if (doubt->canWriteAgain && state_.output_data)
        again = {tr("Write the image file again"), [this] { writeImageAgain(); }};
    notice(pressTopic, MessageLine::Severity::Warning, doubt->sentence, again);
    return true;
}

void AppDelegate::writeImageAgain() {
    if (refusesWhileBusy())
        return;
    secondPress_.withdraw();
    outlets.messageLine->clearNotice(pressTopic);
    write_output_data_to_temp_file(this);
    if (workspace_.outputFileHolds(state_.output_data))
        notice(runTopic, MessageLine::Severity::Information,
               tr("The image file holds the data to burn again."));
}

RunOutcome AppDelegate::launchAndWait(ScriptedMiniPro &run) {
    outlets.messageLine->clearNotice(runTopic);
    currentRun_ = &run;
    run.launch();
    currentRun_ = nullptr;

    const RunOutcome outcome = judgeRun(factsOf(run, state_.output_data));
    notice(runTopic, severityOf(outcome.verdict), outcome.words());
    return outcome;
}

void AppDelegate::stopRun() {
    outlets.devicesearcher->stop();
    if (!currentRun_)
        return;
    work_.stop();
    currentRun_->stop();
}

bool AppDelegate::refusesWhileBusy() {
    if (work_.isIdle())
        return false;
    notice(QStringLiteral("busy"), MessageLine::Severity::Warning,
           work_.now() == Work::Searching
               ? tr("A search is running: stop it or wait for its end.")
               : tr("The programmer tool is running: stop it or wait for its end."));
    return true;
}

void AppDelegate::takeReadData() {
    // The redisplay comes a turn later; until then the grid keeps the bytes that it shows.
    auto loaded = loadWholeFile(resolvedPathOf(defaults_, settingsKeys::temp_read_from_chip_file));
    if (const auto *failure = std::get_if<LoadFailure>(&loaded)) {
        state_.read_from_chip_data = nullptr;
        log_.write(QStringLiteral("error reading temp file: ") + failure->reason);
    } else {
        state_.read_from_chip_data = std::get<ByteBuffer>(std::move(loaded));
    }
    build_and_reload();
}

// A tool that failed may leave the file of an earlier Read in place, and these bytes must not
// pass for the chip that is in the socket now.
void AppDelegate::sayWhatReadLeft(const RunOutcome &outcome, const QDateTime &started) {
    outlets.messageLine->clearNotice(readTopic);
    const qsizetype length = lengthOf(state_.read_from_chip_data);
    const bool endedWell = outcome.verdict == RunOutcome::Verdict::Succeeded ||
                           outcome.verdict == RunOutcome::Verdict::Qualified;
    if (endedWell && length > 0) {
        readDevice_ = defaults_.stringValue(settingsKeys::device);
        notice(runTopic, severityOf(outcome.verdict),
               tr("%1 %2 bytes.").arg(outcome.words(), QLocale().toString(length)));
        return;
    }
    if (length == 0)
        return;
    const QFileInfo file(resolvedPathOf(defaults_, settingsKeys::temp_read_from_chip_file));
    const QDateTime written = file.lastModified();
    const QString when = written.date() == started.date()
                             ? QLocale().toString(written.time(), QStringLiteral("HH:mm"))
                             : QLocale().toString(written, QLocale::ShortFormat);
    notice(readTopic, MessageLine::Severity::Warning,
           tr("The last Read failed; these bytes are from %1.").arg(when));
}

void AppDelegate::takeLogicReport() {
    state_.logictest_rows = {};
    const auto loaded =
        loadUtf8Text(resolvedPathOf(defaults_, settingsKeys::temp_logic_chip_test_results_file));
    if (const auto *failure = std::get_if<LoadFailure>(&loaded)) {
        log_.write(QStringLiteral("error reading temp file: ") + failure->reason);
        return;
    }
    const QString &text = std::get<QString>(loaded);
    log_.write(QStringLiteral("we have successfully obtained the chip test results! %1 bytes")
                   .arg(text.size()));
    const LogicReport report = parseLogicReport(text);
    for (const QString &line : report.log)
        log_.write(line);
    if (report.title)
        outlets.peeping_at->setText(*report.title);
    if (report.headers)
        state_.logictest_headers = *report.headers;
    state_.logictest_rows = report.rows;
    outlets.tableview->reloadData();
}

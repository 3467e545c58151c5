// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/RunJudgement.h"

#include "VerdictTable.h"
#include "base/BoundedText.h"
#include "base/ShownName.h"
#include "language/ToolReportReader.h"
#include "support/FileHelpers.h"

#include <QFile>
#include <QLocale>
#include <QTest>

#include <csignal>

class TestRunOutcome : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::English)); }
    void capturedRun_isJudged_data();
    void capturedRun_isJudged();
    void endWithoutASentence_isNeverSuccess_data();
    void endWithoutASentence_isNeverSuccess();
    void stopped_isJudgedByWhatItLeaves_data();
    void stopped_isJudgedByWhatItLeaves();
    void notStarted_saysWhy();
    void words_joinSentenceAndNextStep();
    void longWords_loseTheirMiddle();
    void device_isShownAsInTheList_data();
    void device_isShownAsInTheList();
    void added_isBounded();
    void added_standsBehindAnEndlessSentence();
    void percentSigns_stayAsTheyAre();
    void offer_isOnlyWhatTheProgramCanDo_data();
    void offer_isOnlyWhatTheProgramCanDo();
};

namespace {

/// The verdict and the sentence, as one picture.
QString judged(const RunFacts &facts) {
    RunOutcome outcome = judgeRun(facts);
    outcome.nextStep.clear();
    return shownOf(outcome);
}

RunFacts finished(Operation operation, int status, const QString &output) {
    ToolReportReader reader;
    reader.take(output);
    RunFacts facts;
    facts.operation = operation;
    facts.tool = QStringLiteral("/opt/minipro");
    facts.status = status;
    facts.report = reader.report();
    return facts;
}

} // namespace

void TestRunOutcome::capturedRun_isJudged_data() {
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *capture, Operation operation, const char *expected) {
        QTest::newRow(capture) << operation << QString::fromUtf8(expected);
    };
    row("read-AT28C256-ok", ReadOperation, "Succeeded | Read succeeded.");
    row("verify-AT28C256-ok", VerifyOperation,
        "Succeeded | Verify succeeded: the chip holds the data to burn.");
    row("write-AT28C256-ok", WriteOperation, "Succeeded | Write succeeded and was verified.");
    row("logic-7400-ok", LogicOperation, "Succeeded | Logic test succeeded.");
    row("logic-7400-one-error", LogicOperation, "Failed | Logic test failed: 1 error.");
    row("write-AT28C256-verify-failed", WriteOperation,
        "Failed | Write failed: at address 0x1234 the data have 0x7E and the chip has 0x81.");
    row("chipid-mismatch", ReadOperation,
        "Failed | Read failed: the chip's ID does not match (expected 0x1FDC, got 0xFFFF).");
    row("size-mismatch", WriteOperation,
        "Failed | Write failed: the data have 30,000 bytes, the chip needs 32,768.");
    row("no-programmer", ReadOperation,
        "Failed | No programmer was found. Is it plugged in, and may you use its USB device?");
    row("busy", VerifyOperation, "Failed | The programmer is in use by another program.");
    row("unknown-device", ReadOperation,
        "Failed | The programmer tool does not know the device \u201cNOSUCHCHIP\u201d.");
    row("erase-AT28C256", WriteOperation,
        "Failed | Write failed: the programmer tool did not say that it succeeded.");
    row("version", ReadOperation,
        "Failed | No programmer was found. Is it plugged in, and may you use its USB device?");
}

void TestRunOutcome::capturedRun_isJudged() {
    QFETCH(Operation, operation);
    const QString start =
        QStringLiteral(TOOL_CAPTURES "/") + QLatin1String(QTest::currentDataTag());
    for (const char *part : {".stderr", ".stdout", ".exit"})
        QVERIFY2(QFile::exists(start + QLatin1String(part)), part);
    const QByteArray output = readWholeFile(start + QStringLiteral(".stderr")) +
                              readWholeFile(start + QStringLiteral(".stdout"));
    const int status = readWholeFile(start + QStringLiteral(".exit")).trimmed().toInt();
    QTEST(judged(finished(operation, status, QString::fromUtf8(output))), "expected");
}

void TestRunOutcome::endWithoutASentence_isNeverSuccess_data() {
    QTest::addColumn<QString>("output");
    QTest::newRow("nothing") << QString();
    QTest::newRow("the banner") << QStringLiteral(
        "Found TL866II+ 04.2.132 (0x284)\nChip ID: 0x1FDC  OK\n");
    QTest::newRow("an unfinished count") << QStringLiteral("\rReading Code...  98%");
    QTest::newRow("another program's words") << QStringLiteral("All is OK\n");
    QTest::newRow("noise") << QString(100000, u'x');
}

void TestRunOutcome::endWithoutASentence_isNeverSuccess() {
    QFETCH(QString, output);
    for (const Operation operation :
         {ReadOperation, VerifyOperation, WriteOperation, LogicOperation})
        QCOMPARE(judgeRun(finished(operation, 0, output)).verdict, RunOutcome::Verdict::Failed);
}

void TestRunOutcome::stopped_isJudgedByWhatItLeaves_data() {
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<QString>("expected");
    QTest::newRow("read") << ReadOperation << QStringLiteral("Stopped | Read stopped.");
    QTest::newRow("verify") << VerifyOperation << QStringLiteral("Stopped | Verify stopped.");
    QTest::newRow("write") << WriteOperation
                           << QStringLiteral(
                                  "Stopped | Write stopped: the chip may be written in part.");
    QTest::newRow("logic") << LogicOperation << QStringLiteral("Stopped | Logic test stopped.");
}

void TestRunOutcome::stopped_isJudgedByWhatItLeaves() {
    QFETCH(Operation, operation);
    RunFacts facts = finished(operation, SIGTERM, QStringLiteral("\rReading Code...  3%"));
    facts.killedBySignal = true;
    QCOMPARE(judged(facts).section(QStringLiteral(" ("), 0, 0).section(QStringLiteral(": "), 1),
             QStringLiteral("the programmer tool was killed by signal 15"));
    facts.stopRequested = true;
    QTEST(judged(facts), "expected");
}

void TestRunOutcome::words_joinSentenceAndNextStep() {
    RunOutcome outcome{RunOutcome::Verdict::Failed, QStringLiteral("It failed."), {}};
    QCOMPARE(outcome.words(), QStringLiteral("It failed."));
    outcome.nextStep = QStringLiteral("Mend it.");
    QCOMPARE(outcome.words(), QStringLiteral("It failed. Mend it."));
}

void TestRunOutcome::longWords_loseTheirMiddle() {
    const QString face = QStringLiteral("\U0001F600");
    RunFacts facts = finished(ReadOperation, 1, QStringLiteral("x"));
    facts.report.lastLine = u'x' + face.repeated(2000) + QStringLiteral("x end");
    const QString sentence = judgeRun(facts).sentence;
    QVERIFY2(sentence.endsWith(face + QStringLiteral("x end.")), qPrintable(sentence));
    QVERIFY2(sentence.contains(u" characters are not shown) "), qPrintable(sentence));
    QVERIFY(sentence.size() < 400);
    QVERIFY(sentence.isValidUtf16());
}

void TestRunOutcome::device_isShownAsInTheList_data() {
    QTest::addColumn<RunFacts>("facts");
    const QString name = QStringLiteral("74\u202e00") + QString(100'000, u'x');
    const auto row = [&name](const char *title, int status, const auto &report) {
        RunFacts facts = finished(LogicOperation, status, QString());
        facts.device = name;
        report(facts.report);
        QTest::newRow(title) << facts;
    };
    row("unknown", 1,
        [&name](ToolReport &report) { report.error = toolErrors::UnknownDevice{name}; });
    row("unsupported", 1,
        [](ToolReport &report) { report.error = toolErrors::UnsupportedDevice{}; });
    row("no logic IC", 1,
        [&name](ToolReport &report) { report.error = toolErrors::NoTestVectors{name}; });
    row("passed without vectors", 0, [](ToolReport &report) { report.logicPassed = true; });
}

void TestRunOutcome::device_isShownAsInTheList() {
    QFETCH(const RunFacts, facts);
    const QString sentence = judgeRun(facts).sentence;
    QVERIFY2(sentence.contains(shownName(facts.device)), qPrintable(sentence));
    QVERIFY2(sentence.size() < 1200, qPrintable(sentence));
}

// Of a run everything is kept that is said of it.
void TestRunOutcome::added_isBounded() {
    RunOutcome outcome{RunOutcome::Verdict::Failed, QStringLiteral("It failed."), {}};
    for (int time = 0; time < 2; ++time) {
        outcome.add(QString(2 * longestSentence, u'x'));
        QVERIFY(outcome.sentence.size() <= longestSentence);
        QVERIFY(outcome.sentence.startsWith(u"It failed. xxx"));
        QVERIFY(outcome.sentence.endsWith(u"xxx"));
    }
}

void TestRunOutcome::added_standsBehindAnEndlessSentence() {
    const QString tool = QStringLiteral("\U0001F600").repeated(10'000);
    RunOutcome outcome{RunOutcome::Verdict::Failed, u'/' + tool + QStringLiteral(" failed."), {}};
    const QString remark = QStringLiteral("Its report is not whole.");
    const QString other(3000, u'x');
    outcome.add(remark);
    outcome.add(other);
    QVERIFY(outcome.sentence.size() <= longestSentence);
    QVERIFY2(outcome.sentence.endsWith(QStringLiteral(" failed. ") + remark + u' ' + other),
             qPrintable(outcome.sentence));
    QVERIFY(outcome.sentence.isValidUtf16());
}

// What a user or the tool says may look like a place to put words into.
void TestRunOutcome::percentSigns_stayAsTheyAre() {
    RunFacts facts = finished(WriteOperation, 1,
                              QStringLiteral("Could not open file /a %2 %3/%1 for reading.\n"
                                             "No %1 such %2 file\n"));
    QCOMPARE(judgeRun(facts).sentence,
             QStringLiteral(
                 "Write failed: the tool could not open \u201c/a %2 %3/%1\u201d (No %1 such %2 "
                 "file)."));
    facts =
        finished(VerifyOperation, 1,
                 QStringLiteral("Verification failed at address 0x0: File=0x01, Device=0x02\n"));
    facts.imageIsShown = false;
    facts.imagePath = QStringLiteral("/%1/%2/%4");
    QCOMPARE(judgeRun(facts).sentence,
             QStringLiteral(
                 "Verify failed: at address 0x0 the file \u201c/%1/%2/%4\u201d has 0x01 and the "
                 "chip has 0x02."));
}

void TestRunOutcome::notStarted_saysWhy() {
    RunFacts facts = finished(ReadOperation, -1, QString());
    facts.start = StartTrouble{Failure{QStringLiteral("/no/shell: No such file or directory")}};
    QCOMPARE(shownOf(judgeRun(facts)),
             QStringLiteral("NotStarted | The programmer tool was not started: /no/shell: No such "
                            "file or directory. | Check the environment variable SHELL, which "
                            "names the shell that starts it."));
    facts.start = StartTrouble{Failure{QStringLiteral("/tmp/a: It is a link")},
                               StartTrouble::Cause::ForeignLink};
    QCOMPARE(shownOf(judgeRun(facts)),
             QStringLiteral("NotStarted | The programmer tool was not started: /tmp/a: It is a "
                            "link. | Remove the link, and see that nobody else may write to its "
                            "folder."));
}

void TestRunOutcome::offer_isOnlyWhatTheProgramCanDo_data() {
    QTest::addColumn<RunFacts>("facts");
    QTest::addColumn<QString>("offer");
    const QString different =
        QStringLiteral("Verification failed at address 0x12: File=0x7E, Device=0x81\n");
    RunFacts facts = finished(VerifyOperation, 1, different);
    QTest::newRow("a byte that is shown") << facts << "difference 18";
    facts.imageIsShown = false;
    QTest::newRow("a byte of another file") << facts << "";
    facts = finished(VerifyOperation, 1, QStringLiteral("Found Intel hex file.\n") + different);
    QTest::newRow("a byte of decoded text") << facts << "";
    facts = finished(ReadOperation, 1, QStringLiteral("No programmer found.\n"));
    facts.programmers = {UsbProgrammer{QStringLiteral("T48"), QStringLiteral("a466"),
                                       QStringLiteral("0a53"), QStringLiteral("/dev/x"),
                                       UsbProgrammer::Access::Refused}};
    QTest::newRow("a rule") << facts
                            << "SUBSYSTEM==\"usb\", ATTR{idVendor}==\"a466\", "
                               "ATTR{idProduct}==\"0a53\", MODE=\"0660\", TAG+=\"uaccess\"";
    facts.programmers.reset();
    QTest::newRow("a Read") << facts << "read";
    facts.operation = WriteOperation;
    QTest::newRow("a Write") << facts << "";
}

void TestRunOutcome::offer_isOnlyWhatTheProgramCanDo() {
    QFETCH(RunFacts, facts);
    const std::optional<NextStep> offer = judgeRun(facts).offer;
    QString shown;
    if (offer && std::holds_alternative<nextSteps::ReadAgain>(*offer))
        shown = QStringLiteral("read");
    else if (const auto *step = offer ? std::get_if<nextSteps::CopyUdevRule>(&*offer) : nullptr)
        shown = step->rule;
    else if (const auto *byte = offer ? std::get_if<nextSteps::ShowDifference>(&*offer) : nullptr)
        shown = QStringLiteral("difference %1").arg(byte->address);
    else if (offer)
        shown = QStringLiteral("another");
    QTEST(shown, "offer");
}

QTEST_GUILESS_MAIN(TestRunOutcome)
#include "tst_run_outcome.moc"

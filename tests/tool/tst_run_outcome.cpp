#include "tool/RunOutcome.h"

#include "tool/ToolReportReader.h"

#include <QFile>
#include <QTest>

#include <csignal>

class TestRunOutcome : public QObject {
    Q_OBJECT

private slots:
    void capturedRun_isJudged_data();
    void capturedRun_isJudged();
    void sentencesOfTheTool_areUnderstood_data();
    void sentencesOfTheTool_areUnderstood();
    void endWithoutASentence_isNeverSuccess_data();
    void endWithoutASentence_isNeverSuccess();
    void stopped_isJudgedByWhatItLeaves_data();
    void stopped_isJudgedByWhatItLeaves();
    void notStarted_saysWhy();
};

namespace {

QByteArray contentsOf(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll()
                                          : QByteArray("missing: " + path.toUtf8());
}

/// The verdict and the sentence, as one picture.
QString judged(const RunFacts &facts) {
    static const char *const names[] = {"Succeeded", "Failed", "Stopped", "NotStarted"};
    const RunOutcome outcome = judgeRun(facts);
    return QLatin1String(names[static_cast<int>(outcome.verdict)]) + QLatin1String(" | ") +
           outcome.sentence;
}

RunFacts finished(Operation operation, int status, const QString &output) {
    ToolReportReader reader;
    reader.take(output);
    return {.operation = operation,
            .tool = QStringLiteral("/opt/minipro"),
            .started = true,
            .startFailure = QString(),
            .status = status,
            .report = reader.report()};
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
        "Failed | Write failed: the data have 30000 bytes, the chip needs 32768.");
    row("no-programmer", ReadOperation,
        "Failed | No programmer was found. Is it plugged in, and may you use its USB device?");
    row("busy", VerifyOperation, "Failed | The programmer is in use by another program.");
    row("unknown-device", ReadOperation,
        "Failed | The programmer tool does not know the device \"NOSUCHCHIP\".");
    row("erase-AT28C256", WriteOperation,
        "Failed | Write failed: the programmer tool did not say that it succeeded.");
    row("version", ReadOperation,
        "Failed | No programmer was found. Is it plugged in, and may you use its USB device?");
}

void TestRunOutcome::capturedRun_isJudged() {
    QFETCH(Operation, operation);
    const QString start =
        QStringLiteral(TOOL_CAPTURES "/") + QLatin1String(QTest::currentDataTag());
    const QByteArray output =
        contentsOf(start + QLatin1String(".stderr")) + contentsOf(start + QLatin1String(".stdout"));
    const int status = contentsOf(start + QLatin1String(".exit")).trimmed().toInt();
    QTEST(judged(finished(operation, status, QString::fromUtf8(output))), "expected");
}

void TestRunOutcome::sentencesOfTheTool_areUnderstood_data() {
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("output");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, Operation operation, int status, const char *output,
                        const char *expected) {
        QTest::newRow(name) << operation << status << QString::fromLatin1(output)
                            << QString::fromUtf8(expected);
    };
    const char *const readDone = "Succeeded | Read succeeded.";
    row("newer tool, milliseconds", ReadOperation, 0, "\n\r\x1b[KReading Code...  12.3 ms  OK\n",
        readDone);
    row("newer tool, seconds", ReadOperation, 0, "\r\x1b[KReading Code...  6.71 Sec  OK\n",
        readDone);
    row("newer tool, minutes", ReadOperation, 0, "\r\x1b[KReading Code...  2m 18 Sec  OK\n",
        readDone);
    row("no line feed at the end", ReadOperation, 0, "Reading Code...  0.47Sec  OK", readDone);
    row("an ignored ID mismatch is no failure", ReadOperation, 0,
        "WARNING: Chip ID mismatch: expected 0x1FDC, got 0xFFFF (unknown)\n"
        "Reading Code...  0.47Sec  OK\n",
        readDone);
    row("an ignored size is no failure", WriteOperation, 0,
        "Warning: Incorrect file size: 30000 (needed 32768)\n"
        "Writing Code...  0.97Sec  OK\nReading Code...  0.14Sec  OK\nVerification OK\n",
        "Succeeded | Write succeeded and was verified.");
    row("a write that was not verified", WriteOperation, 0, "Writing Code...  0.97Sec  OK\n",
        "Failed | Write failed: the programmer tool did not say that it succeeded.");
    row("a good sentence beside a bad one", VerifyOperation, 0,
        "Verification OK\nVerification failed at address 0x0002: File=0x01, Device=0xFF\n",
        "Failed | Verify failed: at address 0x0002 the data have 0x01 and the chip has 0xFF.");
    row("a good sentence and a bad status", VerifyOperation, 1, "Verification OK\n",
        "Failed | Verify failed: the programmer tool ended with status 1 and said: Verification "
        "OK.");
    row("unplugged in the middle of a count", ReadOperation, 1,
        "\r\x1b[KReading Code...  12%\nIO error: bulk_transfer: LIBUSB_ERROR_NO_DEVICE\n",
        "Failed | Read failed: the programmer was unplugged.");
    row("another USB error", WriteOperation, 1, "\nIO error: open: LIBUSB_ERROR_ACCESS\n",
        "Failed | Write failed: the connection to the programmer broke (open: "
        "LIBUSB_ERROR_ACCESS).");
    row("overcurrent behind a count, with a bell", ReadOperation, 1,
        "\r\x1b[KReading Code...  12%Overcurrent protection!\a",
        "Failed | Read failed: the chip draws too much current. Is it the right way round?");
    row("the first failure is the cause", WriteOperation, 1,
        "Overcurrent protection!\a\nVerification failed at address 0x0000: File=0x01, "
        "Device=0xFF\n",
        "Failed | Write failed: the chip draws too much current. Is it the right way round?");
    row("many logic errors", LogicOperation, 1,
        "0000: 0  H- \nLogic test failed: 17 errors encountered.\n",
        "Failed | Logic test failed: 17 errors.");
    row("a logic test of no logic IC", LogicOperation, 0, "      1  2  \nLogic test successful.\n",
        "Failed | Logic test failed: the device is no logic IC, nothing was tested.");
    row("the tool is not there", ReadOperation, 127,
        "bash: line 1: /opt/minipro: No such file or directory\n",
        "Failed | The shell did not find the programmer tool \"/opt/minipro\".");
    row("the tool cannot be executed", ReadOperation, 126,
        "bash: line 1: /opt/minipro: Permission denied\n",
        "Failed | The shell could not execute the programmer tool \"/opt/minipro\".");
    row("a signal told by the shell", ReadOperation, 128 + SIGKILL, "",
        "Failed | Read failed: the programmer tool was killed by signal 9 (Killed).");
    row("words that nobody knows", ReadOperation, 1, "\r\x1b[KReading Code...  3%\nOops!\n\n",
        "Failed | Read failed: the programmer tool ended with status 1 and said: Oops!");
    row("no words", ReadOperation, 3, "",
        "Failed | Read failed: the programmer tool ended with status 3.");
}

void TestRunOutcome::sentencesOfTheTool_areUnderstood() {
    QFETCH(Operation, operation);
    QFETCH(int, status);
    QFETCH(QString, output);
    QTEST(judged(finished(operation, status, output)), "expected");
}

void TestRunOutcome::endWithoutASentence_isNeverSuccess_data() {
    QTest::addColumn<QString>("output");
    QTest::newRow("nothing") << QString();
    QTest::newRow("the banner") << QStringLiteral(
        "Found TL866II+ 04.2.132 (0x284)\nChip ID: 0x1FDC  OK\n");
    QTest::newRow("an unfinished count") << QStringLiteral("\rReading Code...  98%");
    QTest::newRow("another program's words") << QStringLiteral("All is OK\n");
    QTest::newRow("noise") << QString(100000, QLatin1Char('x'));
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
    QCOMPARE(judged(facts).section(QLatin1String(" ("), 0, 0).section(QLatin1String(": "), 1),
             QStringLiteral("the programmer tool was killed by signal 15"));
    facts.stopRequested = true;
    QTEST(judged(facts), "expected");
}

void TestRunOutcome::notStarted_saysWhy() {
    RunFacts facts = finished(ReadOperation, -1, QString());
    facts.started = false;
    facts.startFailure = QStringLiteral("/no/shell: No such file or directory");
    QCOMPARE(judged(facts),
             QStringLiteral("NotStarted | The programmer tool was not started: /no/shell: No such "
                            "file or directory."));
}

QTEST_GUILESS_MAIN(TestRunOutcome)
#include "tst_run_outcome.moc"

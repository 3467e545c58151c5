// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "ToolBench.h"
#include "base/FileDescriptor.h"

#include "support/FailingCalls.h"
#include "support/FileHelpers.h"
#include "support/Privileges.h"
#include "support/RecordingLog.h"
#include "tool/ResultsFile.h"

#include <QDeadlineTimer>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>
#include <QTimer>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <tuple>
#include <unistd.h>

/// The logic test's report, which reaches its file through the pipes alone.
class TestToolRunLogic : public QObject {
    Q_OBJECT

private slots:
    void verdict_neverLandsInsideARow();
    void table_neverLandsInsideALineOfErrors();
    void tooManyErrors_doNotWaitForEver();
    void errorsThatWait_neverStallTheTool();
    void errorsThatWait_areTakenWhenTheTableBreaksOff();
    void errorsThatWait_areTakenAtTheToolsEnd();
    void errorsThatWait_areTakenWhenTheListeningEnds();
    void results_areTheRawBytesOfBothStreams();
    void results_ofTheRunBeforeAreRemoved();
    void results_withoutAFileBeforeNothingIsLogged();
    void results_thatCannotBeRemovedAreLogged();
    void results_thatCannotBeRemovedAreEmptied();
    void results_thatCannotBeEmptiedAreOlder();
    void results_areNeverOlderWhateverFails();
    void results_areWholeWhateverTheUmask();
    void results_areWholeBehindALinkThatLeadsNowhere();
    void results_thatAreThereKeepTheirRights_data();
    void results_thatAreThereKeepTheirRights();
    void results_thatAreAPipeStayOne();
    void results_thatAreAPipeKeepItsRights();
    void results_thatCannotBeCreatedAreLoggedForEachChunk();
    void results_goToNoFileWhoseNameIsCutShort();
    void results_neverWaitForAReader();
    void results_afterAGapTakeNothingMore();
    void otherOperations_leaveTheFileAlone();
    void report_followsNoLinkOfSomebodyElse();
};

namespace {

int runLogicTest(ToolBench &bench, const char *behaviour) {
    bench.useDouble(behaviour);
    const auto run = bench.newRun();
    run->setLogicOperation();
    return run->launch();
}

/// A logic test by a user who may not remove the report of before, whose mode is \a mode.
void testOverOlderReport(ToolBench &bench, ScriptedMiniPro &run, mode_t mode) {
    const QString path = bench.path("temp_logtest.bin");
    QVERIFY(writeWholeFile(path, "Logic test of an older chip\n"));
    QCOMPARE(::chmod(qUtf8Printable(path), mode), 0);
    QCOMPARE(::chmod(qUtf8Printable(bench.work.path()), 0555), 0);
    QCOMPARE(::chmod(qUtf8Printable(bench.folder.path()), 0755), 0);
    bench.useDouble("fail");
    run.setLogicOperation();
    const UnprivilegedUser user;
    QVERIFY(user.isValid());
    QCOMPARE(run.launch(), 1);
}

/// Shows the first piece so slowly that the tool has said everything by then.
class SlowConsole final : public Console {
public:
    explicit SlowConsole(QString awaitedFile) : awaitedFile_(std::move(awaitedFile)) {}

    void appendText(const QString &) override {
        const QDeadlineTimer patience(std::chrono::seconds(20));
        while (!QFile::exists(awaitedFile_) && !patience.hasExpired())
            QThread::yieldCurrentThread();
    }
    void beginRun() override {}
    void endRun() override {}

private:
    QString awaitedFile_;
};

uint modeOf(const QString &path) {
    struct stat facts = {};
    return ::stat(qUtf8Printable(path), &facts) == 0 ? facts.st_mode & 07777U : 0U;
}

} // namespace

void TestToolRunLogic::verdict_neverLandsInsideARow() {
    ToolBench bench;
    QCOMPARE(runLogicTest(bench, "logic-test"), 1);
    const QByteArray expected = "      1  2  \n0000: 0  H  \n0001: 1  L- \n"
                                "Logic test failed: 1 errors encountered.\n";
    QCOMPARE(readWholeFile(bench.path("temp_logtest.bin")), expected);
    QCOMPARE(bench.linesOfOutput().join(QString()), QString::fromLatin1(expected));
}

void TestToolRunLogic::table_neverLandsInsideALineOfErrors() {
    ToolBench bench;
    bench.useDouble("logic-split-error");
    SlowConsole console(bench.path("all-said"));
    const auto run = bench.newRun();
    run->setOutputView(&console);
    run->setLogicOperation();
    QCOMPARE(run->launch(), 0);
    const QByteArray results = readWholeFile(bench.path("temp_logtest.bin"));
    QVERIFY2(results.startsWith("Serial code: ABCD\n"), results);
    QVERIFY2(results.contains("\n      1  2  \n0000: 0  H  \n"), results);
    QVERIFY2(results.contains("\nLogic test successful.\n"), results);
}

void TestToolRunLogic::tooManyErrors_doNotWaitForEver() {
    ToolBench bench;
    QCOMPARE(runLogicTest(bench, "logic-flood"), 0);
    QCOMPARE(readWholeFile(bench.path("temp_logtest.bin")),
             "0000: 0  H" + QByteArray(48 * 1024, 'e') + "and more  H  \nverdict\n");
}

void TestToolRunLogic::errorsThatWait_neverStallTheTool() {
    ToolBench bench;
    QCOMPARE(runLogicTest(bench, "logic-small-pipe"), 0);
    QCOMPARE(readWholeFile(bench.path("temp_logtest.bin")),
             "0000: 0  H  \n" + QByteArray(6000, 'e') + '\n');
}

void TestToolRunLogic::errorsThatWait_areTakenWhenTheTableBreaksOff() {
    ToolBench bench;
    bench.useDouble("logic-broken-off");
    const auto run = bench.newRun();
    run->setLogicOperation();
    bool shown = false;
    const QDeadlineTimer patience(std::chrono::seconds(20));
    QTimer clock;
    connect(&clock, &QTimer::timeout, run.get(), [&] {
        shown = run->collectedOutput() == QStringLiteral("0000: 0  Hfirst\n");
        if (shown || patience.hasExpired())
            writeWholeFile(bench.path("go-on"), {});
    });
    clock.start(std::chrono::milliseconds(1));
    QCOMPARE(run->launch(), 0);
    QVERIFY(shown);
}

void TestToolRunLogic::errorsThatWait_areTakenAtTheToolsEnd() {
    ToolBench bench;
    bench.useDouble("logic-leaves-grandchild");
    const auto run = bench.newRun();
    run->setLogicOperation();
    QCOMPARE(run->launch(), 0);
    bench.serviceQueue();
    const QString atExit = QStringLiteral("0000: 0  Hverdict\nminipro has exited with status 0");
    QCOMPARE(bench.console.text(), atExit);
    // The row will never end now, so nothing waits for it.
    writeWholeFile(bench.path("go-on"), {});
    QTRY_COMPARE(bench.console.text(), atExit + QStringLiteral("late words"));
}

void TestToolRunLogic::errorsThatWait_areTakenWhenTheListeningEnds() {
    ToolBench bench;
    bench.useDouble("logic-within-row");
    const auto run = bench.newRun();
    run->setLogicOperation();
    ReadHandle ended;
    ended.setReadFunction([](int, void *, size_t) -> ssize_t { return 0; });
    QTimer clock;
    connect(&clock, &QTimer::timeout, run.get(), [&] {
        if (!QFile::exists(bench.path("all-said")))
            return;
        clock.stop();
        QString text;
        for (int read = 1; read <= 51; ++read)
            run->appendDataFrom_to(&ended, text);
        writeWholeFile(bench.path("go-on"), {});
    });
    clock.start(std::chrono::milliseconds(1));
    QCOMPARE(run->launch(), 0);
    QCOMPARE(run->collectedOutput(), QStringLiteral("0000: 0  Hverdict\n"));
}

void TestToolRunLogic::results_areTheRawBytesOfBothStreams() {
    ToolBench bench;
    runLogicTest(bench, "logic-both-streams");
    QCOMPARE(readWholeFile(bench.path("temp_logtest.bin")),
             QByteArray("0000: caf\xc3\xa9 \xff\nverdict\n"));
    QCOMPARE(bench.linesOfOutput(),
             QStringList({QStringLiteral("0000: caf"), QStringLiteral("\u00e9 \ufffd\n"),
                          QStringLiteral("verdict\n")}));
}

void TestToolRunLogic::results_ofTheRunBeforeAreRemoved() {
    ToolBench bench;
    const QString path = bench.path("temp_logtest.bin");
    writeWholeFile(path, "old results\n");
    runLogicTest(bench, "fail");
    QCOMPARE(bench.log.lines.first(), QStringLiteral("removed file at path: ") + path);
    QCOMPARE(readWholeFile(path), QByteArray("No programmer found.\n"));
}

void TestToolRunLogic::results_withoutAFileBeforeNothingIsLogged() {
    ToolBench bench;
    runLogicTest(bench, "say-nothing");
    QVERIFY(bench.log.lines.first().startsWith(u"fileContents: "));
    QVERIFY(!QFile::exists(bench.path("temp_logtest.bin")));
}

void TestToolRunLogic::results_thatCannotBeRemovedAreLogged() {
    ToolBench bench;
    const QString path = bench.path("temp_logtest.bin");
    QVERIFY(QDir().mkpath(path + QStringLiteral("/inside")));
    QCOMPARE(runLogicTest(bench, "fail"), 1);
    QCOMPARE(bench.log.lines.first(),
             QStringLiteral("unable to remove temp file at path: ") + path);
    // Something is there, so only the writing fails, quietly.
    QCOMPARE(bench.log.startingWith(QStringLiteral("temp file not created")), QStringList());
    QCOMPARE(bench.linesOfOutput(), QStringList(QStringLiteral("No programmer found.\n")));
}

void TestToolRunLogic::results_thatCannotBeRemovedAreEmptied() {
    ToolBench bench;
    const QString path = bench.path("temp_logtest.bin");
    const auto run = bench.newRun();
    testOverOlderReport(bench, *run, 0666);
    QVERIFY(bool(run->reportWritten()));
    QCOMPARE(bench.log.lines.first(),
             QStringLiteral("unable to remove temp file at path: ") + path);
    QCOMPARE(readWholeFile(path), QByteArray("No programmer found.\n"));
}

void TestToolRunLogic::results_thatCannotBeEmptiedAreOlder() {
    ToolBench bench;
    const QString path = bench.path("temp_logtest.bin");
    const auto run = bench.newRun();
    testOverOlderReport(bench, *run, 0444);
    QVERIFY(run->reportWritten().failure());
    QVERIFY(run->reportWritten().failure()->isOlder);
    QCOMPARE(run->reportWritten().failure()->failure.reason, QStringLiteral("Permission denied"));
    QCOMPARE(readWholeFile(path), QByteArray("Logic test of an older chip\n"));
}

void TestToolRunLogic::results_areNeverOlderWhateverFails() {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("report"));
    RecordingLog log;
    bool hasStruck = true;
    for (int call = 1; hasStruck; ++call) {
        QVERIFY(writeWholeFile(path, "Logic test of an older chip\n"));
        Result<void> prepared;
        {
            const FailingCalls failing(call, FailingCalls::Mishap::Fails, EIO);
            prepared = prepareResultsFile(path, log);
            hasStruck = failing.hasStruck();
        }
        const bool isOlder = !readWholeFile(path).isEmpty();
        QVERIFY2(bool(prepared) == !isOlder, qPrintable(QString::number(call)));
    }
}

void TestToolRunLogic::results_areWholeWhateverTheUmask() {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("report"));
    QCOMPARE(::chmod(qUtf8Printable(folder.path()), 0777), 0);
    RecordingLog log;
    const UnprivilegedUser user;
    QVERIFY(user.isValid());
    const mode_t before = ::umask(0777);
    const bool areAdded =
        appendToResultsFile(path, "first ", log) && appendToResultsFile(path, "second", log);
    ::umask(before);
    QVERIFY(areAdded);
    QCOMPARE(readWholeFile(path), QByteArray("first second"));
}

// The user may keep the reports elsewhere.
void TestToolRunLogic::results_areWholeBehindALinkThatLeadsNowhere() {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("report"));
    const QString target = folder.filePath(QStringLiteral("elsewhere"));
    QVERIFY(QFile::link(target, path));
    RecordingLog log;
    const mode_t before = ::umask(0777);
    const bool areAdded =
        appendToResultsFile(path, "first ", log) && appendToResultsFile(path, "second", log);
    ::umask(before);
    QVERIFY(areAdded);
    QCOMPARE(readWholeFile(target), QByteArray("first second"));
    QCOMPARE(modeOf(target), 0600U);
}

void TestToolRunLogic::results_thatAreThereKeepTheirRights_data() {
    QTest::addColumn<uint>("mode");
    for (const uint mode : {0644U, 0200U, 02610U, 02210U})
        QTest::addRow("%04o", mode) << mode;
}

void TestToolRunLogic::results_thatAreThereKeepTheirRights() {
    QFETCH(uint, mode);
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("report"));
    RecordingLog log;
    bool hasStruck = true;
    for (int call = 1; hasStruck; ++call) {
        QVERIFY(writeWholeFile(path, "first "));
        QCOMPARE(::chmod(qUtf8Printable(path), mode), 0);
        {
            const FailingCalls failing(call, FailingCalls::Mishap::Fails, EIO);
            std::ignore = appendToResultsFile(path, QByteArrayView(), log);
            hasStruck = failing.hasStruck();
        }
        QCOMPARE(modeOf(path), mode);
    }
}

// Nor is a device removed, which the setting may name as well.
void TestToolRunLogic::results_thatAreAPipeStayOne() {
    ToolBench bench;
    const QString path = bench.path("temp_logtest.bin");
    QCOMPARE(::mkfifo(qUtf8Printable(path), 0600), 0);
    QCOMPARE(runLogicTest(bench, "fail"), 1);
    QCOMPARE(bench.log.lines.first(),
             QStringLiteral("unable to remove temp file at path: ") + path);
    struct stat facts = {};
    QCOMPARE(::lstat(qUtf8Printable(path), &facts), 0);
    QVERIFY(S_ISFIFO(facts.st_mode));
}

void TestToolRunLogic::results_thatAreAPipeKeepItsRights() {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("report"));
    QCOMPARE(::mkfifo(qUtf8Printable(path), 0600), 0);
    const FileDescriptor reader(::open(qUtf8Printable(path), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    QVERIFY(reader.isOpen());
    QCOMPARE(::chmod(qUtf8Printable(path), 0200), 0);
    RecordingLog log;
    const Result<void> added = appendToResultsFile(path, "row\n", log);
    QVERIFY(!added);
    QCOMPARE(added.failure()->reason, QStringLiteral("Not a regular file"));
    QCOMPARE(modeOf(path), 0200U);
}

void TestToolRunLogic::results_thatCannotBeCreatedAreLoggedForEachChunk() {
    ToolBench bench;
    const QString path = bench.path("missing/temp_logtest.bin");
    bench.settings.setValue(settingsKeys::temp_logic_chip_test_results_file, path);
    runLogicTest(bench, "logic-both-streams");
    const QString line = QStringLiteral("temp file not created at ") + path;
    QCOMPARE(bench.log.count(line), 3);
    QCOMPARE(bench.linesOfOutput().size(), 3);
}

// The system takes a null character for the end of a name, and a settings file may hold one.
void TestToolRunLogic::results_goToNoFileWhoseNameIsCutShort() {
    ToolBench bench;
    const QString rom = bench.path("rom.bin");
    writeWholeFile(rom, "bytes");
    bench.settings.setValue(settingsKeys::temp_logic_chip_test_results_file,
                            rom + QChar(QChar::Null) + u'x');
    runLogicTest(bench, "fail");
    QCOMPARE(readWholeFile(rom), QByteArray("bytes"));
    QCOMPARE(bench.log.startingWith(QStringLiteral("temp file not created")).size(), 1);
}

void TestToolRunLogic::results_neverWaitForAReader() {
    ToolBench bench;
    const QString path = bench.path("temp_logtest.bin");
    bench.useDouble("fail");
    const auto run = bench.newRun();
    run->setLogicOperation();
    QCOMPARE(::mkfifo(qUtf8Printable(path), 0600), 0);
    ReadHandle handle;
    handle.setReadFunction([](int, void *bytes, size_t) -> ssize_t {
        memcpy(bytes, "row\n", 4);
        return 4;
    });
    QString text;
    run->appendDataFrom_to(&handle, text);
    QCOMPARE(text, QStringLiteral("row\n"));
    QCOMPARE(bench.log.lines, QStringList(QStringLiteral("| row\n")));
}

void TestToolRunLogic::results_afterAGapTakeNothingMore() {
    ToolBench bench;
    const auto run = bench.newRun();
    run->setLogicOperation();
    ReadHandle handle;
    handle.setReadFunction([](int, void *bytes, size_t) -> ssize_t {
        memcpy(bytes, "row\n", 4);
        return 4;
    });
    QString text;
    run->appendDataFrom_to(&handle, text);
    QVERIFY(bool(run->reportWritten()));
    {
        const FileSizeLimit fullDisk(6);
        run->appendDataFrom_to(&handle, text);
    }
    QVERIFY(!run->reportWritten());
    const QString reason = run->reportWritten().failure()->failure.reason;
    QCOMPARE(reason, QStringLiteral("File too large"));
    run->appendDataFrom_to(&handle, text);
    QCOMPARE(readWholeFile(bench.path("temp_logtest.bin")), QByteArray("row\nro"));
    QCOMPARE(run->reportWritten().failure()->failure.reason, reason);
    QCOMPARE(text, QStringLiteral("row\nrow\nrow\n"));
}

void TestToolRunLogic::otherOperations_leaveTheFileAlone() {
    ToolBench bench;
    bench.useDouble("fail");
    for (const auto setter :
         {&ScriptedMiniPro::setReadOperation, &ScriptedMiniPro::setVerifyOperation,
          &ScriptedMiniPro::setWriteOperation}) {
        const auto run = bench.newRun();
        (run.get()->*setter)();
        run->launch();
        QVERIFY(!QFile::exists(bench.path("temp_logtest.bin")));
    }
    writeWholeFile(bench.path("temp_logtest.bin"), "kept");
    bench.newRun()->launch();
    QCOMPARE(readWholeFile(bench.path("temp_logtest.bin")), QByteArray("kept"));
}

void TestToolRunLogic::report_followsNoLinkOfSomebodyElse() {
    if (::geteuid() != 0)
        QSKIP("only root can give a link away");
    const QTemporaryDir folder;
    RecordingLog log;
    const QString victim = folder.filePath(QStringLiteral("victim"));
    const QString link = folder.filePath(QStringLiteral("report"));
    QVERIFY(writeWholeFile(victim, "precious"));
    QVERIFY(QFile::link(victim, link));
    QVERIFY(bool(appendToResultsFile(link, "0000", log)));
    QCOMPARE(readWholeFile(victim), "precious0000");
    QCOMPARE(::lchown(QFile::encodeName(link).constData(), 12345, gid_t(-1)), 0);
    QVERIFY(!appendToResultsFile(link, "more", log));
    QCOMPARE(readWholeFile(victim), "precious0000");
    // Something is there, so nothing is said of it.
    QCOMPARE(log.lines, QStringList());
}

QTEST_GUILESS_MAIN(TestToolRunLogic)
#include "tst_tool_run_logic.moc"

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "ToolBench.h"
#include "language/RunJudgement.h"

#include "support/FileHelpers.h"

#include <QSignalSpy>
#include <QTest>

#include <csignal>
#include <cstring>

/// What one run does from its start to its exit message.
class TestToolRun : public QObject {
    Q_OBJECT

private slots:
    void launch_logsEachStep();
    void launch_asksForTheOperationSetLast_data();
    void launch_asksForTheOperationSetLast();
    void launch_givesTheToolItsWords();
    void launch_givesTheStatus_data();
    void launch_givesTheStatus();
    void launch_endsWithTheExitMessage();
    void launch_runsAProfileFirst();
    void launch_startsInTheFolderOfTheTemporaryFiles();
    void launch_meansTheProgramsOwnFilesByRelativePaths();
    void launch_leavesAnOpenEmptyInput();
    void list_leavesTheAnswerInTheFile();
    void list_beginsWithAnEmptyText();
    void list_replacesTheAnswerBefore();
    void list_meansTheProgramsOwnFileByARelativePath();
    void list_logsEachStep();
    void list_keepsATermOneWord();
    void list_withoutTheFoldersFileSaysSo();
    void said_comesWithEveryPiece();
    void facts_tellTheRun();
};

namespace {

const QString exited0 = QStringLiteral("minipro has exited with status 0");

} // namespace

void TestToolRun::launch_logsEachStep() {
    ToolBench bench;
    bench.useDouble("fail");
    const QString command = ToolBench::doubleAs("fail") + QStringLiteral(" -p \"AT28C256\" -r \"") +
                            bench.path("temp_read.bin") + QStringLiteral("\" -s");
    QCOMPARE(bench.newRun()->launch(), 1);
    QStringList log = bench.log.take();
    // The child's end and its last output reach the program in any order.
    QCOMPARE(log.removeAll(QStringLiteral("Task terminated")), 1);
    QCOMPARE(log,
             QStringList({QStringLiteral("fileContents: ") + command,
                          QStringLiteral("user's shell is /bin/bash"),
                          QStringLiteral("launching /bin/bash with arguments: -l -c ") + command,
                          QStringLiteral("| No programmer found.\n"),
                          QStringLiteral("\nminipro has exited with status 1")}));
}

void TestToolRun::launch_asksForTheOperationSetLast_data() {
    QTest::addColumn<QByteArray>("setters");
    QTest::addColumn<QString>("words");
    QTest::newRow("none is Read") << QByteArray() << "-p \"AT28C256\" -r \"%1\" -s";
    QTest::newRow("Read") << QByteArray("r") << "-p \"AT28C256\" -r \"%1\" -s";
    QTest::newRow("Verify") << QByteArray("v") << "-p \"AT28C256\" -m \"%2\" -s";
    QTest::newRow("Write") << QByteArray("w") << "-p \"AT28C256\" -w \"%2\" -s";
    QTest::newRow("Logic") << QByteArray("l") << "-T -p \"AT28C256\"";
    QTest::newRow("Write, then Read") << QByteArray("wr") << "-p \"AT28C256\" -r \"%1\" -s";
    QTest::newRow("Logic twice") << QByteArray("ll") << "-T -p \"AT28C256\"";
}

void TestToolRun::launch_asksForTheOperationSetLast() {
    QFETCH(QByteArray, setters);
    QFETCH(QString, words);
    ToolBench bench;
    bench.useDouble("say-nothing");
    const auto run = bench.newRun();
    for (const char setter : setters) {
        if (setter == 'r')
            run->setReadOperation();
        else if (setter == 'v')
            run->setVerifyOperation();
        else if (setter == 'w')
            run->setWriteOperation();
        else
            run->setLogicOperation();
    }
    run->launch();
    words.replace(QStringLiteral("%1"), bench.path("temp_read.bin"));
    words.replace(QStringLiteral("%2"), bench.path("temp.bin"));
    QCOMPARE(bench.log.startingWith(QStringLiteral("fileContents: ")),
             QStringList(QStringLiteral("fileContents: ") + ToolBench::doubleAs("say-nothing") +
                         u' ' + words));
}

void TestToolRun::launch_givesTheToolItsWords() {
    ToolBench bench;
    // A tool's path with a blank is split by the shell; that is how the double gets its name.
    bench.useDouble("list");
    bench.settings.setValue(settingsKeys::device, QStringLiteral("AT 28"));
    const auto run = bench.newRun();
    run->launch();
    bench.serviceQueue();
    QStringList words = bench.console.text().split(u'\n');
    words.removeLast();
    words.removeOne(QStringLiteral("listed"));
    QCOMPARE(words,
             QStringList({QStringLiteral("-p"), QStringLiteral("AT 28"), QStringLiteral("-r"),
                          bench.path("temp_read.bin"), QStringLiteral("-s")}));
}

void TestToolRun::launch_givesTheStatus_data() {
    QTest::addColumn<QByteArray>("behaviour");
    QTest::addColumn<int>("status");
    QTest::addColumn<bool>("bySignal");
    QTest::newRow("success") << QByteArray("succeed") << 0 << false;
    QTest::newRow("failure") << QByteArray("fail") << 1 << false;
    QTest::newRow("another code") << QByteArray("status-42") << 42 << false;
    QTest::newRow("a crash is the signal's number") << QByteArray("crash") << SIGABRT << true;
}

void TestToolRun::launch_givesTheStatus() {
    QFETCH(QByteArray, behaviour);
    QFETCH(int, status);
    ToolBench bench;
    bench.useDouble(behaviour.constData());
    const auto run = bench.newRun();
    QCOMPARE(run->launch(), status);
    QTEST(run->facts().killedBySignal, "bySignal");
    QVERIFY(bool(run->facts().start));
    QCOMPARE(bench.log.lines.last(),
             QStringLiteral("\nminipro has exited with status %1").arg(status));
}

void TestToolRun::launch_endsWithTheExitMessage() {
    ToolBench bench;
    bench.useDouble("fail");
    bench.newRun()->launch(); // whatever the toolkit opens once is open then
    bench.serviceQueue();
    bench.console.events.clear();
    const qsizetype descriptors = ToolBench::openDescriptors();
    const auto run = bench.newRun();
    run->launch();
    bench.serviceQueue();
    QCOMPARE(
        bench.console.events,
        QStringList({QStringLiteral("<begin>"), QStringLiteral("No programmer found.\n"),
                     QStringLiteral("<end>"), QStringLiteral("minipro has exited with status 1")}));
    // The line has been handed to the queue before launch() returned, and nothing follows it.
    QTRY_COMPARE(ToolBench::openDescriptors(), descriptors);
    QCOMPARE(bench.console.events.size(), 4);
}

void TestToolRun::launch_runsAProfileFirst() {
    const QTemporaryDir home;
    writeWholeFile(home.filePath(QStringLiteral(".bash_profile")), "echo from the profile\n");
    const QByteArray before = qgetenv("HOME");
    qputenv("HOME", home.path().toUtf8());
    ToolBench bench;
    bench.useDouble("say-nothing");
    const auto run = bench.newRun();
    run->launch();
    qputenv("HOME", before);
    bench.serviceQueue();
    QCOMPARE(bench.console.text(), QStringLiteral("from the profile\n") + exited0);
}

void TestToolRun::launch_startsInTheFolderOfTheTemporaryFiles() {
    ToolBench bench;
    bench.useDouble("describe-folder");
    const auto run = bench.newRun();
    run->launch();
    bench.serviceQueue();
    QCOMPARE(bench.console.text(), bench.work.path() + exited0);
}

namespace {

/// The program works in \a folder for as long as this lives.
class CurrentFolder {
public:
    explicit CurrentFolder(const QString &folder) { QDir::setCurrent(folder); }
    ~CurrentFolder() { QDir::setCurrent(before_); }

private:
    QString before_ = QDir::currentPath();
};

} // namespace

void TestToolRun::launch_meansTheProgramsOwnFilesByRelativePaths() {
    ToolBench bench;
    bench.useDouble("read-chip");
    bench.settings.setValue(settingsKeys::temp_output_file, QStringLiteral("work/temp.bin"));
    bench.settings.setValue(settingsKeys::temp_read_from_chip_file,
                            QStringLiteral("work/temp_read.bin"));
    const CurrentFolder here(bench.folder.path());
    const auto run = bench.newRun();
    QCOMPARE(run->launch(), 0);
    QVERIFY(QFile::exists(QStringLiteral("work/temp_read.bin")));
}

void TestToolRun::launch_leavesAnOpenEmptyInput() {
    ToolBench bench;
    bench.useDouble("describe-input");
    bench.newRun()->launch();
    QCOMPARE(bench.linesOfOutput(), QStringList(QStringLiteral("open and empty")));
}

void TestToolRun::list_leavesTheAnswerInTheFile() {
    ToolBench bench;
    bench.useDouble("list");
    const auto run = bench.newRun();
    QCOMPARE(run->list(QStringLiteral("27C")), 0);
    QCOMPARE(readWholeFile(bench.path("temp_sr.bin")), QByteArray("-L\n27C\n"));
    QCOMPARE(run->collectedOutput(), QStringLiteral("listed\n"));
    bench.serviceQueue();
    QCOMPARE(bench.console.text(), QStringLiteral("listed\nminipro list has exited with status 0"));
}

void TestToolRun::list_beginsWithAnEmptyText() {
    ToolBench bench;
    bench.useDouble("list");
    const auto run = bench.newRun();
    ReadHandle handle;
    handle.setReadFunction([](int, void *bytes, size_t) -> ssize_t {
        memcpy(bytes, "earlier", 7);
        return 7;
    });
    run->outData(&handle);
    QCOMPARE(run->collectedOutput(), QStringLiteral("earlier"));
    run->list(QStringLiteral("27C"));
    QCOMPARE(run->collectedOutput(), QStringLiteral("listed\n"));
}

void TestToolRun::list_replacesTheAnswerBefore() {
    ToolBench bench;
    bench.useDouble("list");
    bench.newRun()->list(QStringLiteral("a-long-first-term"));
    bench.newRun()->list(QStringLiteral("X"));
    QCOMPARE(readWholeFile(bench.path("temp_sr.bin")), QByteArray("-L\nX\n"));
}

void TestToolRun::list_meansTheProgramsOwnFileByARelativePath() {
    ToolBench bench;
    bench.useDouble("list");
    bench.settings.setValue(settingsKeys::temp_output_file, QStringLiteral("work/temp.bin"));
    bench.settings.setValue(settingsKeys::temp_search_results_file,
                            QStringLiteral("work/temp_sr.bin"));
    const CurrentFolder here(bench.folder.path());
    QCOMPARE(bench.newRun()->list(QStringLiteral("27C")), 0);
    QCOMPARE(readWholeFile(QStringLiteral("work/temp_sr.bin")), QByteArray("-L\n27C\n"));
}

void TestToolRun::list_logsEachStep() {
    ToolBench bench;
    bench.useDouble("status-42");
    QCOMPARE(bench.newRun()->list(QStringLiteral("27C")), 42);
    QCOMPARE(
        bench.log.lines,
        QStringList({QStringLiteral("fileContents: ") + ToolBench::doubleAs("status-42") +
                         QStringLiteral(" -L 27C > \"") + bench.path("temp_sr.bin") + u'"',
                     QStringLiteral("user's shell is /bin/bash"), QStringLiteral("Task terminated"),
                     QStringLiteral("\nminipro list has exited with status 42")}));
}

void TestToolRun::list_keepsATermOneWord() {
    ToolBench bench;
    bench.useDouble("list");
    bench.newRun()->list(QStringLiteral("a b'; echo $HOME | cat *"));
    QCOMPARE(readWholeFile(bench.path("temp_sr.bin")),
             QByteArray("-L\na b'; echo $HOME | cat *\n"));
}

void TestToolRun::list_withoutTheFoldersFileSaysSo() {
    ToolBench bench;
    bench.useDouble("list");
    const QString path = bench.path("missing/temp_sr.bin");
    bench.settings.setValue(settingsKeys::temp_search_results_file, path);
    QCOMPARE(bench.newRun()->list(QStringLiteral("27C")), 1);
    QVERIFY(!QFile::exists(path));
    QVERIFY(bench.linesOfOutput().join(QString()).contains(path));
}

void TestToolRun::said_comesWithEveryPiece() {
    ToolBench bench;
    bench.useDouble("fail");
    const auto run = bench.newRun();
    QSignalSpy said(run.get(), &ScriptedMiniPro::said);
    bool understood = false;
    connect(run.get(), &ScriptedMiniPro::said, this,
            [&] { understood = run->facts().report.error.has_value(); });
    QCOMPARE(run->launch(), 1);
    QCOMPARE(said.count(), bench.linesOfOutput().size());
    QVERIFY(understood);
}

void TestToolRun::facts_tellTheRun() {
    ToolBench bench;
    bench.useDouble("succeed");
    const auto run = bench.newRun();
    run->launch();
    QCOMPARE(judgeRun(run->facts()).sentence, QStringLiteral("Read succeeded."));
    // The facts are those of the run, whatever the settings have become.
    const QString started = ToolBench::doubleAs("succeed");
    bench.useDouble("crash");
    bench.settings.setValue(settingsKeys::device, QStringLiteral("27C512"));
    QCOMPARE(run->facts().tool, started);
    QCOMPARE(run->facts().device, QStringLiteral("AT28C256"));
    QCOMPARE(run->facts().imagePath, QString());

    bench.useDouble("crash");
    const auto crashed = bench.newRun();
    crashed->setVerifyOperation();
    crashed->launch();
    QCOMPARE(crashed->facts().imagePath, bench.path("temp.bin"));
    QCOMPARE(
        judgeRun(crashed->facts()).sentence,
        QStringLiteral("Verify failed: the programmer tool was killed by signal 6 (Aborted)."));
}

QTEST_GUILESS_MAIN(TestToolRun)
#include "tst_tool_run.moc"

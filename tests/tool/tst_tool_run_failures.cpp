// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "ToolBench.h"
#include "language/RunJudgement.h"

#include <QTest>

/// Runs whose shell or tool is not there or cannot be started.
class TestToolRunFailures : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { qputenv("SHELL", shell); }

    void shell_thatCannotBeStartedGivesAFailedStart_data();
    void shell_thatCannotBeStartedGivesAFailedStart();
    void shell_thatCannotBeStartedEndsASearchToo();
    void tool_thatCannotBeStartedIsTheShellsFailure_data();
    void tool_thatCannotBeStartedIsTheShellsFailure();

private:
    const QByteArray shell = qgetenv("SHELL");
};

void TestToolRunFailures::shell_thatCannotBeStartedGivesAFailedStart_data() {
    QTest::addColumn<std::optional<QByteArray>>("path");
    QTest::addColumn<QString>("printed");
    QTest::addColumn<QString>("reason");
    QTest::newRow("absent") << std::optional<QByteArray>() << "(null)"
                            << "there is no launch path";
    QTest::newRow("not existing") << std::optional(QByteArray("/nowhere/sh")) << "/nowhere/sh"
                                  << "/nowhere/sh: No such file or directory";
    QTest::newRow("not executable") << std::optional(QByteArray("/etc/passwd")) << "/etc/passwd"
                                    << "/etc/passwd: Permission denied";
}

void TestToolRunFailures::shell_thatCannotBeStartedGivesAFailedStart() {
    QFETCH(std::optional<QByteArray>, path);
    QFETCH(QString, printed);
    QFETCH(QString, reason);
    if (path)
        qputenv("SHELL", *path);
    else
        qunsetenv("SHELL");
    ToolBench bench;
    bench.settings.setValue(settingsKeys::miniproLocation, QStringLiteral("minipro"));
    const QString command =
        QStringLiteral("minipro -p \"AT28C256\" -r \"%1\" -s").arg(bench.path("temp_read.bin"));
    const auto run = bench.newRun();
    QCOMPARE(run->launch(), -1);
    const QString message = QStringLiteral("minipro has exited with status -1");
    QCOMPARE(bench.log.lines,
             QStringList({QStringLiteral("fileContents: ") + command,
                          QStringLiteral("user's shell is ") + printed,
                          QStringLiteral("launching ") + printed +
                              QStringLiteral(" with arguments: -l -c ") + command,
                          QStringLiteral("unable to launch task: ") + reason, u'\n' + message}));
    bench.serviceQueue();
    QCOMPARE(bench.console.events,
             QStringList({QStringLiteral("<begin>"), QStringLiteral("<end>"), message}));
    QVERIFY(!run->facts().start);
    QCOMPARE(run->facts().start.failure()->failure.reason, reason);
    QCOMPARE(judgeRun(run->facts()).sentence,
             QStringLiteral("The programmer tool was not started: %1.").arg(reason));
}

void TestToolRunFailures::shell_thatCannotBeStartedEndsASearchToo() {
    qunsetenv("SHELL");
    ToolBench bench;
    QCOMPARE(bench.newRun()->list(QStringLiteral("27C")), -1);
    QCOMPARE(bench.log.lines.mid(1),
             QStringList({QStringLiteral("user's shell is (null)"),
                          QStringLiteral("unable to launch task: there is no launch path"),
                          QStringLiteral("\nminipro list has exited with status -1")}));
}

void TestToolRunFailures::tool_thatCannotBeStartedIsTheShellsFailure_data() {
    QTest::addColumn<QString>("tool");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("sentence");
    QTest::newRow("missing")
        << "/nowhere/minipro" << 127
        << "The shell did not find the programmer tool \u201c/nowhere/minipro\u201d.";
    QTest::newRow("not executable")
        << "/etc/passwd" << 126
        << "The shell could not execute the programmer tool \u201c/etc/passwd\u201d.";
    QTest::newRow("no tool at all")
        << "" << 127 << "The shell did not find the programmer tool \u201c\u201d.";
}

void TestToolRunFailures::tool_thatCannotBeStartedIsTheShellsFailure() {
    QFETCH(QString, tool);
    ToolBench bench;
    bench.settings.setValue(settingsKeys::miniproLocation, tool);
    const auto run = bench.newRun();
    QTEST(run->launch(), "status");
    QVERIFY(bool(run->facts().start));
    // The shell's complaint is shown like any other output.
    QVERIFY(run->collectedOutput().contains(tool));
    QVERIFY(!bench.linesOfOutput().isEmpty());
    QTEST(judgeRun(run->facts()).sentence, "sentence");
}

QTEST_GUILESS_MAIN(TestToolRunFailures)
#include "tst_tool_run_failures.moc"

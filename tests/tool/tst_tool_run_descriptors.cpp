// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "ToolBench.h"
#include "support/FileHelpers.h"

#include <QTest>

#include <vector>

/// Runs are kept for the life of the program; their descriptors, and what they ran with, are not.
class TestToolRunDescriptors : public QObject {
    Q_OBJECT

private slots:
    void emptyRuns_holdNone();
    void finishedRuns_leaveNone();
    void failedStarts_leaveNone();
    void finishedRuns_giveBackWhatTheyRanWith_data();
    void finishedRuns_giveBackWhatTheyRanWith();
    void listenedRuns_keepWhatTheyRanWith();
};

void TestToolRunDescriptors::emptyRuns_holdNone() {
    ToolBench bench;
    std::vector<std::unique_ptr<ScriptedMiniPro>> runs;
    runs.push_back(bench.newRun());
    const qsizetype before = ToolBench::openDescriptors();
    for (int i = 0; i < 1000; ++i)
        runs.push_back(bench.newRun());
    QCoreApplication::processEvents();
    QCOMPARE(ToolBench::openDescriptors(), before);
}

void TestToolRunDescriptors::finishedRuns_leaveNone() {
    ToolBench bench;
    bench.useDouble("succeed");
    // Whatever the toolkit opens once is open then.
    bench.newRun()->launch();
    std::vector<std::unique_ptr<ScriptedMiniPro>> runs;
    const qsizetype before = ToolBench::openDescriptors();
    for (int i = 0; i < 300; ++i) {
        runs.push_back(bench.newRun());
        QCOMPARE(runs.back()->launch(), 0);
    }
    QTRY_COMPARE(ToolBench::openDescriptors(), before);
}

void TestToolRunDescriptors::failedStarts_leaveNone() {
    const QByteArray shell = qgetenv("SHELL");
    qputenv("SHELL", "/nowhere/sh");
    ToolBench bench;
    std::vector<std::unique_ptr<ScriptedMiniPro>> runs;
    const qsizetype before = ToolBench::openDescriptors();
    for (int i = 0; i < 100; ++i) {
        runs.push_back(bench.newRun());
        QCOMPARE(runs.back()->launch(), -1);
    }
    qputenv("SHELL", shell);
    QCOMPARE(ToolBench::openDescriptors(), before);
}

void TestToolRunDescriptors::finishedRuns_giveBackWhatTheyRanWith_data() {
    QTest::addColumn<QByteArray>("shell");
    QTest::addColumn<int>("status");
    QTest::newRow("started") << qgetenv("SHELL") << 42;
    QTest::newRow("not started") << QByteArray("/nowhere/sh") << -1;
}

void TestToolRunDescriptors::finishedRuns_giveBackWhatTheyRanWith() {
    QFETCH(QByteArray, shell);
    QFETCH(int, status);
    const QByteArray before = qgetenv("SHELL");
    qputenv("SHELL", shell);
    ToolBench bench;
    bench.useDouble("status-42");
    const auto run = bench.newRun();
    QVERIFY(!run->children().isEmpty());
    QCOMPARE(run->launch(), status);
    qputenv("SHELL", before);
    QTRY_VERIFY(run->children().isEmpty());
    QCOMPARE(run->facts().status, status);
    run->stop(); // does nothing
    QVERIFY(!run->facts().stopRequested);
}

void TestToolRunDescriptors::listenedRuns_keepWhatTheyRanWith() {
    ToolBench bench;
    bench.useDouble("leave-grandchild");
    const auto run = bench.newRun();
    QCOMPARE(run->launch(), 0);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!run->children().isEmpty());
    writeWholeFile(bench.path("go-on"), {});
    QTRY_VERIFY(run->children().isEmpty());
    QVERIFY(run->collectedOutput().endsWith(QStringLiteral("late words")));
}

QTEST_GUILESS_MAIN(TestToolRunDescriptors)
#include "tst_tool_run_descriptors.moc"

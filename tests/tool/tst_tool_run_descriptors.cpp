// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "ToolBench.h"

#include <QTest>

#include <vector>

/// Runs are kept for the life of the program; their descriptors are not.
class TestToolRunDescriptors : public QObject {
    Q_OBJECT

private slots:
    void emptyRuns_holdNone();
    void finishedRuns_leaveNone();
    void failedStarts_leaveNone();
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

QTEST_GUILESS_MAIN(TestToolRunDescriptors)
#include "tst_tool_run_descriptors.moc"

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/RunLog.h"

#include <QSignalSpy>
#include <QTest>

class TestRunLog : public QObject {
    Q_OBJECT

private slots:
    void add_isToldAndKeepsEveryRecord();
    void add_forgetsWhatTheOldestSaid();
    void add_keepsEqualWordsOnce();
    void nothingWrittenSinceRead_data();
    void nothingWrittenSinceRead();
};

namespace {

/// Words of its own: no two records share them.
RunRecord recordOf(int number) {
    RunRecord record;
    record.device = QStringLiteral("at28c256").toUpper();
    record.commandLine = QStringLiteral("minipro -p AT28C256 -r /tmp/read.bin").toUpper();
    record.outcome.sentence = QStringLiteral("Read succeeded: %1 bytes.").arg(number / 2);
    record.said = QString::number(number);
    return record;
}

} // namespace

void TestRunLog::add_isToldAndKeepsEveryRecord() {
    RunLog log;
    const QSignalSpy added(&log, &RunLog::added);
    for (int number = 0; number < 100; ++number)
        log.add(recordOf(number));
    QCOMPARE(added.count(), 100);
    QCOMPARE(log.records().size(), 100);
    QCOMPARE(log.records()[99].outcome.sentence, QStringLiteral("Read succeeded: 49 bytes."));
}

void TestRunLog::add_forgetsWhatTheOldestSaid() {
    RunLog log;
    for (int number = 0; number < 21; ++number)
        log.add(recordOf(number));
    QCOMPARE(log.records()[0].said, QString());
    QCOMPARE(log.records()[1].said, QStringLiteral("1"));
    QCOMPARE(log.records()[20].said, QStringLiteral("20"));
}

void TestRunLog::add_keepsEqualWordsOnce() {
    RunLog log;
    for (int number = 0; number < 3; ++number)
        log.add(recordOf(number));
    const QList<RunRecord> &runs = log.records();
    QVERIFY(runs[2].device.constData() == runs[0].device.constData());
    QVERIFY(runs[2].commandLine.constData() == runs[0].commandLine.constData());
    QVERIFY(runs[1].outcome.sentence.constData() == runs[0].outcome.sentence.constData());
    QCOMPARE(runs[2].outcome.sentence, QStringLiteral("Read succeeded: 1 bytes."));
}

void TestRunLog::nothingWrittenSinceRead_data() {
    using Verdict = RunOutcome::Verdict;
    QTest::addColumn<QList<RunRecord>>("runs");
    QTest::addColumn<bool>("expected");
    const auto run = [](Operation operation, Verdict verdict) {
        RunRecord record;
        record.operation = operation;
        record.outcome.verdict = verdict;
        return record;
    };
    const RunRecord read = run(ReadOperation, Verdict::Succeeded);
    const auto row = [](const char *name, const QList<RunRecord> &runs, bool expected) {
        QTest::newRow(name) << runs << expected;
    };
    row("no run", {}, false);
    row("a Read", {read}, true);
    row("a Read that says in what it differs", {run(ReadOperation, Verdict::Qualified)}, true);
    row("a Read that failed", {read, run(ReadOperation, Verdict::Failed)}, false);
    row("a Read that was stopped", {read, run(ReadOperation, Verdict::Stopped)}, false);
    row("a Read that was not started", {read, run(ReadOperation, Verdict::NotStarted)}, true);
    row("a Verify", {read, run(VerifyOperation, Verdict::Failed)}, true);
    row("a Write", {read, run(WriteOperation, Verdict::Succeeded)}, false);
    row("a Write that failed", {read, run(WriteOperation, Verdict::Failed)}, false);
    row("a Write that was not started", {read, run(WriteOperation, Verdict::NotStarted)}, true);
    row("a Write and a Read", {run(WriteOperation, Verdict::Succeeded), read}, true);
    row("a Write alone", {run(WriteOperation, Verdict::Succeeded)}, false);
}

void TestRunLog::nothingWrittenSinceRead() {
    QFETCH(QList<RunRecord>, runs);
    RunLog log;
    for (const RunRecord &run : runs)
        log.add(run);
    QTEST(log.nothingWrittenSinceRead(), "expected");
}

QTEST_GUILESS_MAIN(TestRunLog)
#include "tst_runlog.moc"

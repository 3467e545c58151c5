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

QTEST_GUILESS_MAIN(TestRunLog)
#include "tst_runlog.moc"

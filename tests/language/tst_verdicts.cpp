// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "VerdictTable.h"
#include "language/RunJudgement.h"

#include <QLocale>
#include <QTest>

/// What the tool said and what is shown of it, run by run.
class TestVerdicts : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::English)); }
    void run_isShownAs_data();
    void run_isShownAs();
    void failure_saysWhatToDo_data() { run_isShownAs_data(); }
    void failure_saysWhatToDo();
};

void TestVerdicts::run_isShownAs_data() {
    QTest::addColumn<VerdictRow>("row");
    const QList<VerdictRow> rows = verdictRows(QStringLiteral(TOOL_CAPTURES "/verdicts.txt"));
    for (const VerdictRow &row : rows)
        QTest::newRow(qPrintable(row.name)) << row;
    QVERIFY(rows.size() > 60);
}

void TestVerdicts::run_isShownAs() {
    QFETCH(VerdictRow, row);
    QCOMPARE(shownOf(judgeRun(row.facts)), row.shown);
}

void TestVerdicts::failure_saysWhatToDo() {
    QFETCH(VerdictRow, row);
    const RunOutcome outcome = judgeRun(row.facts);
    if (outcome.verdict == RunOutcome::Verdict::Failed)
        QVERIFY(!outcome.nextStep.isEmpty() || outcome.sentence.contains(u"first"));
    QVERIFY(!outcome.words().contains(u'%'));
}

QTEST_GUILESS_MAIN(TestVerdicts)
#include "tst_verdicts.moc"

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "control/VerdictWords.h"

#include "files/FileStamp.h"

#include <QTest>

/// What a verdict says once what it judged may have changed.
class TestVerdictWords : public QObject {
    Q_OBJECT

private slots:
    void fileThatWasHandedOver_data();
    void fileThatWasHandedOver();
};

void TestVerdictWords::fileThatWasHandedOver_data() {
    QTest::addColumn<QString>("then");
    QTest::addColumn<QString>("now");
    QTest::addColumn<QString>("said");
    const QString one = QStringLiteral("one");
    const QString other = QStringLiteral("other");
    const QString unknown = FileStamp::unknownMark;
    const QString isUnknown =
        QStringLiteral("Nothing was burned. Look at the plug. It is not known "
                       "whether the file that was handed over has changed "
                       "since.");
    QTest::newRow("the same") << one << one << QStringLiteral("Look at the plug.");
    QTest::newRow("another") << one << other
                             << QStringLiteral(
                                    "; the file that was handed over has changed since.");
    QTest::newRow("unknown then") << unknown << one << isUnknown;
    QTest::newRow("unknown now") << one << unknown << isUnknown;
    QTest::newRow("never known") << unknown << unknown << isUnknown;
    QTest::newRow("the image itself")
        << QString() << unknown << QStringLiteral("Look at the plug.");
}

void TestVerdictWords::fileThatWasHandedOver() {
    QFETCH(QString, then);
    QFETCH(QString, now);
    QFETCH(QString, said);
    RunRecord run;
    run.operation = WriteOperation;
    run.outcome.verdict = RunOutcome::Verdict::Failed;
    run.outcome.sentence = QStringLiteral("Nothing was burned.");
    run.outcome.nextStep = QStringLiteral("Look at the plug.");
    run.outcome.offer = nextSteps::ChooseTool{};
    run.fileMark = then;
    ShownNow shown;
    shown.fileMark = now;
    const VerdictWords words = wordsFor(run, shown);
    QVERIFY2(words.sentence.endsWith(said), qPrintable(words.sentence));
    // Only what is known to be another one makes the verdict one of the past.
    const bool isOver = said.startsWith(u';');
    QCOMPARE(words.severity,
             isOver ? MessageLine::Severity::Information : MessageLine::Severity::Problem);
    QCOMPARE(words.offer.has_value(), !isOver);
}

QTEST_GUILESS_MAIN(TestVerdictWords)
#include "tst_verdictwords.moc"

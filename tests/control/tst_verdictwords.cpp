// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "control/VerdictWords.h"

#include "control/Messages.h"
#include "control/VerdictLine.h"
#include "files/FileStamp.h"
#include "language/RunLog.h"

#include <QTest>

/// What a verdict says once what it judged may have changed.
class TestVerdictWords : public QObject {
    Q_OBJECT

private slots:
    void fileThatWasHandedOver_data();
    void fileThatWasHandedOver();
    void fileThatWasSeenChanged_staysChanged();
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
    run.outcome.verdict = RunOutcome::Verdict::NotStarted; // and so handed nothing over
    QCOMPARE(wordsFor(run, shown).sentence, run.outcome.words());
    // Only what is known to be another one makes the verdict one of the past.
    const bool isOver = said.startsWith(u';');
    QCOMPARE(words.severity,
             isOver ? MessageLine::Severity::Information : MessageLine::Severity::Problem);
    QCOMPARE(words.offer.has_value(), !isOver);
}

void TestVerdictWords::fileThatWasSeenChanged_staysChanged() {
    MessageLine line;
    Messages messages(line);
    RunLog runs;
    ShownNow shown;
    VerdictLine verdict(runs, messages, [&shown] { return std::optional(shown); });
    RunRecord run;
    run.operation = WriteOperation;
    run.fileMark = QStringLiteral("one");
    run.outcome.verdict = RunOutcome::Verdict::Succeeded;
    run.outcome.sentence = QStringLiteral("All was burned.");
    const QString isOther = QStringLiteral("; the file that was handed over has changed since.");
    const auto says = [&](const QString &mark) {
        shown.fileMark = mark;
        verdict.refresh();
        return line.toPlainText();
    };
    shown.fileMark = run.fileMark;
    runs.add(run);
    QVERIFY2(says(FileStamp::unknownMark).contains(u"burned. It is not known"),
             qPrintable(line.toPlainText()));
    QVERIFY2(says(QStringLiteral("other")).endsWith(isOther), qPrintable(line.toPlainText()));
    QVERIFY2(says(FileStamp::unknownMark).endsWith(isOther), qPrintable(line.toPlainText()));
    runs.add(run);
    QVERIFY2(says(FileStamp::unknownMark).contains(u"burned. It is not known"),
             qPrintable(line.toPlainText()));
}

QTEST_MAIN(TestVerdictWords)
#include "tst_verdictwords.moc"

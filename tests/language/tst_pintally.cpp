// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/PinTally.h"

#include <QTest>

/// How often which pin failed.
class TestPinTally : public QObject {
    Q_OBJECT

private slots:
    void runs_areCountedForEachPin();
    void vector_isCountedByItself();
    void failures_areThoseOfAllRuns();
    void fieldGivenTwice_countsOnce();
    void sentences_tellFlakyFromBroken();
    void oneRun_isNotCalledAll();
    void summary_namesTheFirstPins();
};

namespace {

using Counts = QMap<int, int>;

/// Pin 3 fails in every run in vector 0, pin 11 in vector 3 of the second one alone.
PinTally tallyOfThree() {
    PinTally tally;
    tally.add({{3, 0, u'L'}});
    tally.add({{3, 0, u'L'}, {11, 3, u'H'}, {3, 3, u'L'}});
    tally.add({{3, 0, u'L'}});
    return tally;
}

/// A tally of \a runs runs in which the pins from 1 to \a pins failed.
PinTally tallyOf(int runs, int pins) {
    QList<PinFailure> failures;
    for (int pin = 1; pin <= pins; ++pin)
        failures.append({pin, 0, u'L'});
    PinTally tally;
    for (int run = 0; run < runs; ++run)
        tally.add(failures);
    return tally;
}

} // namespace

void TestPinTally::runs_areCountedForEachPin() {
    QCOMPARE(PinTally().runs(), 0);
    QCOMPARE(PinTally().failedRuns(), Counts());
    PinTally tally = tallyOfThree();
    QCOMPARE(tally.runs(), 3);
    QCOMPARE(tally.failedRuns(), (Counts{{3, 3}, {11, 1}}));
    tally.add({});
    QCOMPARE(tally.runs(), 4);
    QCOMPARE(tally.failedRuns(), (Counts{{3, 3}, {11, 1}}));
}

void TestPinTally::vector_isCountedByItself() {
    const PinTally tally = tallyOfThree();
    QCOMPARE(tally.failedRuns(0), (Counts{{3, 3}}));
    QCOMPARE(tally.failedRuns(3), (Counts{{3, 1}, {11, 1}}));
    QCOMPARE(tally.failedRuns(1), Counts());
    QCOMPARE(tally.sentences(1), QStringList());
    QCOMPARE(tally.sentences(3).first(),
             QStringLiteral("Pin 3 failed in 1 of 3 runs: flaky, or a bad contact"));
}

void TestPinTally::failures_areThoseOfAllRuns() {
    QStringList all;
    for (const PinFailure failure : tallyOfThree().failures())
        all.append(QStringLiteral("%1/%2%3").arg(QString::number(failure.vector),
                                                 QString::number(failure.pin),
                                                 QString(failure.expected)));
    QCOMPARE(all.join(u' '), QStringLiteral("0/3L 3/3L 3/11H"));
}

void TestPinTally::fieldGivenTwice_countsOnce() {
    PinTally tally;
    tally.add({{3, 0, u'L'}, {3, 0, u'L'}});
    QCOMPARE(tally.failedRuns(0), (Counts{{3, 1}}));
    QCOMPARE(tally.failedRuns(), (Counts{{3, 1}}));
}

void TestPinTally::sentences_tellFlakyFromBroken() {
    QCOMPARE(
        tallyOfThree().sentences(),
        (QStringList{QStringLiteral("Pin 3 failed in all 3 runs"),
                     QStringLiteral("Pin 11 failed in 1 of 3 runs: flaky, or a bad contact")}));
}

void TestPinTally::oneRun_isNotCalledAll() {
    QCOMPARE(tallyOf(1, 1).summary(), QStringLiteral("Pin 1 failed."));
    QCOMPARE(tallyOf(1, 0).summary(), QStringLiteral("No pin failed."));
}

void TestPinTally::summary_namesTheFirstPins() {
    QCOMPARE(PinTally().summary(), QString());
    QCOMPARE(tallyOf(10, 0).summary(), QStringLiteral("No pin failed in 10 runs."));
    const QString three = QStringLiteral(
        "Pin 1 failed in all 10 runs. Pin 2 failed in all 10 runs. Pin 3 failed in all 10 runs.");
    QCOMPARE(tallyOf(10, 3).summary(), three);
    QCOMPARE(tallyOf(10, 4).summary(), three + QStringLiteral(" One more pin failed."));
    QCOMPARE(tallyOf(10, 14).summary(), three + QStringLiteral(" 11 more pins failed."));
}

QTEST_APPLESS_MAIN(TestPinTally)
#include "tst_pintally.moc"

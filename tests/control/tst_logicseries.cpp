// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "control/LogicSeries.h"

#include "base/WorkState.h"
#include "control/ActionGate.h"
#include "control/Messages.h"
#include "language/RunRecord.h"

#include <QSignalSpy>
#include <QTest>

/// Repeated tests of a logic IC.
class TestLogicSeries : public QObject {
    Q_OBJECT

private slots:
    void runs_areThoseAskedFor();
    void runs_followATurnLater();
    void counts_areThoseOfTheRuns();
    void stopDuringARun_endsItUncounted();
    void stoppedRun_endsIt();
    void stopBetweenRuns_endsIt();
    void stopAndBegin_doNotRunTwiceAtOnce();
    void runWithoutAWholeReport_endsIt_data();
    void runWithoutAWholeReport_endsIt();
    void runWhoseReportIsCut_endsIt();
    void refusedRun_endsIt();
    void refusedFirstRun_beginsNone();
    void firstRunAlone_isAPressOfItsOwn();
    void otherDevice_endsIt();
    void singleRun_endsTheTally();
    void singleRunBetween_endsIt();
    void gate_isAskedFirst();
    void running_refusesAnotherBegin();
};

namespace {

using State = LogicSeries::State;
using Verdict = RunOutcome::Verdict;

/// What one test comes to: the fields of pins 3 and 6 in the only vector, or something else.
struct Test {
    Verdict verdict = Verdict::Succeeded;
    QString row = QStringLiteral("0000: 1 1 L 1 1 L G V");
    bool reportIsWhole = true;
};

const Test good;
const Test bad3 = {Verdict::Failed, QStringLiteral("0000: 1 1 L- 1 1 L G V"), true};
const Test bad6 = {Verdict::Failed, QStringLiteral("0000: 1 1 L 1 1 L- G V"), true};

/// A bench whose button tests at once, with one result after the other; after the last the IC is
/// good.
struct Bench {
    WorkState work;
    MessageLine line;
    Messages messages{line};
    ActionGate gate{work, messages};
    QString device = QStringLiteral("7400");
    QString report;
    QList<Test> tests;
    int presses = 0;
    bool asks = false;
    QList<RunPress> kinds;
    std::function<void()> meanwhile;
    LogicSeries series{{work, gate, [this] { return device; },
                        [this](RunPress kind) {
                            kinds << kind;
                            return press();
                        },
                        [this] { return parseLogicReport(report); }}};

    bool press();
    bool ends(State state) {
        return QTest::qWaitFor([&] { return !series.isRunning(); }) && series.state() == state;
    }
};

bool Bench::press() {
    if (asks || gate.refuses())
        return false;
    ++presses;
    work.begin(Work::Running);
    if (meanwhile)
        meanwhile();
    const Test test = tests.isEmpty() ? good : tests.takeFirst();
    report = QStringLiteral("      1 2 3 4 5 6 7 8\n") + test.row + u'\n';
    work.end();
    RunRecord run;
    run.operation = LogicOperation;
    run.device = device;
    run.outcome.verdict = test.verdict;
    if (!test.reportIsWhole)
        run.report = RunRecord::Report::Cut;
    series.takeRun(run);
    return true;
}

using Counts = QMap<int, int>;

} // namespace

void TestLogicSeries::runs_areThoseAskedFor() {
    Bench bench;
    QCOMPARE(bench.series.state(), State::None);
    QCOMPARE(bench.series.words(), QString());
    bench.series.begin(4);
    QVERIFY(bench.ends(State::Complete));
    QCOMPARE(bench.presses, 4);
    QCOMPARE(bench.series.tally().runs(), 4);
    QCOMPARE(bench.series.words(), QStringLiteral("4 runs"));
    QCOMPARE(bench.series.sentences(), QStringLiteral("No pin failed in 4 runs."));
}

void TestLogicSeries::runs_followATurnLater() {
    Bench bench;
    QStringList told;
    QObject::connect(&bench.series, &LogicSeries::changed, &bench.series,
                     [&] { told.append(bench.series.sentences()); });
    bench.series.begin(3);
    QCOMPARE(bench.presses, 1);
    QVERIFY(bench.series.isRunning());
    QCOMPARE(bench.series.words(), QStringLiteral("Run 2 of 3"));
    QVERIFY(bench.ends(State::Complete));
    QCOMPARE(told, (QStringList{QStringLiteral("Run 1 of 3."), QStringLiteral("Run 2 of 3."),
                                QStringLiteral("Run 3 of 3."),
                                QStringLiteral("No pin failed in 3 runs.")}));
}

void TestLogicSeries::counts_areThoseOfTheRuns() {
    Bench bench;
    bench.tests = {good, bad3, bad6, bad3};
    bench.series.begin(5);
    QVERIFY(bench.ends(State::Complete));
    QCOMPARE(bench.series.tally().failedRuns(), (Counts{{3, 2}, {6, 1}}));
    bench.tests = {bad6};
    bench.series.begin(2);
    QVERIFY(bench.ends(State::Complete));
    QCOMPARE(bench.series.tally().failedRuns(), (Counts{{6, 1}}));
}

void TestLogicSeries::stopDuringARun_endsItUncounted() {
    Bench bench;
    bench.tests = {bad3, bad3};
    bench.meanwhile = [&bench] {
        if (bench.presses == 2)
            bench.series.stop();
    };
    bench.series.begin(5);
    QVERIFY(bench.ends(State::Stopped));
    QTest::qWait(0);
    QCOMPARE(bench.presses, 2);
    QCOMPARE(bench.series.tally().runs(), 1);
    QCOMPARE(bench.series.sentences(), QStringLiteral("Stopped after 1 of 5 runs. Pin 3 failed."));
}

// Whoever has stopped it.
void TestLogicSeries::stoppedRun_endsIt() {
    Bench bench;
    bench.tests = {good, {Verdict::Stopped, bad3.row, true}};
    bench.series.begin(5);
    QVERIFY(bench.ends(State::Stopped));
    QCOMPARE(bench.presses, 2);
    QCOMPARE(bench.series.tally().failedRuns(), Counts());
}

void TestLogicSeries::stopBetweenRuns_endsIt() {
    Bench bench;
    bench.series.stop();
    QCOMPARE(bench.series.state(), State::None);
    bench.series.begin(5);
    bench.series.stop();
    QCOMPARE(bench.series.state(), State::Stopped);
    QTest::qWait(0);
    QCOMPARE(bench.presses, 1);
}

void TestLogicSeries::stopAndBegin_doNotRunTwiceAtOnce() {
    Bench bench;
    bench.series.begin(5);
    bench.series.stop();
    bench.meanwhile = [] { QCoreApplication::processEvents(); };
    bench.series.begin(3);
    QVERIFY(bench.ends(State::Complete));
    QCOMPARE(bench.presses, 4);
    QCOMPARE(bench.line.toPlainText(), QString());
}

void TestLogicSeries::runWithoutAWholeReport_endsIt_data() {
    QTest::addColumn<int>("verdict");
    QTest::addColumn<QString>("row");
    QTest::newRow("none") << int(Verdict::Failed) << QString();
    QTest::newRow("none, and called good") << int(Verdict::Succeeded) << QString();
    QTest::newRow("a part") << int(Verdict::Failed) << good.row;
    QTest::newRow("called good, and bad") << int(Verdict::Succeeded) << bad3.row;
}

void TestLogicSeries::runWithoutAWholeReport_endsIt() {
    QFETCH(const int, verdict);
    QFETCH(const QString, row);
    Bench bench;
    bench.tests = {good, {Verdict(verdict), row, true}};
    bench.series.begin(5);
    QVERIFY(bench.ends(State::NoReport));
    QCOMPARE(bench.presses, 2);
    QCOMPARE(bench.series.tally().runs(), 1);
    QCOMPARE(bench.series.sentences(),
             QStringLiteral("Ended after 1 of 5 runs: the next one left no whole report. "
                            "No pin failed."));
}

void TestLogicSeries::runWhoseReportIsCut_endsIt() {
    Bench bench;
    bench.tests = {good, {bad3.verdict, bad3.row, false}};
    bench.series.begin(5);
    QVERIFY(bench.ends(State::NoReport));
    QCOMPARE(bench.series.tally().runs(), 1);
}

// A search that somebody has begun between two runs.
void TestLogicSeries::refusedRun_endsIt() {
    Bench bench;
    bench.series.begin(5);
    bench.work.begin(Work::Searching);
    QVERIFY(bench.ends(State::Stopped));
    QCOMPARE(bench.presses, 1);
}

// It stands beside the question, and can be pressed again.
void TestLogicSeries::refusedFirstRun_beginsNone() {
    Bench bench;
    bench.asks = true;
    bench.series.begin(5);
    QCOMPARE(bench.series.state(), State::NotBegun);
    QCOMPARE(bench.series.words(), QString());
    QCOMPARE(bench.series.sentences(), QString());
    bench.asks = false;
    bench.series.begin(5);
    QVERIFY(bench.ends(State::Complete));
    QCOMPARE(bench.presses, 5);
}

void TestLogicSeries::firstRunAlone_isAPressOfItsOwn() {
    Bench bench;
    bench.series.begin(3);
    QVERIFY(bench.ends(State::Complete));
    QCOMPARE(bench.kinds, QList<RunPress>({RunPress::Own, RunPress::Repeated, RunPress::Repeated}));
}

void TestLogicSeries::otherDevice_endsIt() {
    Bench bench;
    bench.series.begin(5);
    bench.device = QStringLiteral("7402");
    QVERIFY(bench.ends(State::OtherDevice));
    QCOMPARE(bench.presses, 1);
    QCOMPARE(bench.series.words(),
             QStringLiteral("Ended after 1 of 5 runs: the device is another one now"));
}

void TestLogicSeries::singleRun_endsTheTally() {
    Bench bench;
    bench.tests = {bad3, bad3};
    bench.series.begin(2);
    QVERIFY(bench.ends(State::Complete));
    const QSignalSpy changes(&bench.series, &LogicSeries::changed);
    bench.press();
    QCOMPARE(changes.size(), 1);
    QCOMPARE(bench.series.state(), State::None);
    QCOMPARE(bench.series.tally().runs(), 0);
    QCOMPARE(bench.series.sentences(), QString());
}

void TestLogicSeries::singleRunBetween_endsIt() {
    Bench bench;
    bench.series.begin(5);
    bench.press();
    QCOMPARE(bench.series.state(), State::None);
    QTest::qWait(0);
    QCOMPARE(bench.presses, 2);
}

void TestLogicSeries::gate_isAskedFirst() {
    Bench bench;
    bench.work.begin(Work::Searching);
    bench.series.begin(5);
    QCOMPARE(bench.series.state(), State::None);
    QCOMPARE(bench.presses, 0);
    QVERIFY(bench.line.toPlainText().contains(u"A search is running"));
}

void TestLogicSeries::running_refusesAnotherBegin() {
    Bench bench;
    bench.series.begin(2);
    bench.series.begin(50);
    QCOMPARE(bench.series.plannedRuns(), 2);
    QVERIFY(bench.ends(State::Complete));
    QCOMPARE(bench.presses, 2);
}

QTEST_MAIN(TestLogicSeries)
#include "tst_logicseries.moc"

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "Processes.h"
#include "ToolBench.h"
#include "language/RunJudgement.h"
#include "support/FileHelpers.h"

#include <QElapsedTimer>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <chrono>
#include <csignal>

/// Stopping a run that would go on.
class TestToolRunStop : public QObject {
    Q_OBJECT

private slots:
    void stop_endsASilentRun();
    void stop_endsARunThatIgnoresTheRequest();
    void stop_endsASearchThatWaitsForEver();
    void stop_endsALogicTestWhoseErrorLineHasNoEnd();
    void stop_beforeAndAfterARunDoesNothing();
    void stop_endsWhatPrintsOnAfterTheRun_data();
    void stop_endsWhatPrintsOnAfterTheRun();
    void stop_leavesAloneWhatIsSilentAfterTheRun();
    void stop_leavesAloneAnAgentThatHoldsTheStreams();
    void stillPrinting_isFromTheFirstLateWordToTheEnd();
    void lateOutput_comesInMeasure();
};

namespace {

/// Stops \a run as soon as \a ready says so, from within the wait.
template <typename Ready>
void stopOnce(ScriptedMiniPro &run, QTimer &clock, Ready ready) {
    QObject::connect(&clock, &QTimer::timeout, &run, [&run, &clock, ready] {
        if (ready())
            run.stop();
        if (run.facts().stopRequested)
            clock.stop();
    });
    clock.start(std::chrono::milliseconds(1));
}

/// The line that the tool's double prints with the number of a process.
QString numberIn(const QString &output) {
    static const QRegularExpression line(QStringLiteral("^(\\d+)$"),
                                         QRegularExpression::MultilineOption);
    return line.match(output).captured(1);
}

} // namespace

void TestToolRunStop::stop_endsASilentRun() {
    ToolBench bench;
    bench.useDouble("hang");
    const auto run = bench.newRun();
    QTimer clock;
    stopOnce(*run, clock, [] { return true; });
    QElapsedTimer time;
    time.start();
    QCOMPARE(run->launch(), SIGTERM);
    QVERIFY2(time.elapsed() < 1900, "the request to terminate was enough");
    QVERIFY(run->facts().stopRequested);
    QCOMPARE(judgeRun(run->facts()).sentence, QStringLiteral("Read stopped."));
    bench.serviceQueue();
    QCOMPARE(bench.console.text(), QStringLiteral("minipro has exited with status 15"));
}

void TestToolRunStop::stop_endsARunThatIgnoresTheRequest() {
    ToolBench bench;
    bench.useDouble("ignore-terminate");
    const auto run = bench.newRun();
    run->setWriteOperation();
    QTimer clock;
    stopOnce(*run, clock, [&run] { return run->collectedOutput() == QStringLiteral("deaf\n"); });
    QCOMPARE(run->launch(), SIGKILL);
    QCOMPARE(judgeRun(run->facts()).sentence,
             QStringLiteral("Write stopped: the chip may be written in part."));
}

void TestToolRunStop::stop_endsASearchThatWaitsForEver() {
    ToolBench bench;
    bench.useDouble("hang");
    const auto run = bench.newRun();
    QTimer clock;
    stopOnce(*run, clock, [] { return true; });
    QCOMPARE(run->list(QStringLiteral("27C")), SIGTERM);
    QCOMPARE(bench.log.lines.last(), QStringLiteral("\nminipro list has exited with status 15"));
}

// A line of errors goes before the output behind it, but only as far as it has come.
void TestToolRunStop::stop_endsALogicTestWhoseErrorLineHasNoEnd() {
    constexpr int wholeLine = 20000000;
    ToolBench bench;
    bench.settings.setValue(
        settingsKeys::miniproLocation,
        QStringLiteral("flood() { tr '\\0' y </dev/zero | head -c %1 >&2 & "
                       "head -c 200000 /dev/zero | tr '\\0' x >&2; echo row; wait; }; flood")
            .arg(QString::number(wholeLine)));
    const auto run = bench.newRun();
    run->setLogicOperation();
    connect(run.get(), &ScriptedMiniPro::said, this, [&run] {
        if (run->collectedOutput().contains(u"row"))
            run->stop();
    });
    run->launch();
    QVERIFY(run->facts().stopRequested);
    QVERIFY2(run->printed() < wholeLine, qPrintable(QString::number(run->printed())));
}

void TestToolRunStop::stop_beforeAndAfterARunDoesNothing() {
    ToolBench bench;
    bench.useDouble("succeed");
    const auto run = bench.newRun();
    run->stop();
    QCOMPARE(run->launch(), 0);
    run->stop();
    QVERIFY(!run->facts().stopRequested);
}

void TestToolRunStop::stop_endsWhatPrintsOnAfterTheRun_data() {
    QTest::addColumn<QByteArray>("behaviour");
    QTest::newRow("ends with its pipe") << QByteArray("leave-flood");
    QTest::newRow("cannot be asked") << QByteArray("leave-stubborn-flood");
}

void TestToolRunStop::stop_endsWhatPrintsOnAfterTheRun() {
    QFETCH(QByteArray, behaviour);
    ToolBench bench;
    bench.useDouble(behaviour.constData());
    const qsizetype descriptors = ToolBench::openDescriptors();
    const auto run = bench.newRun();
    QCOMPARE(run->launch(), 0);
    const QString flood = numberIn(run->collectedOutput());
    QTRY_VERIFY(run->stillPrinting());
    QVERIFY(!isGone(flood));

    run->stop();
    QVERIFY(!run->stillPrinting());
    const qsizetype printed = run->collectedOutput().size();
    QTRY_VERIFY(isGone(flood));
    QCOMPARE(run->collectedOutput().size(), printed);
    QTRY_COMPARE(ToolBench::openDescriptors(), descriptors);
    // It was the run's own end that counts, not this.
    QVERIFY(!run->facts().stopRequested);
}

void TestToolRunStop::stop_leavesAloneWhatIsSilentAfterTheRun() {
    ToolBench bench;
    bench.useDouble("leave-grandchild");
    const auto run = bench.newRun();
    QCOMPARE(run->launch(), 0);
    QVERIFY(!run->stillPrinting());
    run->stop();
    writeWholeFile(bench.path("go-on"), {});
    QTRY_COMPARE(run->collectedOutput(), QStringLiteral("parent donelate words"));
}

void TestToolRunStop::stop_leavesAloneAnAgentThatHoldsTheStreams() {
    ToolBench bench;
    bench.useDouble("leave-agent-and-flood");
    const auto run = bench.newRun();
    QCOMPARE(run->launch(), 0);
    static const QRegularExpression agentLine(QStringLiteral("agent (\\d+)"));
    const QString agent = agentLine.match(run->collectedOutput()).captured(1);
    const QString flood = numberIn(run->collectedOutput());
    QVERIFY(!agent.isEmpty() && !flood.isEmpty());
    QTRY_VERIFY(run->stillPrinting());
    run->stop();
    QTRY_VERIFY(isGone(flood));
    QVERIFY(!isGone(agent));
    writeWholeFile(bench.path("go-on"), {});
    QTRY_VERIFY(QFile::exists(bench.path("all-said")));
}

void TestToolRunStop::stillPrinting_isFromTheFirstLateWordToTheEnd() {
    ToolBench bench;
    bench.useDouble("leave-grandchild");
    const auto run = bench.newRun();
    QSignalSpy changes(run.get(), &ScriptedMiniPro::stillPrintingChanged);
    run->launch();
    QCOMPARE(changes.count(), 0);
    writeWholeFile(bench.path("go-on"), {});
    QTRY_COMPARE(changes.count(), 2);
    QCOMPARE(changes[0].first().toBool(), true);
    QCOMPARE(changes[1].first().toBool(), false);
    QVERIFY(!run->stillPrinting());
}

void TestToolRunStop::lateOutput_comesInMeasure() {
    ToolBench bench;
    bench.useDouble("leave-flood");
    const auto run = bench.newRun();
    run->launch();
    QTRY_VERIFY(run->stillPrinting());
    QElapsedTimer time;
    time.start();
    const qsizetype before = bench.log.lines.size();
    QTRY_VERIFY(bench.log.lines.size() >= before + 10);
    QVERIFY2(time.elapsed() >= 800, "a flood leaves the window time for other things");
    run->stop();
}

QTEST_GUILESS_MAIN(TestToolRunStop)
#include "tst_tool_run_stop.moc"

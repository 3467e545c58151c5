#include "ToolBench.h"

#include <QElapsedTimer>
#include <QTest>
#include <QTimer>

#include <csignal>

/// Stopping a run that would go on.
class TestToolRunStop : public QObject {
    Q_OBJECT

private slots:
    void stop_endsASilentRun();
    void stop_endsARunThatIgnoresTheRequest();
    void stop_endsASearchThatWaitsForEver();
    void stop_beforeAndAfterARunDoesNothing();
};

namespace {

/// Stops \a run as soon as \a ready says so, from within the wait.
template <typename Ready>
void stopOnce(ScriptedMiniPro &run, QTimer &clock, Ready ready) {
    QObject::connect(&clock, &QTimer::timeout, &run, [&run, &clock, ready] {
        if (!run.isRunning() || !ready())
            return;
        clock.stop();
        run.stop();
    });
    clock.start(1);
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
    QVERIFY(run->stopRequested());
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

void TestToolRunStop::stop_beforeAndAfterARunDoesNothing() {
    ToolBench bench;
    bench.useDouble("succeed");
    const auto run = bench.newRun();
    run->stop();
    QVERIFY(!run->isRunning());
    QCOMPARE(run->launch(), 0);
    run->stop();
    QVERIFY(!run->stopRequested());
}

QTEST_GUILESS_MAIN(TestToolRunStop)
#include "tst_tool_run_stop.moc"

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "Processes.h"
#include "ToolBench.h"
#include "base/Log.h"
#include "base/Units.h"
#include "support/AddressSpaceLimit.h"
#include "support/FileHelpers.h"

#include <QDeadlineTimer>
#include <QSignalSpy>
#include <QTest>
#include <QThread>
#include <QTimer>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <malloc.h>
#include <unistd.h>

namespace {

/// Before there is a second thread: what the allocator sets aside for it would be room beyond any
/// limit, and so would large blocks that it does not give back.
const bool keepsNoRoom =
    ::mallopt(M_ARENA_MAX, 1) == 1 && ::mallopt(M_MMAP_THRESHOLD, int(128 * kibibyte)) == 1;

/// Has \a run read the beginning of a character, which is shown as it is once it listens no more.
void beginCharacter(ScriptedMiniPro &run) {
    ReadHandle handle;
    handle.setReadFunction([](int, void *bytes, size_t) -> ssize_t {
        memcpy(bytes, "\xE2", 1);
        return 1;
    });
    QString text;
    run.appendDataFrom_to(&handle, text);
    QCOMPARE(text, QString());
}

class SilentLog final : public Log {
public:
    void write(const QString &) override {}
};

/// Lets \a handle read as many of \a character as it asks for.
void fillWith(ReadHandle &handle, char character) {
    handle.setReadFunction([character](int, void *bytes, size_t size) -> ssize_t {
        memset(bytes, character, size);
        return ssize_t(size);
    });
}

bool hasGivenUpOnCharacter(const ScriptedMiniPro &run) {
    return !run.collectedOutput().isEmpty();
}

} // namespace

/// How output is taken from the pipes and where it goes.
class TestToolRunOutput : public QObject {
    Q_OBJECT

private slots:
    void output_reachesTextLogAndConsole();
    void output_withoutAConsoleIsKeptAndLogged();
    void output_ofAMegabyteWithoutALineBreakArrivesWhole();
    void output_thatIsNoTextIsShownAsReplacements();
    void output_keepsALeadingByteOrderMark();
    void output_putsASplitCharacterTogetherPerStream();
    void output_thatThePipesHoldAtTheEndIsTaken();
    void console_isToldLaterAndNeverDirectly();
    void run_mayBeGoneWhenTheQueueIsServiced();
    void collectedOutput_stopsGrowingAtItsLimit();
    void flood_needsLittleMemory();
    void collectedOutput_endsWithTheMemory();
    void collectedOutput_isReleased();
    void releasedOutput_keepsNoLateWords();
    void saidTail_beginsWithAWholeCharacter();
    void handle_isArmedAgainByTheReadItself();
    void interruptedRead_isTriedAgainAndNotCounted();
    void failedRead_countsAsEmpty();
    void emptyReads_the51stEndsTheListening();
    void emptyReads_leaveTheToolItsPipes();
    void emptyReads_areRareWhileTheChildLivesOn();
    void grandchild_holdsNothingAndItsLateWordsFollow_data();
    void grandchild_holdsNothingAndItsLateWordsFollow();
    void endlessOutput_leavesTheEventLoopTurning();
    void eventLoops_surviveARunAndARunSurvivesTheirEnd();
};

void TestToolRunOutput::output_reachesTextLogAndConsole() {
    ToolBench bench;
    bench.useDouble("succeed");
    const auto run = bench.newRun();
    run->launch();
    bench.serviceQueue();
    const QString expected = QStringLiteral("Found TL866II+ 04.2.132 (0x284)\n"
                                            "\r\x1b[KReading Code...   0%"
                                            "\r\x1b[KReading Code...  0.13Sec  OK\n");
    QCOMPARE(run->collectedOutput(), expected);
    QCOMPARE(bench.linesOfOutput().join(QString()), expected);
    QCOMPARE(bench.console.text(), expected + QStringLiteral("minipro has exited with status 0"));
    // Piece by piece the same: nothing is joined, nothing added.
    QCOMPARE(bench.console.pieces.mid(0, bench.console.pieces.size() - 1), bench.linesOfOutput());
}

void TestToolRunOutput::output_withoutAConsoleIsKeptAndLogged() {
    ToolBench bench;
    bench.useDouble("fail");
    const auto run = bench.newRun();
    run->setOutputView(nullptr);
    run->launch();
    bench.serviceQueue();
    QCOMPARE(bench.linesOfOutput(), QStringList(QStringLiteral("No programmer found.\n")));
    QCOMPARE(run->collectedOutput(), QStringLiteral("No programmer found.\n"));
    QCOMPARE(bench.console.events, QStringList());
}

void TestToolRunOutput::output_ofAMegabyteWithoutALineBreakArrivesWhole() {
    ToolBench bench;
    bench.useDouble("megabyte");
    const auto run = bench.newRun();
    run->launch();
    QCOMPARE(run->collectedOutput().size(), 1024 * 1024);
    QCOMPARE(run->collectedOutput().count(u'x'), 1024 * 1024);
}

void TestToolRunOutput::output_thatIsNoTextIsShownAsReplacements() {
    ToolBench bench;
    bench.useDouble("invalid-text");
    const auto run = bench.newRun();
    run->launch();
    bench.serviceQueue();
    // The beginning of a character at the very end comes before the exit message.
    QCOMPARE(bench.console.text(),
             QStringLiteral("a\ufffdb\ufffdc\ufffdminipro has exited with status 0"));
}

void TestToolRunOutput::output_keepsALeadingByteOrderMark() {
    ToolBench bench;
    bench.useDouble("mark-first");
    const auto run = bench.newRun();
    run->launch();
    QCOMPARE(run->collectedOutput(), QStringLiteral("\ufeffmark"));
}

void TestToolRunOutput::output_putsASplitCharacterTogetherPerStream() {
    ToolBench bench;
    bench.useDouble("split-character");
    const auto run = bench.newRun();
    run->launch();
    QCOMPARE(run->collectedOutput(), QStringLiteral("cafbetween, \u00e9"));
}

namespace {

/// Takes so long over the first piece, which is the tool's number, that the tool has ended by then.
class SlowConsole final : public Console {
public:
    void appendText(const QString &text) override {
        const QDeadlineTimer patience(std::chrono::seconds(20));
        while (isFirst_ && !isGone(text.trimmed()) && !patience.hasExpired())
            QThread::yieldCurrentThread();
        isFirst_ = false;
    }
    void beginRun() override {}
    void endRun() override {}

private:
    bool isFirst_ = true;
};

} // namespace

void TestToolRunOutput::output_thatThePipesHoldAtTheEndIsTaken() {
    ToolBench bench;
    bench.useDouble("leave-much-in-the-pipe");
    SlowConsole console;
    const auto run = bench.newRun();
    run->setOutputView(&console);
    const int status = run->launch();
    if (status == 96)
        QSKIP("pipes cannot be made larger here");
    QCOMPARE(status, 0);
    QCOMPARE(run->collectedOutput().count(u'x'), 1024 * 1024);
}

void TestToolRunOutput::console_isToldLaterAndNeverDirectly() {
    ToolBench bench;
    const auto run = bench.newRun();
    run->appendToOutputView(QStringLiteral("one"));
    run->appendToOutputView(QStringLiteral("two"));
    QCOMPARE(bench.console.pieces, QStringList());
    bench.serviceQueue();
    QCOMPARE(bench.console.pieces, QStringList({QStringLiteral("one"), QStringLiteral("two")}));
}

void TestToolRunOutput::run_mayBeGoneWhenTheQueueIsServiced() {
    ToolBench bench;
    auto goneRun = bench.newRun();
    goneRun->appendToOutputView(QStringLiteral("from a run that is gone"));
    goneRun.reset();
    bench.serviceQueue();
    QCOMPARE(bench.console.pieces, QStringList());
}

void TestToolRunOutput::collectedOutput_stopsGrowingAtItsLimit() {
    ToolBench bench;
    const auto run = bench.newRun();
    run->setOutputView(nullptr);
    constexpr qsizetype limit = ScriptedMiniPro::largestCollected;
    QString text(limit - 3, u'x');
    ReadHandle handle;
    handle.setReadFunction([](int, void *bytes, size_t) -> ssize_t {
        memcpy(bytes, "abcde", 5);
        return 5;
    });
    run->appendDataFrom_to(&handle, text);
    run->appendDataFrom_to(&handle, text);
    QCOMPARE(text.size(), limit);
    QCOMPARE(text.last(5), QStringLiteral("xxabc"));
    QCOMPARE(bench.linesOfOutput(),
             QStringList({QStringLiteral("abcde"), QStringLiteral("abcde")}));
    // What is said of the run is about its end.
    QCOMPARE(run->saidTail(), QStringLiteral("abcdeabcde"));
    QCOMPARE(run->printed(), 10);
}

void TestToolRunOutput::flood_needsLittleMemory() {
    if (!AddressSpaceLimit::works())
        QSKIP("the sanitizer needs its address space");
    constexpr qint64 flood = 300 * mebibyte;
    SilentLog log;
    ToolBench bench;
    ScriptedMiniPro run(bench.settings, log, bench.queue);
    ReadHandle handle;
    fillWith(handle, 'x');
    QString text;
    const AddressSpaceLimit limit(16 * mebibyte);
    while (run.printed() < flood) {
        run.appendDataFrom_to(&handle, text);
        bench.serviceQueue();
    }
    QCOMPARE(text.size(), ScriptedMiniPro::largestCollected);
    QCOMPARE(run.saidTail(), QString(OutputTail::largest, QLatin1Char('x')));
}

void TestToolRunOutput::collectedOutput_endsWithTheMemory() {
    if (!AddressSpaceLimit::works())
        QSKIP("the sanitizer needs its address space");
    QVERIFY(keepsNoRoom);
    SilentLog log;
    ToolBench bench;
    ScriptedMiniPro run(bench.settings, log, bench.queue);
    ReadHandle handle;
    fillWith(handle, 'y');
    const QString before(ScriptedMiniPro::largestCollected / 2, QLatin1Char('x'));
    QString text = before; // shared, so that the next piece needs as much memory again
    {
        const AddressSpaceLimit limit(mebibyte);
        run.appendDataFrom_to(&handle, text);
    }
    QCOMPARE(text, before);
    // The run goes on; a hole in the middle would be worse than an end.
    run.appendDataFrom_to(&handle, text);
    QCOMPARE(text, before);
    QCOMPARE(run.saidTail(), QString(OutputTail::largest, QLatin1Char('y')));
}

void TestToolRunOutput::collectedOutput_isReleased() {
    ToolBench bench;
    bench.useDouble("megabyte");
    const auto run = bench.newRun();
    run->launch();
    QCOMPARE(run->collectedOutput().size(), 1024 * 1024);
    QCOMPARE(run->saidTail(), run->collectedOutput().right(32 * 1024));
    QCOMPARE(run->facts().report.lastLine.size(), 4096);
    run->releaseOutput();
    QCOMPARE(run->collectedOutput(), QString());
    QCOMPARE(run->collectedOutput().capacity(), 0);
    QCOMPARE(run->facts().report.lastLine, QString());
}

void TestToolRunOutput::releasedOutput_keepsNoLateWords() {
    ToolBench bench;
    const auto run = bench.newRun();
    run->setOutputView(nullptr);
    ReadHandle handle;
    handle.setReadFunction([](int, void *bytes, size_t) -> ssize_t {
        memset(bytes, 'A', 1000);
        return 1000;
    });
    QString text;
    run->appendDataFrom_to(&handle, text);
    QCOMPARE(text.size(), 1000);
    run->releaseOutput();
    run->appendDataFrom_to(&handle, text);
    QCOMPARE(text.size(), 1000);
}

void TestToolRunOutput::saidTail_beginsWithAWholeCharacter() {
    ToolBench bench;
    bench.useDouble("emoji-before-the-tail");
    const auto run = bench.newRun();
    run->launch();
    QCOMPARE(run->collectedOutput().size(), 32 * 1024 + 1);
    QCOMPARE(run->saidTail(), QString(32 * 1024 - 1, u'x'));
}

void TestToolRunOutput::handle_isArmedAgainByTheReadItself() {
    ToolBench bench;
    const auto run = bench.newRun();
    Pipe pipe(Pipe::Direction::FromChild);
    QVERIFY(pipe.open());
    ReadHandle *handle = pipe.fileHandleForReading();
    QSignalSpy given(handle, &ReadHandle::dataAvailable);
    QCOMPARE(::write(pipe.childEnd(), "one", 3), 3);
    QString text;
    run->appendDataFrom_to(handle, text);
    QCOMPARE(text, QStringLiteral("one"));
    QCOMPARE(::write(pipe.childEnd(), "two", 3), 3);
    QTRY_COMPARE(given.count(), 1);
}

void TestToolRunOutput::interruptedRead_isTriedAgainAndNotCounted() {
    ToolBench bench;
    const auto run = bench.newRun();
    ReadHandle handle;
    int reads = 0;
    handle.setReadFunction([&reads](int, void *bytes, size_t) -> ssize_t {
        if (++reads % 1000 != 0) {
            errno = EINTR;
            return -1;
        }
        memcpy(bytes, "later", 5);
        return 5;
    });
    QString text;
    run->appendDataFrom_to(&handle, text);
    QCOMPARE(text, QStringLiteral("later"));
    QCOMPARE(reads, 1000);
    // It still listens.
    bench.useDouble("fail");
    QCOMPARE(run->launch(), 1);
    QCOMPARE(bench.log.count(QStringLiteral("Task terminated")), 1);
}

void TestToolRunOutput::failedRead_countsAsEmpty() {
    ToolBench bench;
    const auto run = bench.newRun();
    beginCharacter(*run);
    ReadHandle handle;
    handle.setReadFunction([](int, void *, size_t) -> ssize_t {
        errno = EIO;
        return -1;
    });
    QCOMPARE(run->availableDataOrError(&handle), std::optional<QByteArray>());
    QString text;
    for (int read = 1; read <= 51; ++read) {
        QVERIFY(!hasGivenUpOnCharacter(*run));
        run->appendDataFrom_to(&handle, text);
    }
    QVERIFY(hasGivenUpOnCharacter(*run));
}

void TestToolRunOutput::emptyReads_the51stEndsTheListening() {
    ToolBench bench;
    bench.useDouble("fail");
    const auto run = bench.newRun();
    beginCharacter(*run);
    ReadHandle first;
    ReadHandle second;
    for (ReadHandle *handle : {&first, &second})
        handle->setReadFunction([](int, void *, size_t) -> ssize_t { return 0; });
    QCOMPARE(run->availableDataOrError(&first), std::optional(QByteArray()));
    QString text;
    // Both streams count together.
    for (int read = 1; read <= 50; ++read)
        run->appendDataFrom_to(read % 2 == 0 ? &first : &second, text);
    QVERIFY(!hasGivenUpOnCharacter(*run));
    run->appendDataFrom_to(&first, text);
    QVERIFY(hasGivenUpOnCharacter(*run));

    // Neither output nor the child's end is noticed any more; the run ends all the same.
    const QStringList linesBefore = bench.linesOfOutput();
    QCOMPARE(run->launch(), 1);
    QCOMPARE(bench.linesOfOutput(), linesBefore);
    QCOMPARE(bench.log.count(QStringLiteral("Task terminated")), 0);
    QCOMPARE(bench.log.lines.last(), QStringLiteral("\nminipro has exited with status 1"));
}

void TestToolRunOutput::emptyReads_leaveTheToolItsPipes() {
    ToolBench bench;
    bench.useDouble("print-when-let-on");
    const auto run = bench.newRun();
    ReadHandle handle;
    handle.setReadFunction([](int, void *, size_t) -> ssize_t { return 0; });
    QTimer::singleShot(0, &bench.queue, [&] {
        QString text;
        for (int read = 1; read <= 51; ++read)
            run->appendDataFrom_to(&handle, text);
        writeWholeFile(bench.path("go-on"), {});
    });
    // A tool that prints into a closed pipe would be ended by that.
    QCOMPARE(run->launch(), 0);
    QCOMPARE(bench.log.count(QStringLiteral("Task terminated")), 0);
}

void TestToolRunOutput::emptyReads_areRareWhileTheChildLivesOn() {
    ToolBench bench;
    bench.useDouble("close-output-early");
    const auto run = bench.newRun();
    // Both streams have ended long before the child does; without a pause between empty reads
    // the listening would be over by then, and the child's end would go unnoticed.
    QTimer::singleShot(std::chrono::milliseconds(300), &bench.queue,
                       [&] { writeWholeFile(bench.path("go-on"), {}); });
    QCOMPARE(run->launch(), 3);
    QCOMPARE(bench.log.count(QStringLiteral("Task terminated")), 1);
    bench.serviceQueue();
    QCOMPARE(bench.console.text(), QStringLiteral("last wordsminipro has exited with status 3"));
}

void TestToolRunOutput::grandchild_holdsNothingAndItsLateWordsFollow_data() {
    QTest::addColumn<QByteArray>("behaviour");
    QTest::newRow("both streams open") << QByteArray("leave-grandchild");
    QTest::newRow("standard output alone") << QByteArray("leave-grandchild-on-output");
    QTest::newRow("standard error alone") << QByteArray("leave-grandchild-on-error");
}

void TestToolRunOutput::grandchild_holdsNothingAndItsLateWordsFollow() {
    QFETCH(QByteArray, behaviour);
    ToolBench bench;
    bench.useDouble(behaviour.constData());
    const auto run = bench.newRun();
    QCOMPARE(run->launch(), 0);
    bench.serviceQueue();
    const QString atExit = QStringLiteral("parent doneminipro has exited with status 0");
    QCOMPARE(bench.console.text(), atExit);
    // However often the end of one stream could be read, the other is still listened to.
    for (int turn = 0; turn < 1000; ++turn)
        QCoreApplication::processEvents();
    const qsizetype withPipes = ToolBench::openDescriptors();
    writeWholeFile(bench.path("go-on"), {});
    QTRY_COMPARE(bench.console.text(), atExit + QStringLiteral("late words"));
    QTRY_COMPARE(ToolBench::openDescriptors(), withPipes - 2);
}

void TestToolRunOutput::endlessOutput_leavesTheEventLoopTurning() {
    ToolBench bench;
    bench.useDouble("endless");
    const auto run = bench.newRun();
    int ticks = 0;
    QTimer clock;
    connect(&clock, &QTimer::timeout, run.get(), [&] {
        // The login shell takes a moment to start the tool.
        if (run->collectedOutput().isEmpty() || ++ticks < 20)
            return;
        // The child takes a moment to end, in which the clock would go on.
        clock.stop();
        run->stop();
    });
    clock.start(std::chrono::milliseconds(1));
    QCOMPARE(run->launch(), SIGTERM);
    QCOMPARE(ticks, 20);
    bench.serviceQueue();
    QVERIFY(bench.console.pieces.size() > 2);
    QCOMPARE(bench.console.pieces.last(), QStringLiteral("minipro has exited with status 15"));
}

void TestToolRunOutput::eventLoops_surviveARunAndARunSurvivesTheirEnd() {
    ToolBench bench;
    bench.useDouble("succeed");
    QEventLoop outer;
    QStringList steps;
    QTimer::singleShot(0, &outer, [&] {
        bench.newRun()->launch();
        steps.append(QStringLiteral("run"));
        QTimer::singleShot(0, &outer, [&] {
            steps.append(QStringLiteral("the loop goes on"));
            outer.quit();
        });
    });
    outer.exec();
    QCOMPARE(steps, QStringList({QStringLiteral("run"), QStringLiteral("the loop goes on")}));

    // Told to exit in the middle of a run, the program still waits for the child.
    bench.useDouble("close-output-early");
    QTimer::singleShot(0, &bench.queue, [&] {
        QCoreApplication::exit();
        QTimer::singleShot(std::chrono::milliseconds(50), &bench.queue,
                           [&] { writeWholeFile(bench.path("go-on"), {}); });
    });
    QCOMPARE(bench.newRun()->launch(), 3);
}

QTEST_GUILESS_MAIN(TestToolRunOutput)
#include "tst_tool_run_output.moc"

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "process/ChildProcess.h"
#include "process/Pipe.h"
#include "tool/Processes.h"

#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

class TestChildProcess : public QObject {
    Q_OBJECT

private slots:
    void end_isToldOnceWithTheStatus_data();
    void end_isToldOnceWithTheStatus();
    void failedStart_endsAtOnceWithAReason_data();
    void failedStart_endsAtOnceWithAReason();
    void child_isStartedClean();
    void child_startsInTheWorkingFolderWhereThereIsOne_data();
    void child_startsInTheWorkingFolderWhereThereIsOne();
    void child_hasAnOpenEmptyInput();
    void stop_killsAChildThatIgnoresTheRequest_data();
    void stop_killsAChildThatIgnoresTheRequest();
    void stop_beforeTheStartAndAfterTheEndDoesNothing();
    void stop_leavesNothingOfTheGroup();
    void otherChildrenOfTheProgramAreNotReaped();
    void lostStatus_endsTheRunAllTheSame();
    void destruction_killsAndReapsTheChild();
    void destruction_doesNotWaitForAChildThatIsStuck();
};

namespace {

using EndWatch = ChildProcess::EndWatch;

/// A child with its pipes, not yet started.
class Child {
public:
    explicit Child(const char *behaviour, EndWatch watch = EndWatch::Immediate) {
        process.setStandardStreams(&input, &output, &error);
        process.setLaunchPath(QStringLiteral(TOOL_DOUBLE));
        process.setArguments({QLatin1String(behaviour)});
        process.setEndWatch(watch);
    }

    void waitForEnd() { QTRY_VERIFY_WITH_TIMEOUT(process.hasEnded(), 20000); }
    /// What the child has printed up to now.
    QString printed() {
        const ReadOutcome outcome = output.fileHandleForReading()->availableData();
        const auto *bytes = outcome ? std::get_if<QByteArray>(&*outcome) : nullptr;
        return bytes ? QString::fromUtf8(*bytes) : QString();
    }
    QString printedUpToTheEnd() {
        waitForEnd();
        return printed();
    }
    QString waitForOutput() {
        QString text;
        [&] { QTRY_VERIFY(!(text += printed()).isEmpty()); }();
        return text;
    }

    Pipe input{Pipe::Direction::ToChild};
    Pipe output{Pipe::Direction::FromChild};
    Pipe error{Pipe::Direction::FromChild};
    ChildProcess process;
};

/// True until \a pid has been reaped.
bool isChild(pid_t pid) {
    siginfo_t facts{};
    return ::waitid(P_PID, id_t(pid), &facts, WEXITED | WNOHANG | WNOWAIT) == 0;
}

} // namespace

void TestChildProcess::end_isToldOnceWithTheStatus_data() {
    QTest::addColumn<EndWatch>("watch");
    QTest::addColumn<QByteArray>("behaviour");
    QTest::addColumn<int>("status");
    QTest::addColumn<bool>("bySignal");
    for (const EndWatch watch : {EndWatch::Immediate, EndWatch::Polling}) {
        const char *way = watch == EndWatch::Polling ? "polled" : "noticed";
        QTest::addRow("success, %s", way) << watch << QByteArray("say-nothing") << 0 << false;
        QTest::addRow("exit code, %s", way) << watch << QByteArray("status-42") << 42 << false;
        QTest::addRow("signal, %s", way) << watch << QByteArray("crash") << SIGABRT << true;
    }
}

void TestChildProcess::end_isToldOnceWithTheStatus() {
    QFETCH(EndWatch, watch);
    QFETCH(QByteArray, behaviour);
    Child child(behaviour.constData(), watch);
    QSignalSpy terminated(&child.process, &ChildProcess::terminated);
    QSignalSpy ended(&child.process, &ChildProcess::ended);
    QVERIFY(child.process.start());
    QVERIFY(child.process.isRunning());
    child.waitForEnd();
    QVERIFY(!child.process.isRunning());
    QTEST(child.process.terminationStatus(), "status");
    QTEST(child.process.killedBySignal(), "bySignal");
    QVERIFY(!ended.wait(50));
    QCOMPARE(ended.size(), 1);
    QCOMPARE(terminated.size(), 1);
}

void TestChildProcess::failedStart_endsAtOnceWithAReason_data() {
    QTest::addColumn<std::optional<QString>>("path");
    QTest::addColumn<QString>("reason");
    QTest::newRow("no path") << std::optional<QString>()
                             << QStringLiteral("there is no launch path");
    QTest::newRow("an empty path")
        << std::optional(QStringLiteral("")) << QStringLiteral(": No such file or directory");
    QTest::newRow("no such program") << std::optional(QStringLiteral("/nowhere/sh"))
                                     << QStringLiteral("/nowhere/sh: No such file or directory");
    QTest::newRow("not executable") << std::optional(QStringLiteral("/etc/passwd"))
                                    << QStringLiteral("/etc/passwd: Permission denied");
}

void TestChildProcess::failedStart_endsAtOnceWithAReason() {
    QFETCH(std::optional<QString>, path);
    Child child("succeed");
    child.process.setLaunchPath(path);
    QSignalSpy terminated(&child.process, &ChildProcess::terminated);
    QSignalSpy ended(&child.process, &ChildProcess::ended);
    const Result<void> started = child.process.start();
    QVERIFY(!started);
    QTEST(started.failure()->reason, "reason");
    QCOMPARE(child.process.terminationStatus(), -1);
    QVERIFY(child.process.hasEnded());
    QCOMPARE(ended.size(), 1);
    QCOMPARE(terminated.size(), 0);
    QCOMPARE(child.input.ownEnd(), -1);
    QCOMPARE(child.output.ownEnd(), -1);
}

void TestChildProcess::child_isStartedClean() {
    // An inherited descriptor without close-on-exec, a blocked and two ignored signals.
    const int stray = ::open("/dev/null", O_RDONLY);
    sigset_t blocked;
    sigset_t before;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGTERM);
    ::sigprocmask(SIG_BLOCK, &blocked, &before);
    const auto pipeHandler = ::signal(SIGPIPE, SIG_IGN);
    const auto sizeHandler = ::signal(SIGXFSZ, SIG_IGN);
    Child child("describe-inheritance");
    QVERIFY(child.process.start());
    ::signal(SIGPIPE, pipeHandler);
    ::signal(SIGXFSZ, sizeHandler);
    ::sigprocmask(SIG_SETMASK, &before, nullptr);
    ::close(stray);
    QCOMPARE(child.printedUpToTheEnd(), QStringLiteral("own session"));
}

void TestChildProcess::child_startsInTheWorkingFolderWhereThereIsOne_data() {
    QTest::addColumn<bool>("exists");
    QTest::addColumn<QString>("name");
    QTest::newRow("there") << true << QString();
    QTest::newRow("missing: this program's own") << false << QStringLiteral("/no");
    QTest::newRow("cut short: this program's own")
        << false << QChar(QChar::Null) + QStringLiteral("/no");
}

void TestChildProcess::child_startsInTheWorkingFolderWhereThereIsOne() {
    QFETCH(bool, exists);
    QFETCH(QString, name);
    const QTemporaryDir folder;
    Child child("describe-folder");
    child.process.setWorkingFolder(folder.path() + name);
    QVERIFY(child.process.start());
    QCOMPARE(child.printedUpToTheEnd(), exists ? folder.path() : QDir::currentPath());
}

void TestChildProcess::child_hasAnOpenEmptyInput() {
    Child child("describe-input");
    QVERIFY(child.process.start());
    QVERIFY(child.input.ownEnd() >= 0);
    QCOMPARE(child.printedUpToTheEnd(), QStringLiteral("open and empty"));
    QCOMPARE(child.input.ownEnd(), -1);
}

void TestChildProcess::stop_killsAChildThatIgnoresTheRequest_data() {
    QTest::addColumn<EndWatch>("watch");
    QTest::newRow("noticed") << EndWatch::Immediate;
    QTest::newRow("polled") << EndWatch::Polling;
}

void TestChildProcess::stop_killsAChildThatIgnoresTheRequest() {
    QFETCH(EndWatch, watch);
    Child child("ignore-terminate", watch);
    QVERIFY(child.process.start());
    QCOMPARE(child.waitForOutput(), QStringLiteral("deaf\n"));
    child.process.stop();
    child.process.stop();
    QVERIFY(child.process.stopRequested());
    child.waitForEnd();
    QCOMPARE(child.process.terminationStatus(), SIGKILL);
    QVERIFY(child.process.killedBySignal());
}

void TestChildProcess::stop_beforeTheStartAndAfterTheEndDoesNothing() {
    Child child("status-42");
    child.process.stop();
    QVERIFY(!child.process.stopRequested());
    QVERIFY(child.process.start());
    child.waitForEnd();
    child.process.stop();
    QVERIFY(!child.process.stopRequested());
    QCOMPARE(child.process.terminationStatus(), 42);
}

void TestChildProcess::stop_leavesNothingOfTheGroup() {
    Child child("deaf-grandchild");
    QVERIFY(child.process.start());
    const QString grandchild = child.waitForOutput().trimmed();
    QVERIFY(!isGone(grandchild));
    child.process.stop();
    child.waitForEnd();
    QCOMPARE(child.process.terminationStatus(), SIGTERM);
    QTRY_VERIFY(isGone(grandchild));
}

void TestChildProcess::otherChildrenOfTheProgramAreNotReaped() {
    const pid_t other = ::fork();
    if (other == 0)
        ::_exit(7);
    Child child("say-nothing");
    QVERIFY(child.process.start());
    child.waitForEnd();
    int status = 0;
    QCOMPARE(::waitpid(other, &status, 0), other);
    QCOMPARE(WEXITSTATUS(status), 7);
}

void TestChildProcess::lostStatus_endsTheRunAllTheSame() {
    // With the signal ignored the system reaps children itself.
    const auto handler = ::signal(SIGCHLD, SIG_IGN);
    Child child("status-42");
    QVERIFY(child.process.start());
    child.waitForEnd();
    ::signal(SIGCHLD, handler);
    QCOMPARE(child.process.terminationStatus(), -1);
}

void TestChildProcess::destruction_killsAndReapsTheChild() {
    QString grandchild;
    pid_t pid = -1;
    {
        Child child("deaf-grandchild");
        QVERIFY(child.process.start());
        pid = child.process.session();
        grandchild = child.waitForOutput().trimmed();
    }
    QTRY_VERIFY(isGone(grandchild));
    QTRY_VERIFY(!isChild(pid));
}

// As one is whose call to the system does not return.
void TestChildProcess::destruction_doesNotWaitForAChildThatIsStuck() {
    bool isStuck = true;
    int looks = 0;
    pid_t pid = -1;
    {
        Child child("ignore-terminate");
        child.process.setReaping([&](pid_t ofChild) {
            ++looks;
            return !isStuck && reapIfEnded(ofChild);
        });
        QVERIFY(child.process.start());
        pid = child.process.session();
    }
    const int looksOfTheDestruction = looks;
    QVERIFY(looksOfTheDestruction > 0);
    QTRY_VERIFY(looks > looksOfTheDestruction + 1);
    QVERIFY(isChild(pid));
    isStuck = false;
    QTRY_VERIFY(!isChild(pid));
}

QTEST_GUILESS_MAIN(TestChildProcess)
#include "tst_child_process.moc"

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "app/RaiseChannel.h"
#include "app/TerminationSignals.h"
#include "app/WorkspaceEntry.h"
#include "app/WorkspaceLock.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <atomic>
#include <csignal>
#include <memory>
#include <sys/stat.h>
#include <thread>

using Outcome = WorkspaceLock::Outcome;

class TestWorkspaceLock : public QObject {
    Q_OBJECT

private slots:
    void oneFolder_isTakenOnce();
    void otherFolders_areFree();
    void aFolderThatIsThere_isTakenOnceFromEverywhere();
    void aFolderMadeByTwo_isHeldByOne();
    void theKey_isTheSameBeforeAndAfterTheFolderExists();
    void theTemporaryFolder_isNotTouched();
    void aRuntimeFolderThatIsMissing_isSaid();
    void aRuntimeFolderOpenToOthers_isLeftAlone();
    void raise_isAnsweredByTheHolder();
    void raise_handsAFileOver_data();
    void raise_handsAFileOver();
    void raise_answersBeforeItOpens();
    void raise_withoutAHolderFindsNobody();
    void raise_takesOverWhatADeadHolderLeft();
    void entry_isFirstWhereTheWorkspaceIsFree();
    void entry_waitsUntilTheHolderListens();
    void entry_followsAHolderThatEnds();
    void entry_givesUpOnAHolderThatNeverListens();
    void entry_saysWhyThereIsNoLock();
    void terminationSignals_arriveAsSignals_data();
    void terminationSignals_arriveAsSignals();
    void terminationSignals_leaveAnIgnoredOneIgnored_data();
    void terminationSignals_leaveAnIgnoredOneIgnored();
    void terminationSignals_comeBackAsTheyWereFound();

private:
    QTemporaryDir runtime_{QDir::tempPath() + QStringLiteral("/velm-XXXXXX")};
};

void TestWorkspaceLock::oneFolder_isTakenOnce() {
    auto first = std::make_unique<WorkspaceLock>(QStringLiteral("/a/b"), runtime_.path());
    WorkspaceLock second(QStringLiteral("/a/b/../b/"), runtime_.path());
    QCOMPARE(first->take(), Outcome::Taken);
    QCOMPARE(second.take(), Outcome::HeldByAnother);
    QCOMPARE(second.socketPath(), first->socketPath());
    first.reset();
    QCOMPARE(second.take(), Outcome::Taken);
}

void TestWorkspaceLock::otherFolders_areFree() {
    WorkspaceLock first(QStringLiteral("/a/b"), runtime_.path());
    WorkspaceLock second(QStringLiteral("/a/c"), runtime_.path());
    QCOMPARE(first.take(), Outcome::Taken);
    QCOMPARE(second.take(), Outcome::Taken);
    QVERIFY(first.socketPath() != second.socketPath());
}

void TestWorkspaceLock::aFolderThatIsThere_isTakenOnceFromEverywhere() {
    const QTemporaryDir workspace;
    const QTemporaryDir otherRuntime;
    auto first = std::make_unique<WorkspaceLock>(workspace.path(), runtime_.path());
    WorkspaceLock second(workspace.path(), otherRuntime.path());
    QCOMPARE(first->take(), Outcome::Taken);
    QCOMPARE(second.take(), Outcome::HeldElsewhere);
    QCOMPARE(enterWorkspace(second, QString()), WorkspaceEntry::Silent);
    first.reset();
    QCOMPARE(second.take(), Outcome::Taken);
}

void TestWorkspaceLock::aFolderMadeByTwo_isHeldByOne() {
    const QTemporaryDir folder;
    const QTemporaryDir otherRuntime;
    const QString workspace = folder.filePath(QStringLiteral("deep/workspace"));
    WorkspaceLock first(workspace, runtime_.path());
    WorkspaceLock second(workspace, otherRuntime.path());
    QCOMPARE(first.take(), Outcome::Taken);
    QCOMPARE(second.take(), Outcome::Taken);
    QVERIFY(QDir(folder.path()).isEmpty());
    QVERIFY(QDir().mkpath(workspace));
    QVERIFY(second.holdFolder());
    QVERIFY(second.holdFolder());
    QVERIFY(!first.holdFolder());
    QCOMPARE(WorkspaceLock(workspace, folder.path()).take(), Outcome::HeldElsewhere);
}

void TestWorkspaceLock::theKey_isTheSameBeforeAndAfterTheFolderExists() {
    const QTemporaryDir folder;
    QVERIFY(QDir().mkpath(folder.filePath(QStringLiteral("real"))));
    const QString link = folder.filePath(QStringLiteral("link"));
    QVERIFY(QFile::link(folder.filePath(QStringLiteral("real")), link));
    const QString workspace = link + QStringLiteral("/deep/workspace");
    const QString before = WorkspaceLock(workspace, runtime_.path()).socketPath();
    QVERIFY(QDir().mkpath(workspace));
    QCOMPARE(WorkspaceLock(workspace, runtime_.path()).socketPath(), before);
    const QString direct = folder.filePath(QStringLiteral("real/deep/workspace"));
    QCOMPARE(WorkspaceLock(direct, runtime_.path()).socketPath(), before);
}

void TestWorkspaceLock::theTemporaryFolder_isNotTouched() {
    const QTemporaryDir folder;
    const QString workspace = folder.filePath(QStringLiteral("workspace"));
    WorkspaceLock lock(workspace, runtime_.path());
    QCOMPARE(lock.take(), Outcome::Taken);
    QVERIFY(!QFile::exists(workspace));
}

void TestWorkspaceLock::aRuntimeFolderThatIsMissing_isSaid() {
    WorkspaceLock lock(QStringLiteral("/a/b"), QStringLiteral("/nowhere/at/all"));
    QCOMPARE(lock.take(), Outcome::Unavailable);
    QVERIFY(!lock.problem().isEmpty());
}

void TestWorkspaceLock::aRuntimeFolderOpenToOthers_isLeftAlone() {
    const QTemporaryDir open;
    QCOMPARE(::chmod(QFile::encodeName(open.path()).constData(), 0777), 0);
    WorkspaceLock lock(QStringLiteral("/a/b"), open.path());
    QCOMPARE(lock.take(), Outcome::Unavailable);
    QVERIFY2(lock.problem().contains(open.path()), qPrintable(lock.problem()));
    QVERIFY(QDir(open.path()).isEmpty());

    const QString own = runtime_.filePath(QStringLiteral("made/for/locks"));
    QCOMPARE(folderForLocks(runtime_.path(), own), runtime_.path());
    QVERIFY(!QFile::exists(own));
    QCOMPARE(folderForLocks(open.path(), own), own);
    QCOMPARE(WorkspaceLock(QStringLiteral("/a/b"), own).take(), Outcome::Taken);
}

void TestWorkspaceLock::raise_isAnsweredByTheHolder() {
    const QString path = runtime_.filePath(QStringLiteral("socket"));
    RaiseServer server(path);
    QSignalSpy asked(&server, &RaiseServer::raiseRequested);
    QSignalSpy opened(&server, &RaiseServer::openRequested);
    std::atomic<bool> answered = false;
    std::thread caller([&] { answered = requestRaise(path) == RaiseAnswer::Raised; });
    QTRY_COMPARE(asked.count(), 1);
    QTRY_VERIFY(answered);
    caller.join();
    QCOMPARE(opened.count(), 0);
}

void TestWorkspaceLock::raise_handsAFileOver_data() {
    QTest::addColumn<QString>("path");
    QTest::newRow("plain") << "/roms/a.bin";
    QTest::newRow("blanks and line breaks") << " /roms/a b\n\tc\r\n ";
    QTest::newRow("letters outside ASCII") << QStringLiteral("/gr\u00f6\u00dfe/\U0001f4be.bin");
    QTest::newRow("percent signs") << "/100%/%41%zz.bin";
    QTest::newRow("long") << QString(4000, QLatin1Char('/'));
}

void TestWorkspaceLock::raise_handsAFileOver() {
    QFETCH(QString, path);
    const QString socket = runtime_.filePath(QStringLiteral("socket"));
    RaiseServer server(socket);
    QSignalSpy asked(&server, &RaiseServer::raiseRequested);
    QSignalSpy opened(&server, &RaiseServer::openRequested);
    std::thread caller([&] { requestRaise(socket, path); });
    QTRY_COMPARE(opened.count(), 1);
    caller.join();
    QCOMPARE(opened.first().first().toString(), path);
    QCOMPARE(asked.count(), 1);
}

void TestWorkspaceLock::raise_answersBeforeItOpens() {
    const QString socket = runtime_.filePath(QStringLiteral("socket"));
    RaiseServer server(socket);
    std::atomic<bool> answered = false;
    bool answeredInTime = false;
    std::thread caller(
        [&] { answered = requestRaise(socket, QStringLiteral("/a")) == RaiseAnswer::Raised; });
    connect(&server, &RaiseServer::openRequested, this, [&] {
        const QDeadlineTimer patience(2000);
        while (!answered && !patience.hasExpired())
            QThread::yieldCurrentThread();
        answeredInTime = answered;
    });
    QTRY_VERIFY(answered);
    caller.join();
    QVERIFY(answeredInTime);
}

void TestWorkspaceLock::raise_withoutAHolderFindsNobody() {
    QCOMPARE(requestRaise(runtime_.filePath(QStringLiteral("nobody"))), RaiseAnswer::Nobody);
    // A process that has ended without clearing up leaves its socket.
    const QString path = runtime_.filePath(QStringLiteral("left behind"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(requestRaise(path), RaiseAnswer::Nobody);
}

void TestWorkspaceLock::raise_takesOverWhatADeadHolderLeft() {
    const QString path = runtime_.filePath(QStringLiteral("left"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    RaiseServer server(path);
    QSignalSpy asked(&server, &RaiseServer::raiseRequested);
    std::atomic<bool> answered = false;
    std::thread caller([&] { answered = requestRaise(path) == RaiseAnswer::Raised; });
    QTRY_VERIFY(answered);
    caller.join();
}

void TestWorkspaceLock::entry_isFirstWhereTheWorkspaceIsFree() {
    WorkspaceLock lock(QStringLiteral("/free"), runtime_.path());
    QCOMPARE(enterWorkspace(lock, QString()), WorkspaceEntry::First);
}

namespace {

/// A start of the program that waits in a thread of its own for what becomes of it.
class SecondStart {
public:
    SecondStart(const QString &folder, const QString &runtime)
        : thread_([this, folder, runtime] {
              WorkspaceLock lock(folder, runtime);
              entry = enterWorkspace(lock, QString());
              isOver = true;
          }) {}
    ~SecondStart() { thread_.join(); }

    std::atomic<bool> isOver = false;
    std::atomic<WorkspaceEntry> entry = WorkspaceEntry::Unavailable;

private:
    std::thread thread_;
};

} // namespace

void TestWorkspaceLock::entry_waitsUntilTheHolderListens() {
    WorkspaceLock lock(QStringLiteral("/starting"), runtime_.path());
    QCOMPARE(lock.take(), Outcome::Taken);
    SecondStart second(QStringLiteral("/starting"), runtime_.path());
    QVERIFY(!QTest::qWaitFor([&] { return second.isOver.load(); }, 200));
    RaiseServer server(lock.socketPath());
    QTRY_VERIFY(second.isOver);
    QCOMPARE(second.entry.load(), WorkspaceEntry::Raised);
}

void TestWorkspaceLock::entry_followsAHolderThatEnds() {
    auto lock = std::make_unique<WorkspaceLock>(QStringLiteral("/ending"), runtime_.path());
    QCOMPARE(lock->take(), Outcome::Taken);
    SecondStart second(QStringLiteral("/ending"), runtime_.path());
    QVERIFY(!QTest::qWaitFor([&] { return second.isOver.load(); }, 200));
    lock.reset();
    QTRY_VERIFY(second.isOver);
    QCOMPARE(second.entry.load(), WorkspaceEntry::First);
}

void TestWorkspaceLock::entry_givesUpOnAHolderThatNeverListens() {
    WorkspaceLock lock(QStringLiteral("/stuck"), runtime_.path());
    QCOMPARE(lock.take(), Outcome::Taken);
    WorkspaceLock second(QStringLiteral("/stuck"), runtime_.path());
    QCOMPARE(enterWorkspace(second, QString(), std::chrono::milliseconds(100)),
             WorkspaceEntry::Silent);
}

void TestWorkspaceLock::entry_saysWhyThereIsNoLock() {
    WorkspaceLock lock(QStringLiteral("/a/b"), QStringLiteral("/nowhere/at/all"));
    QCOMPARE(enterWorkspace(lock, QString()), WorkspaceEntry::Unavailable);
    QVERIFY(!lock.problem().isEmpty());
}

namespace {

void eachSignal() {
    QTest::addColumn<int>("number");
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGHUP") << SIGHUP;
}

} // namespace

void TestWorkspaceLock::terminationSignals_arriveAsSignals_data() {
    eachSignal();
}

void TestWorkspaceLock::terminationSignals_arriveAsSignals() {
    QFETCH(int, number);
    TerminationSignals termination;
    QSignalSpy received(&termination, &TerminationSignals::received);
    std::raise(number);
    std::raise(number);
    QTRY_COMPARE(received.count(), 2);
}

void TestWorkspaceLock::terminationSignals_leaveAnIgnoredOneIgnored_data() {
    eachSignal();
}

void TestWorkspaceLock::terminationSignals_leaveAnIgnoredOneIgnored() {
    QFETCH(int, number);
    const int other = number == SIGINT ? SIGTERM : SIGINT;
    const auto before = std::signal(number, SIG_IGN);
    {
        TerminationSignals termination;
        QSignalSpy received(&termination, &TerminationSignals::received);
        std::raise(number);
        std::raise(other);
        QTRY_COMPARE(received.count(), 1);
    }
    QVERIFY(std::signal(number, before) == SIG_IGN);
}

void TestWorkspaceLock::terminationSignals_comeBackAsTheyWereFound() {
    void (*const handler)(int) = [](int) {};
    const auto before = std::signal(SIGHUP, handler);
    { TerminationSignals termination; }
    QVERIFY(std::signal(SIGHUP, before) == handler);
}

QTEST_GUILESS_MAIN(TestWorkspaceLock)
#include "tst_workspacelock.moc"

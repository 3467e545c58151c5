// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "start/RaiseChannel.h"
#include "start/TerminationSignals.h"
#include "start/WorkspaceEntry.h"
#include "start/WorkspaceLock.h"

#include "support/FileHelpers.h"
#include "support/Privileges.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <algorithm>
#include <array>
#include <atomic>
#include <csignal>
#include <cstddef>
#include <functional>
#include <memory>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

/// Who holds the lock that gave \a holder, or why there is none.
QString nameOf(const Result<WorkspaceLock::Holder> &holder) {
    if (const Failure *failure = holder.failure())
        return failure->reason;
    return *holder == WorkspaceLock::Holder::ThisProcess ? QStringLiteral("this process")
                                                         : QStringLiteral("another");
}

QString holderOf(WorkspaceLock &lock) {
    return nameOf(lock.take());
}

const QString thisProcess = QStringLiteral("this process");
const QString another = QStringLiteral("another");

QString outcomeOf(const Result<WorkspaceEntry> &entry) {
    if (const Failure *failure = entry.failure())
        return failure->reason;
    switch (*entry) {
    case WorkspaceEntry::First:
        return QStringLiteral("first");
    case WorkspaceEntry::Raised:
        return QStringLiteral("raised");
    case WorkspaceEntry::Silent:
        break;
    }
    return QStringLiteral("silent");
}

/// An address in \a folder that no other test has.
RaiseAddress addressIn(const QTemporaryDir &folder, const char *name) {
    const QString path = folder.filePath(QLatin1String(name));
    return {path, path.mid(1)};
}

} // namespace

class TestWorkspaceLock : public QObject {
    Q_OBJECT

private slots:
    void oneFolder_isTakenOnce();
    void otherFolders_areFree();
    void aNameThatIsCutShort_isNoFolder();
    void aFolderThatIsThere_isTakenOnceFromEverywhere();
    void aFolderMadeByTwo_isHeldByOne();
    void theTemporaryFolder_isNotTouched();
    void aRuntimeFolderThatIsMissing_isSaid();
    void aRuntimeFolderOpenToOthers_isLeftAlone();
    void raise_isAnsweredByTheHolder();
    void raise_handsAFileOver_data();
    void raise_handsAFileOver();
    void raise_answersBeforeItOpens();
    void raise_withoutAHolderFindsNobody();
    void raise_takesOverWhatADeadHolderLeft();
    void raise_reachesAHolderWithAnotherRuntimeFolder();
    void raise_isNotForOtherUsers();
    void raise_tellsNothingToOtherUsers();
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
    QCOMPARE(holderOf(*first), thisProcess);
    QCOMPARE(holderOf(second), another);
    QCOMPARE(second.address().path, first->address().path);
    QCOMPARE(second.address().name, first->address().name);
    first.reset();
    QCOMPARE(holderOf(second), thisProcess);
}

void TestWorkspaceLock::otherFolders_areFree() {
    WorkspaceLock first(QStringLiteral("/a/b"), runtime_.path());
    WorkspaceLock second(QStringLiteral("/a/c"), runtime_.path());
    QCOMPARE(holderOf(first), thisProcess);
    QCOMPARE(holderOf(second), thisProcess);
    QVERIFY(first.address().path != second.address().path);
    QVERIFY(first.address().name != second.address().name);
}

void TestWorkspaceLock::aNameThatIsCutShort_isNoFolder() {
    const QTemporaryDir workspace;
    const QTemporaryDir otherRuntime;
    WorkspaceLock cut(workspace.path() + QChar(QChar::Null) + u'x', otherRuntime.path());
    WorkspaceLock whole(workspace.path(), runtime_.path());
    QCOMPARE(holderOf(cut), thisProcess);
    QCOMPARE(holderOf(whole), thisProcess);
}

void TestWorkspaceLock::aFolderThatIsThere_isTakenOnceFromEverywhere() {
    const QTemporaryDir workspace;
    const QTemporaryDir otherRuntime;
    auto first = std::make_unique<WorkspaceLock>(workspace.path(), runtime_.path());
    WorkspaceLock second(workspace.path(), otherRuntime.path());
    QCOMPARE(holderOf(*first), thisProcess);
    QCOMPARE(holderOf(second), another);
    QCOMPARE(outcomeOf(enterWorkspace(second, QString(), std::chrono::milliseconds(100))),
             QStringLiteral("silent"));
    first.reset();
    QCOMPARE(holderOf(second), thisProcess);
}

void TestWorkspaceLock::aFolderMadeByTwo_isHeldByOne() {
    const QTemporaryDir folder;
    const QTemporaryDir otherRuntime;
    const QString workspace = folder.filePath(QStringLiteral("deep/workspace"));
    WorkspaceLock first(workspace, runtime_.path());
    WorkspaceLock second(workspace, otherRuntime.path());
    QCOMPARE(holderOf(first), thisProcess);
    QCOMPARE(holderOf(second), thisProcess);
    QVERIFY(QDir(folder.path()).isEmpty());
    QVERIFY(QDir().mkpath(workspace));
    QCOMPARE(nameOf(second.holdFolder(workspace)), thisProcess);
    QCOMPARE(nameOf(second.holdFolder(workspace)), thisProcess);
    QCOMPARE(nameOf(first.holdFolder(workspace)), another);
    QCOMPARE(holderOf(first), another);
    WorkspaceLock third(workspace, folder.path());
    QCOMPARE(holderOf(third), another);
}

void TestWorkspaceLock::theTemporaryFolder_isNotTouched() {
    const QTemporaryDir folder;
    const QString workspace = folder.filePath(QStringLiteral("workspace"));
    WorkspaceLock lock(workspace, runtime_.path());
    QCOMPARE(holderOf(lock), thisProcess);
    QVERIFY(!QFile::exists(workspace));
}

void TestWorkspaceLock::aRuntimeFolderThatIsMissing_isSaid() {
    WorkspaceLock lock(QStringLiteral("/a/b"), QStringLiteral("/nowhere/at/all"));
    QCOMPARE(holderOf(lock), QStringLiteral("/nowhere/at/all is no folder of this user alone"));
}

void TestWorkspaceLock::aRuntimeFolderOpenToOthers_isLeftAlone() {
    const QTemporaryDir open;
    QCOMPARE(::chmod(QFile::encodeName(open.path()).constData(), 0777), 0);
    WorkspaceLock lock(QStringLiteral("/a/b"), open.path());
    QCOMPARE(holderOf(lock), open.path() + QStringLiteral(" is no folder of this user alone"));
    QVERIFY(QDir(open.path()).isEmpty());

    const QString own = runtime_.filePath(QStringLiteral("made/for/locks"));
    QCOMPARE(folderForLocks(runtime_.path(), own), runtime_.path());
    QVERIFY(!QFile::exists(own));
    QCOMPARE(folderForLocks(open.path(), own), own);
    WorkspaceLock inOwn(QStringLiteral("/a/b"), own);
    QCOMPARE(holderOf(inOwn), thisProcess);
}

void TestWorkspaceLock::raise_isAnsweredByTheHolder() {
    const RaiseAddress address = addressIn(runtime_, "socket");
    RaiseServer server(address);
    QSignalSpy asked(&server, &RaiseServer::raiseRequested);
    QSignalSpy opened(&server, &RaiseServer::openRequested);
    std::atomic<bool> answered = false;
    std::thread caller([&] { answered = requestRaise(address) == RaiseAnswer::Raised; });
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
    QTest::newRow("long") << QString(4000, u'/');
}

void TestWorkspaceLock::raise_handsAFileOver() {
    QFETCH(QString, path);
    const RaiseAddress socket = addressIn(runtime_, "socket");
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
    const RaiseAddress socket = addressIn(runtime_, "socket");
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
    QCOMPARE(requestRaise(addressIn(runtime_, "nobody")), RaiseAnswer::Nobody);
    // A process that has ended without clearing up leaves its socket.
    const RaiseAddress address = addressIn(runtime_, "left behind");
    QVERIFY(writeWholeFile(address.path, {}));
    QCOMPARE(requestRaise(address), RaiseAnswer::Nobody);
}

void TestWorkspaceLock::raise_takesOverWhatADeadHolderLeft() {
    const RaiseAddress address = addressIn(runtime_, "left");
    QVERIFY(writeWholeFile(address.path, {}));
    RaiseServer server(address);
    std::atomic<bool> answered = false;
    std::thread caller([&] { answered = requestRaise(address) == RaiseAnswer::Raised; });
    QTRY_VERIFY(answered);
    caller.join();
}

void TestWorkspaceLock::raise_reachesAHolderWithAnotherRuntimeFolder() {
    const QTemporaryDir otherRuntime;
    const WorkspaceLock first(QStringLiteral("/far"), runtime_.path());
    const WorkspaceLock second(QStringLiteral("/far"), otherRuntime.path());
    QVERIFY(first.address().path != second.address().path);
    QCOMPARE(first.address().name, second.address().name);
    RaiseServer server(first.address());
    QSignalSpy opened(&server, &RaiseServer::openRequested);
    std::atomic<bool> answered = false;
    std::thread caller([&] {
        answered = requestRaise(second.address(), QStringLiteral("/a")) == RaiseAnswer::Raised;
    });
    QTRY_VERIFY(answered);
    caller.join();
    QCOMPARE(opened.count(), 1);
    QCOMPARE(opened.first().first().toString(), QStringLiteral("/a"));
}

namespace {

/// Does \a work in a child process of another user; false where there can be none.
bool asAnotherUser(const std::function<int()> &work, pid_t &child) {
    if (::geteuid() != 0)
        return false;
    child = ::fork();
    if (child == 0)
        ::_exit(::setuid(UnprivilegedUser::nobody) == 0 ? work() : 1);
    return child > 0;
}

int exitCodeOf(pid_t child) {
    int status = -1;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// An abstract socket, connected to \a name or listening there; -1 if that fails.
int abstractSocket(const QByteArray &name, int (*join)(int, const sockaddr *, socklen_t)) {
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    std::copy(name.begin(), name.end(), address.sun_path + 1);
    const auto length = socklen_t(offsetof(sockaddr_un, sun_path) + 1 + size_t(name.size()));
    const int file = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    return join(file, reinterpret_cast<const sockaddr *>(&address), length) == 0 ? file : -1;
}

} // namespace

void TestWorkspaceLock::raise_isNotForOtherUsers() {
    const RaiseAddress address = addressIn(runtime_, "mine");
    RaiseServer server(address);
    QSignalSpy asked(&server, &RaiseServer::raiseRequested);
    pid_t child = 0;
    // It hears nothing but the end, at once.
    const auto call = [name = address.name.toUtf8()] {
        const int line = abstractSocket(name, &::connect);
        char answer = 0;
        return line >= 0 && ::write(line, "\n", 1) == 1 && ::read(line, &answer, 1) <= 0 ? 0 : 2;
    };
    if (!asAnotherUser(call, child))
        QSKIP("only the administrator can act for another user");
    int status = -1;
    QVERIFY(QTest::qWaitFor([&] { return ::waitpid(child, &status, WNOHANG) == child; }));
    QVERIFY(WIFEXITED(status));
    QCOMPARE(WEXITSTATUS(status), 0);
    QCOMPARE(asked.count(), 0);
}

void TestWorkspaceLock::raise_tellsNothingToOtherUsers() {
    const RaiseAddress address = addressIn(runtime_, "theirs");
    std::array<int, 2> isReady = {-1, -1};
    QCOMPARE(::pipe(isReady.data()), 0);
    pid_t child = 0;
    const auto listen = [name = address.name.toUtf8(), isReady] {
        const int line = abstractSocket(name, &::bind);
        if (::listen(line, 1) != 0 || ::write(isReady[1], "", 1) != 1)
            return 2;
        const int caller = ::accept(line, nullptr, nullptr);
        char told = 0;
        return ::read(caller, &told, 1) <= 0 ? 0 : 3;
    };
    if (!asAnotherUser(listen, child))
        QSKIP("only the administrator can act for another user");
    char ready = 1;
    QCOMPARE(::read(isReady[0], &ready, 1), 1);
    QCOMPARE(requestRaise(address, QStringLiteral("/secret")), RaiseAnswer::Silence);
    QCOMPARE(exitCodeOf(child), 0);
}

void TestWorkspaceLock::entry_isFirstWhereTheWorkspaceIsFree() {
    WorkspaceLock lock(QStringLiteral("/free"), runtime_.path());
    QCOMPARE(outcomeOf(enterWorkspace(lock, QString())), QStringLiteral("first"));
}

namespace {

/// A start of the program that waits in a thread of its own for what becomes of it.
class SecondStart {
public:
    SecondStart(const QString &folder, const QString &runtime)
        : thread_([this, folder, runtime] {
              WorkspaceLock lock(folder, runtime);
              entry = outcomeOf(enterWorkspace(lock, QString()));
              isOver = true;
          }) {}
    ~SecondStart() { thread_.join(); }

    QString entry; ///< once it is over
    std::atomic<bool> isOver = false;

private:
    std::thread thread_;
};

} // namespace

void TestWorkspaceLock::entry_waitsUntilTheHolderListens() {
    WorkspaceLock lock(QStringLiteral("/starting"), runtime_.path());
    QCOMPARE(holderOf(lock), thisProcess);
    SecondStart second(QStringLiteral("/starting"), runtime_.path());
    QVERIFY(!QTest::qWaitFor([&] { return second.isOver.load(); }, 200));
    RaiseServer server(lock.address());
    QTRY_VERIFY(second.isOver);
    QCOMPARE(second.entry, QStringLiteral("raised"));
}

void TestWorkspaceLock::entry_followsAHolderThatEnds() {
    auto lock = std::make_unique<WorkspaceLock>(QStringLiteral("/ending"), runtime_.path());
    QCOMPARE(holderOf(*lock), thisProcess);
    SecondStart second(QStringLiteral("/ending"), runtime_.path());
    QVERIFY(!QTest::qWaitFor([&] { return second.isOver.load(); }, 200));
    lock.reset();
    QTRY_VERIFY(second.isOver);
    QCOMPARE(second.entry, QStringLiteral("first"));
}

void TestWorkspaceLock::entry_givesUpOnAHolderThatNeverListens() {
    WorkspaceLock lock(QStringLiteral("/stuck"), runtime_.path());
    QCOMPARE(holderOf(lock), thisProcess);
    WorkspaceLock second(QStringLiteral("/stuck"), runtime_.path());
    QCOMPARE(outcomeOf(enterWorkspace(second, QString(), std::chrono::milliseconds(100))),
             QStringLiteral("silent"));
}

void TestWorkspaceLock::entry_saysWhyThereIsNoLock() {
    WorkspaceLock lock(QStringLiteral("/a/b"), QStringLiteral("/nowhere/at/all"));
    QCOMPARE(outcomeOf(enterWorkspace(lock, QString())),
             QStringLiteral("/nowhere/at/all is no folder of this user alone"));
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

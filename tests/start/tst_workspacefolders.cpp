// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "start/WorkspaceLock.h"

#include "support/FailingCalls.h"
#include "support/FileHelpers.h"
#include "support/Privileges.h"

#include <QDir>
#include <QFile>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <memory>
#include <sys/stat.h>
#include <tuple>
#include <unistd.h>

namespace {

/// True if this process has the lock that gave \a holder; false if another has it.
bool isOurs(const Result<WorkspaceLock::Holder> &holder) {
    if (const Failure *failure = holder.failure())
        qFatal("no lock: %s", qPrintable(failure->reason));
    return *holder == WorkspaceLock::Holder::ThisProcess;
}

bool isTaken(WorkspaceLock &lock) {
    return isOurs(lock.take());
}

} // namespace

/// The lock follows the folder: the settings come to name another one, or it is made anew.
class TestWorkspaceFolders : public QObject {
    Q_OBJECT

private slots:
    void aFolderThatIsMadeAnew_isLockedAnew();
    void aFolderThatCannotBeOpenedNow_isNotGivenUp();
    void aFolderThatCannotBeLookedAtNow_isNobodyElses_data();
    void aFolderThatCannotBeLookedAtNow_isNobodyElses();
    void aFolderThatHasGoneForGood_makesRoomForAnother();
    void aFolderOfWhichNothingIsKnown_isAFailure_data();
    void aFolderOfWhichNothingIsKnown_isAFailure();
    void whatCanBeNoFolder_hasTheFileForItsLock_data();
    void whatCanBeNoFolder_hasTheFileForItsLock();
    void aFolderOfLater_isLockedAndTheEarlierGivenUp_data();
    void aFolderOfLater_isLockedAndTheEarlierGivenUp();
    void aFolderOfLaterThatIsAnothers_isRefused_data();
    void aFolderOfLaterThatIsAnothers_isRefused();
    void aFolderOfLaterThatCannotBeLocked_isAFailure();
    void anotherNameOfTheFolder_isNoOtherFolder();

private:
    QTemporaryDir runtime_;
};

void TestWorkspaceFolders::aFolderThatIsMadeAnew_isLockedAnew() {
    const QTemporaryDir folder;
    const QTemporaryDir otherRuntime;
    const QString workspace = folder.filePath(QStringLiteral("workspace"));
    QVERIFY(QDir().mkpath(workspace));
    WorkspaceLock first(workspace, runtime_.path());
    WorkspaceLock second(workspace, otherRuntime.path());
    QVERIFY(isTaken(first));
    QVERIFY(QFile::rename(workspace, folder.filePath(QStringLiteral("older"))));
    QVERIFY(QDir().mkpath(workspace));
    QVERIFY(isOurs(first.holdFolder(workspace)));
    QVERIFY(!isTaken(second));
}

void TestWorkspaceFolders::aFolderThatCannotBeOpenedNow_isNotGivenUp() {
    const QTemporaryDir folder;
    const QTemporaryDir otherRuntime;
    const QString workspace = folder.filePath(QStringLiteral("workspace"));
    QVERIFY(QDir().mkpath(workspace));
    WorkspaceLock first(workspace, runtime_.path());
    WorkspaceLock second(workspace, otherRuntime.path());
    QVERIFY(isTaken(first));
    {
        const FailingCalls failing("open", 1, EMFILE);
        QVERIFY(isOurs(first.holdFolder(workspace)));
    }
    QVERIFY(!isTaken(second));
    QVERIFY(QFile::rename(workspace, folder.filePath(QStringLiteral("older"))));
    QVERIFY(QDir().mkpath(workspace));
    const FailingCalls failing("open", 1, EMFILE);
    const Result<WorkspaceLock::Holder> holder = first.holdFolder(workspace);
    QVERIFY(failing.hasStruck());
    QVERIFY(holder.failure());
    QCOMPARE(holder.failure()->systemError, EMFILE);
}

void TestWorkspaceFolders::aFolderThatCannotBeLookedAtNow_isNobodyElses_data() {
    QTest::addColumn<QByteArray>("function"); // all, if it is empty
    QTest::addColumn<int>("error");
    QTest::newRow("a disk in trouble") << QByteArray() << EIO;
    QTest::newRow("a share that has lost the name") << QByteArray("stat") << ESTALE;
}

void TestWorkspaceFolders::aFolderThatCannotBeLookedAtNow_isNobodyElses() {
    QFETCH(QByteArray, function);
    QFETCH(int, error);
    const QTemporaryDir folder;
    const QString workspace = folder.filePath(QStringLiteral("workspace"));
    const QString link = folder.filePath(QStringLiteral("link"));
    QVERIFY(QDir().mkpath(workspace));
    QVERIFY(QFile::link(workspace, link));
    for (const QString &name : {workspace, link}) {
        WorkspaceLock lock(name, runtime_.path());
        QVERIFY(isTaken(lock));
        bool struck = true;
        for (int call = 1; struck; ++call) {
            const FailingCalls failing(function, call, error);
            const Result<WorkspaceLock::Holder> holder = lock.holdFolder(name);
            struck = failing.hasStruck();
            const bool isTold = holder.failure() && holder.failure()->systemError == error;
            QVERIFY2(isTold || isOurs(holder), failing.struckCall().constData());
        }
    }
}

// The system says so of a folder that has gone from a share.
void TestWorkspaceFolders::aFolderThatHasGoneForGood_makesRoomForAnother() {
    const QTemporaryDir folder;
    const QTemporaryDir otherRuntime;
    const QString workspace = folder.filePath(QStringLiteral("workspace"));
    QVERIFY(QDir().mkpath(workspace));
    WorkspaceLock first(workspace, runtime_.path());
    QVERIFY(isTaken(first));
    QVERIFY(QFile::rename(workspace, folder.filePath(QStringLiteral("older"))));
    QVERIFY(QDir().mkpath(workspace));
    {
        const FailingCalls failing("fstat", 1, ESTALE);
        QVERIFY(isOurs(first.holdFolder(workspace)));
        QVERIFY(failing.hasStruck());
    }
    WorkspaceLock second(workspace, otherRuntime.path());
    QVERIFY(!isTaken(second));
}

void TestWorkspaceFolders::aFolderOfWhichNothingIsKnown_isAFailure_data() {
    QTest::addColumn<int>("error");
    for (const int error : {EIO, ESTALE, EMFILE, ENFILE, ENOMEM, ETIMEDOUT})
        QTest::addRow("%s", qPrintable(Failure::ofSystem(error).reason)) << error;
}

// The lock's file alone would be half of one.
void TestWorkspaceFolders::aFolderOfWhichNothingIsKnown_isAFailure() {
    QFETCH(int, error);
    const QTemporaryDir workspace;
    const QTemporaryDir otherRuntime;
    bool isTold = false;
    bool struck = true;
    for (int call = 1; struck; ++call) {
        WorkspaceLock first(workspace.path(), runtime_.path());
        bool isHeld = false;
        {
            const FailingCalls failing("open", call, error);
            const Result<WorkspaceLock::Holder> holder = first.take();
            struck = failing.hasStruck();
            isHeld = bool(holder);
            isTold = isTold || (!holder && holder.failure()->systemError == error);
        }
        WorkspaceLock second(workspace.path(), otherRuntime.path());
        QVERIFY(!isHeld || !isTaken(second));
    }
    QVERIFY(isTold);
}

void TestWorkspaceFolders::whatCanBeNoFolder_hasTheFileForItsLock_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("missing") << QStringLiteral("missing");
    QTest::newRow("below a file") << QStringLiteral("file/workspace");
    QTest::newRow("a file") << QStringLiteral("file");
    QTest::newRow("too long a name") << QString(300, u'x');
    QTest::newRow("a loop of links") << QStringLiteral("loop");
    QTest::newRow("may not be read") << QStringLiteral("closed");
    QTest::newRow("in one that may not be entered") << QStringLiteral("closed/workspace");
}

// Or none that could be locked: one that may not be read can be of use all the same.
void TestWorkspaceFolders::whatCanBeNoFolder_hasTheFileForItsLock() {
    QFETCH(QString, name);
    const QTemporaryDir folder;
    const QTemporaryDir runtime;
    QVERIFY(writeWholeFile(folder.filePath(QStringLiteral("file")), {}));
    QVERIFY(QFile::link(QStringLiteral("loop"), folder.filePath(QStringLiteral("loop"))));
    QVERIFY(QDir().mkpath(folder.filePath(QStringLiteral("closed/workspace"))));
    const QByteArray closed = QFile::encodeName(folder.filePath(QStringLiteral("closed")));
    QCOMPARE(::chmod(closed.constData(), 0), 0);
    const auto removable = qScopeGuard([&] { std::ignore = ::chmod(closed.constData(), 0700); });
    for (const QTemporaryDir *each : {&folder, &runtime})
        if (::geteuid() == 0)
            QCOMPARE(::chown(QFile::encodeName(each->path()).constData(), UnprivilegedUser::nobody,
                             gid_t(-1)),
                     0);
    const UnprivilegedUser user;
    QVERIFY(user.isValid());
    WorkspaceLock lock(folder.filePath(name), runtime.path());
    QVERIFY(isTaken(lock));
    QVERIFY(isTaken(lock));
    WorkspaceLock second(folder.filePath(name), runtime.path());
    QVERIFY(!isTaken(second));
}

void TestWorkspaceFolders::aFolderOfLater_isLockedAndTheEarlierGivenUp_data() {
    QTest::addColumn<bool>("isThere");
    QTest::newRow("there") << true;
    QTest::newRow("missing") << false;
}

void TestWorkspaceFolders::aFolderOfLater_isLockedAndTheEarlierGivenUp() {
    QFETCH(bool, isThere);
    const QTemporaryDir earlier;
    const QTemporaryDir parent;
    const QString later = parent.filePath(QStringLiteral("later"));
    if (isThere)
        QVERIFY(QDir().mkpath(later));
    WorkspaceLock lock(earlier.path(), runtime_.path());
    QVERIFY(isTaken(lock));
    QVERIFY(isOurs(lock.holdFolder(later)));
    WorkspaceLock ofLater(later, runtime_.path());
    QVERIFY(!isTaken(ofLater));
    QCOMPARE(lock.address().path, ofLater.address().path);
    QCOMPARE(lock.address().name, ofLater.address().name);
    WorkspaceLock ofEarlier(earlier.path(), runtime_.path());
    QVERIFY(isTaken(ofEarlier));
}

void TestWorkspaceFolders::aFolderOfLaterThatIsAnothers_isRefused_data() {
    QTest::addColumn<bool>("hasOtherRuntime");
    QTest::newRow("with the same runtime folder") << false;
    QTest::newRow("with another runtime folder") << true;
}

void TestWorkspaceFolders::aFolderOfLaterThatIsAnothers_isRefused() {
    QFETCH(bool, hasOtherRuntime);
    const QTemporaryDir otherRuntime;
    const QTemporaryDir earlier;
    const QTemporaryDir later;
    WorkspaceLock lock(earlier.path(), runtime_.path());
    auto ofLater = std::make_unique<WorkspaceLock>(
        later.path(), hasOtherRuntime ? otherRuntime.path() : runtime_.path());
    QVERIFY(isTaken(lock));
    QVERIFY(isTaken(*ofLater));
    QVERIFY(!isOurs(lock.holdFolder(later.path())));
    WorkspaceLock ofEarlier(earlier.path(), otherRuntime.path());
    QVERIFY(!isTaken(ofEarlier));
    ofLater.reset();
    QVERIFY(isOurs(lock.holdFolder(later.path())));
    QVERIFY(isTaken(ofEarlier));
}

// Where everybody may put files, the lock could be taken away.
void TestWorkspaceFolders::aFolderOfLaterThatCannotBeLocked_isAFailure() {
    const QTemporaryDir runtime;
    const QTemporaryDir earlier;
    const QTemporaryDir later;
    WorkspaceLock lock(earlier.path(), runtime.path());
    QVERIFY(isTaken(lock));
    QCOMPARE(::chmod(QFile::encodeName(runtime.path()).constData(), 0777), 0);
    const Result<WorkspaceLock::Holder> holder = lock.holdFolder(later.path());
    QVERIFY(holder.failure());
    QVERIFY(holder.failure()->reason.startsWith(runtime.path()));
    QVERIFY(isTaken(lock));
}

void TestWorkspaceFolders::anotherNameOfTheFolder_isNoOtherFolder() {
    const QTemporaryDir folder;
    const QString workspace = folder.filePath(QStringLiteral("workspace"));
    const QString moved = folder.filePath(QStringLiteral("moved"));
    QVERIFY(QDir().mkpath(workspace));
    WorkspaceLock lock(workspace, runtime_.path());
    QVERIFY(isTaken(lock));
    QVERIFY(QFile::rename(workspace, moved));
    QVERIFY(isOurs(lock.holdFolder(moved)));
    WorkspaceLock underNewName(moved, runtime_.path());
    QVERIFY(!isTaken(underNewName));
    QCOMPARE(lock.address().path, underNewName.address().path);
    WorkspaceLock underOldName(workspace, runtime_.path());
    QVERIFY(isTaken(underOldName));
    QVERIFY(isTaken(lock));
}

QTEST_GUILESS_MAIN(TestWorkspaceFolders)
#include "tst_workspacefolders.moc"

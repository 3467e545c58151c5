// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/PrivateFolder.h"

#include "base/Result.h"

#include "support/FailingCalls.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <tuple>

class TestPrivateFolder : public QObject {
    Q_OBJECT

private slots:
    void newFolders_areTheUsersAlone_data();
    void newFolders_areTheUsersAlone();
    void folderThatCannotBeGivenToItsOwner_doesNotStay();
    void folderOfAKilledProgram_stays();
    void newFolders_areOpenToNoAccessList();
    void folderMadeMeanwhile_isTaken();
    void existingFolders_stayAsTheyAre();
    void whatCannotBeMade_isTold();
};

namespace {

mode_t permissionsOf(const QString &path) {
    struct stat facts = {};
    return ::stat(QFile::encodeName(path).constData(), &facts) == 0 ? facts.st_mode & 0777U : 0U;
}

/// Makes the folder at \a path with the umask \a mask, which stays as it is.
Result<void> makeUnder(mode_t mask, const QString &path) {
    const mode_t before = ::umask(mask);
    Result<void> made = makePrivateFolder(path);
    return ::umask(before) == mask ? made : Failure{QStringLiteral("the umask was changed")};
}

/// As the system keeps an access list: its version, then what, which rights and whose. The user,
/// the one of number 12345 and the group may do everything, and all others may look.
QByteArray accessList() {
    return QByteArray::fromHex("02000000"
                               "01000700ffffffff"
                               "0200070039300000"
                               "04000700ffffffff"
                               "10000700ffffffff"
                               "20000500ffffffff");
}

} // namespace

void TestPrivateFolder::newFolders_areTheUsersAlone_data() {
    QTest::addColumn<uint>("mask");
    QTest::newRow("nothing is taken from anybody") << 0U;
    QTest::newRow("the owner may not write") << 0277U;
    QTest::newRow("all is taken") << 0777U;
}

void TestPrivateFolder::newFolders_areTheUsersAlone() {
    QFETCH(uint, mask);
    const QTemporaryDir home;
    QVERIFY(makeUnder(mode_t(mask), home.filePath(QStringLiteral("a/b/c"))));
    for (const char *folder : {"a", "a/b", "a/b/c"})
        QCOMPARE(permissionsOf(home.filePath(QLatin1String(folder))), mode_t(0700));
}

void TestPrivateFolder::folderThatCannotBeGivenToItsOwner_doesNotStay() {
    bool chmodHasFailed = false;
    bool struck = true;
    for (int call = 1; struck; ++call) {
        const QTemporaryDir home;
        const QString folder = home.filePath(QStringLiteral("a/b"));
        Result<void> made;
        QByteArray name;
        {
            const FailingCalls failing(call, FailingCalls::Mishap::Fails, EIO);
            made = makeUnder(0777, folder);
            struck = failing.hasStruck();
            name = failing.struckCall();
        }
        QVERIFY2(!made || permissionsOf(folder) == 0700U, name.constData());
        QVERIFY2(made || made.failure()->systemError == EIO, name.constData());
        chmodHasFailed = chmodHasFailed || (!made && name == "fchmodat");
        QVERIFY2(makeUnder(0777, folder), name.constData());
        for (const char *each : {"a", "a/b"})
            QVERIFY2(permissionsOf(home.filePath(QLatin1String(each))) == 0700U, name.constData());
    }
    QVERIFY(chmodHasFailed);
}

// Whoever is dead removes nothing either.
void TestPrivateFolder::folderOfAKilledProgram_stays() {
    bool hasMadeOne = false;
    bool struck = true;
    for (int call = 1; struck; ++call) {
        const QTemporaryDir home;
        const QString folder = home.filePath(QStringLiteral("a"));
        QByteArray name;
        {
            const FailingCalls killing(call, FailingCalls::Mishap::Kills, EIO);
            std::ignore = makeUnder(0777, folder);
            struck = killing.hasStruck();
            name = killing.struckCall();
        }
        hasMadeOne = hasMadeOne || name == "lstat";
        QVERIFY2(!hasMadeOne || QDir(folder).exists(), name.constData());
    }
    QVERIFY(hasMadeOne);
}

void TestPrivateFolder::newFolders_areOpenToNoAccessList() {
    const QTemporaryDir home;
    const QByteArray list = accessList();
    if (::setxattr(QFile::encodeName(home.path()).constData(), "system.posix_acl_default",
                   list.constData(), size_t(list.size()), 0) != 0)
        QSKIP("the file system has no access lists");
    QVERIFY(makePrivateFolder(home.filePath(QStringLiteral("a/b"))));
    // Where there is a list, what the group may do is the most that anybody in it may.
    for (const char *folder : {"a", "a/b"})
        QCOMPARE(permissionsOf(home.filePath(QLatin1String(folder))), mode_t(0700));
}

void TestPrivateFolder::folderMadeMeanwhile_isTaken() {
    const QTemporaryDir home;
    const QString folder = home.filePath(QStringLiteral("a/b"));
    bool struck = true;
    for (int call = 1; struck; ++call) {
        QVERIFY(QDir(home.filePath(QStringLiteral("a"))).removeRecursively());
        const FailingCalls meanwhile(call, [&] { QVERIFY(QDir().mkpath(folder)); });
        QVERIFY(makePrivateFolder(folder));
        struck = meanwhile.hasStruck();
    }
}

void TestPrivateFolder::existingFolders_stayAsTheyAre() {
    const QTemporaryDir home;
    const QString open = home.filePath(QStringLiteral("open"));
    QVERIFY(QDir().mkdir(open));
    QCOMPARE(::chmod(QFile::encodeName(open).constData(), 0755), 0);
    QVERIFY(makePrivateFolder(open + QStringLiteral("/closed")));
    QVERIFY(makePrivateFolder(open));
    QCOMPARE(permissionsOf(open), mode_t(0755));
    QCOMPARE(permissionsOf(open + QStringLiteral("/closed")), mode_t(0700));
}

void TestPrivateFolder::whatCannotBeMade_isTold() {
    QVERIFY(!makePrivateFolder(QString()));
    const Result<void> made = makePrivateFolder(QStringLiteral("/dev/null/folder"));
    QVERIFY(!made);
    QCOMPARE(made.failure()->reason, QStringLiteral("Not a directory"));
    const QTemporaryDir home;
    QVERIFY(!makePrivateFolder(home.path() + QChar(QChar::Null) + u'x'));
    QVERIFY(!makePrivateFolder(home.filePath(QStringLiteral("a")) + QChar(QChar::Null) + u'x'));
    QVERIFY(QDir(home.path()).isEmpty());
}

QTEST_APPLESS_MAIN(TestPrivateFolder)
#include "tst_privatefolder.moc"

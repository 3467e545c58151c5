// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/PrivateFolder.h"

#include "base/Result.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

class TestPrivateFolder : public QObject {
    Q_OBJECT

private slots:
    void newFolders_areTheUsersAlone();
    void existingFolders_stayAsTheyAre();
    void whatCannotBeMade_isTold();
};

namespace {

mode_t permissionsOf(const QString &path) {
    struct stat facts = {};
    return ::stat(QFile::encodeName(path).constData(), &facts) == 0 ? facts.st_mode & 0777U : 0U;
}

} // namespace

void TestPrivateFolder::newFolders_areTheUsersAlone() {
    const QTemporaryDir home;
    const mode_t mask = ::umask(0);
    QVERIFY(makePrivateFolder(home.filePath(QStringLiteral("a/b/c"))));
    QCOMPARE(::umask(mask), mode_t(0)); // as it was
    for (const char *folder : {"a", "a/b", "a/b/c"})
        QCOMPARE(permissionsOf(home.filePath(QLatin1String(folder))), mode_t(0700));
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
}

QTEST_APPLESS_MAIN(TestPrivateFolder)
#include "tst_privatefolder.moc"

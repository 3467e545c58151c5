// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "start/WorkspaceLock.h"

#include "support/FailingCalls.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>

namespace {

/// The path that the lock of \a folder listens at, which tells its key.
QString keyOf(const QString &folder) {
    return WorkspaceLock(folder, QStringLiteral("/run")).address().path;
}

} // namespace

/// By which key the lock of a folder is found, whatever name the folder is given.
class TestWorkspaceKey : public QObject {
    Q_OBJECT

private slots:
    void theKey_isTheSameBeforeAndAfterTheFolderExists();
    void theKey_isTheSameThoughALookFails();
    void foldersThatCannotBeLookedAt_haveKeysOfTheirOwn();
};

void TestWorkspaceKey::theKey_isTheSameBeforeAndAfterTheFolderExists() {
    const QTemporaryDir folder;
    QVERIFY(QDir().mkpath(folder.filePath(QStringLiteral("real"))));
    const QString link = folder.filePath(QStringLiteral("link"));
    QVERIFY(QFile::link(folder.filePath(QStringLiteral("real")), link));
    const QString workspace = link + QStringLiteral("/deep/workspace");
    const QString before = keyOf(workspace);
    QVERIFY(QDir().mkpath(workspace));
    QCOMPARE(keyOf(workspace), before);
    const QString direct = folder.filePath(QStringLiteral("real/deep/workspace"));
    QCOMPARE(keyOf(direct), before);
}

// Where links lead cannot be known without asking.
void TestWorkspaceKey::theKey_isTheSameThoughALookFails() {
    const QTemporaryDir folder;
    const QString real =
        QFileInfo(folder.path()).canonicalFilePath() + QStringLiteral("/workspace");
    const QString link = folder.filePath(QStringLiteral("link"));
    QVERIFY(QDir().mkdir(real));
    QVERIFY(QFile::link(real, link));
    const QString usual = keyOf(real);
    for (const QString &name : {real, link}) {
        bool struck = true;
        for (int call = 1; struck; ++call) {
            const FailingCalls failing(call, FailingCalls::Mishap::Fails, EIO);
            const QString found = keyOf(name);
            struck = failing.hasStruck();
            if (name == real || failing.struckCall() != "realpath")
                QVERIFY2(found == usual, failing.struckCall().constData());
        }
    }
}

void TestWorkspaceKey::foldersThatCannotBeLookedAt_haveKeysOfTheirOwn() {
    const QTemporaryDir folder;
    const QString loop = folder.filePath(QStringLiteral("loop"));
    QVERIFY(QFile::link(loop, loop));
    QVERIFY(keyOf(loop + QStringLiteral("/a")) != keyOf(loop + QStringLiteral("/b")));
}

QTEST_GUILESS_MAIN(TestWorkspaceKey)
#include "tst_workspacekey.moc"

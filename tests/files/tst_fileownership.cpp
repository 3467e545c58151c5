// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/FileOwnership.h"
#include "support/FailingCalls.h"
#include "support/FileHelpers.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

class TestFileOwnership : public QObject {
    Q_OBJECT

private slots:
    void init() {
        folder_ = std::make_unique<QTemporaryDir>();
        QVERIFY(writeWholeFile(path("file"), "x"));
        QVERIFY(QFile::link(path("file"), path("link")));
    }
    void ownLink_isFollowed();
    void linkOfSomebodyElse_isForeign();
    void linkInAFolderOfSomebodyElse_isForeign();
    void everyLinkOnTheWay_isLookedAt_data();
    void everyLinkOnTheWay_isLookedAt();
    void linksThatLeadNowhere_areFollowed();
    void linkThatCannotBeLookedAt_isNotFollowed();
    void folder_thatOthersMayWriteInto_data();
    void folder_thatOthersMayWriteInto();
    void ownFolder_isNoLinkAndNobodyElses();

private:
    static constexpr uid_t somebodyElse = 12345;

    QString path(const char *name) const { return folder_->filePath(QLatin1String(name)); }
    /// Makes a link of the user's at \a name that leads to \a target, word by word.
    void makeLink(const char *name, const char *target) const {
        QCOMPARE(::symlink(target, encoded(path(name)).constData()), 0);
    }
    void giveAway(const char *name) const {
        QCOMPARE(::lchown(encoded(path(name)).constData(), somebodyElse, gid_t(-1)), 0);
    }
    static QByteArray encoded(const QString &path) { return QFile::encodeName(path); }

    std::unique_ptr<QTemporaryDir> folder_;
};

void TestFileOwnership::ownLink_isFollowed() {
    QCOMPARE(*linkAt(path("link")), LinkKind::Own);
    QCOMPARE(*linkAt(path("file")), LinkKind::None);
    QCOMPARE(*linkAt(path("nothing")), LinkKind::None);
    QCOMPARE(*linkAt(QString()), LinkKind::None);
}

void TestFileOwnership::linkOfSomebodyElse_isForeign() {
    if (::geteuid() != 0)
        QSKIP("only root can give a file away");
    giveAway("link");
    QCOMPARE(*linkAt(path("link")), LinkKind::Foreign);
    giveAway("file");
    QCOMPARE(*linkAt(path("file")), LinkKind::None); // no link at all
}

void TestFileOwnership::linkInAFolderOfSomebodyElse_isForeign() {
    if (::geteuid() != 0)
        QSKIP("only root can give a folder away");
    QCOMPARE(::chown(encoded(folder_->path()).constData(), somebodyElse, gid_t(-1)), 0);
    QCOMPARE(*linkAt(path("link")), LinkKind::Foreign);
    QCOMPARE(*linkAt(path("file")), LinkKind::None);
    QVERIFY(othersMayWriteInto(folder_->path()));
}

void TestFileOwnership::everyLinkOnTheWay_isLookedAt_data() {
    QTest::addColumn<QByteArray>("target");
    QTest::addColumn<QByteArray>("foreign");
    QTest::newRow("all of the user's") << QByteArray("second") << QByteArray();
    QTest::newRow("to a link") << QByteArray("second") << QByteArray("second");
    QTest::newRow("to a link to a link") << QByteArray("second") << QByteArray("third");
    QTest::newRow("to a link in a folder") << QByteArray("folder/fourth") << QByteArray("folder");
    QTest::newRow("through a link to a folder")
        << QByteArray("aside/../file") << QByteArray("aside");
    QTest::newRow("to a file of somebody else's") << QByteArray("second") << QByteArray("file");
}

void TestFileOwnership::everyLinkOnTheWay_isLookedAt() {
    if (::geteuid() != 0)
        QSKIP("only root can give a link away");
    QFETCH(const QByteArray, target);
    QFETCH(const QByteArray, foreign);
    QVERIFY(QDir(folder_->path()).mkdir(QStringLiteral("folder")));
    makeLink("second", "./folder/../third");
    makeLink("third", encoded(path("file")).constData());
    makeLink("folder/fourth", "../file");
    makeLink("aside", "folder");
    makeLink("first", target.constData());
    QCOMPARE(*linkAt(path("first")), LinkKind::Own);
    if (!foreign.isEmpty())
        giveAway(foreign.constData());
    const bool isForeign = !foreign.isEmpty() && foreign != "file";
    QCOMPARE(*linkAt(path("first")), isForeign ? LinkKind::Foreign : LinkKind::Own);
    makeLink("absolute", encoded(path("first")).constData());
    QCOMPARE(*linkAt(path("absolute")), *linkAt(path("first")));
}

void TestFileOwnership::linksThatLeadNowhere_areFollowed() {
    makeLink("dangling", "nothing/at/all");
    QCOMPARE(*linkAt(path("dangling")), LinkKind::Own);
    makeLink("here", "there");
    makeLink("there", "here");
    QCOMPARE(*linkAt(path("here")), LinkKind::Own);
    if (::geteuid() != 0)
        QSKIP("only root can give a link away");
    makeLink("on", "dangling");
    giveAway("dangling");
    QCOMPARE(*linkAt(path("on")), LinkKind::Foreign);
    giveAway("there");
    QCOMPARE(*linkAt(path("here")), LinkKind::Foreign);
}

void TestFileOwnership::linkThatCannotBeLookedAt_isNotFollowed() {
    if (::geteuid() != 0)
        QSKIP("only root can give a link away");
    makeLink("on", "link");
    giveAway("link");
    bool hasStruck = true;
    int call = 0;
    while (hasStruck) {
        const FailingCalls failing(++call, FailingCalls::Mishap::Fails, EIO);
        const Result<LinkKind> link = linkAt(path("on"));
        hasStruck = failing.hasStruck();
        QCOMPARE(link.failure() ? link.failure()->systemError : 0, hasStruck ? EIO : 0);
        QVERIFY(!mayFollow(path("on")));
    }
    QVERIFY(call > 4);
}

void TestFileOwnership::folder_thatOthersMayWriteInto_data() {
    QTest::addColumn<mode_t>("mode");
    QTest::addColumn<bool>("others");
    QTest::newRow("the user's alone") << mode_t(0700) << false;
    QTest::newRow("read by all") << mode_t(0755) << false;
    QTest::newRow("written by a group") << mode_t(0770) << true;
    QTest::newRow("written by all") << mode_t(0777) << true;
    QTest::newRow("like the folder for temporary files") << mode_t(01777) << true;
}

void TestFileOwnership::folder_thatOthersMayWriteInto() {
    QFETCH(const mode_t, mode);
    QCOMPARE(::chmod(encoded(folder_->path()).constData(), mode), 0);
    QTEST(othersMayWriteInto(folder_->path()), "others");
    QVERIFY(!othersMayWriteInto(path("nothing")));
}

void TestFileOwnership::ownFolder_isNoLinkAndNobodyElses() {
    const QString folder = folder_->path();
    QVERIFY(QFile::link(folder, path("link to the folder")));
    QVERIFY(isOwnFolder(folder));
    QVERIFY(!isOwnFolder(path("link to the folder")));
    QVERIFY(!isOwnFolder(path("file")));
    QVERIFY(!isOwnFolder(path("nothing")));
    QVERIFY(!isOwnFolder(QString()));
    for (const mode_t mode : {mode_t(0720), mode_t(0702)}) {
        QCOMPARE(::chmod(encoded(folder).constData(), mode), 0);
        QVERIFY(!isOwnFolder(folder));
    }
    QCOMPARE(::chmod(encoded(folder).constData(), 0700), 0);
    if (::geteuid() != 0)
        QSKIP("only root can give a folder away");
    QCOMPARE(::chown(encoded(folder).constData(), somebodyElse, gid_t(-1)), 0);
    QVERIFY(!isOwnFolder(folder));
}

QTEST_APPLESS_MAIN(TestFileOwnership)
#include "tst_fileownership.moc"

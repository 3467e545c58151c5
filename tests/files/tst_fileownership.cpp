// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/FileOwnership.h"
#include "support/FileHelpers.h"

#include <QTemporaryDir>
#include <QTest>

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
    void folder_thatOthersMayWriteInto_data();
    void folder_thatOthersMayWriteInto();
    void ownFolder_isNoLinkAndNobodyElses();

private:
    static constexpr uid_t somebodyElse = 12345;

    QString path(const char *name) const { return folder_->filePath(QLatin1String(name)); }
    static QByteArray encoded(const QString &path) { return QFile::encodeName(path); }

    std::unique_ptr<QTemporaryDir> folder_;
};

void TestFileOwnership::ownLink_isFollowed() {
    QVERIFY(isNoForeignLink(path("link")));
    QVERIFY(isNoForeignLink(path("file")));
    QVERIFY(isNoForeignLink(path("nothing")));
    QVERIFY(isNoForeignLink(QString()));
}

void TestFileOwnership::linkOfSomebodyElse_isForeign() {
    if (::geteuid() != 0)
        QSKIP("only root can give a file away");
    QCOMPARE(::lchown(encoded(path("link")).constData(), somebodyElse, gid_t(-1)), 0);
    QVERIFY(!isNoForeignLink(path("link")));
    QCOMPARE(::chown(encoded(path("file")).constData(), somebodyElse, gid_t(-1)), 0);
    QVERIFY(isNoForeignLink(path("file"))); // no link at all
}

void TestFileOwnership::linkInAFolderOfSomebodyElse_isForeign() {
    if (::geteuid() != 0)
        QSKIP("only root can give a folder away");
    QCOMPARE(::chown(encoded(folder_->path()).constData(), somebodyElse, gid_t(-1)), 0);
    QVERIFY(!isNoForeignLink(path("link")));
    QVERIFY(isNoForeignLink(path("file")));
    QVERIFY(othersMayWriteInto(folder_->path()));
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

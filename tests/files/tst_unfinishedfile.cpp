// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/UnfinishedFile.h"

#include "support/FailingCalls.h"
#include "support/FileHelpers.h"
#include "support/Privileges.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <memory>
#include <sys/stat.h>

/// Files that have yet to take their places, and those that never will.
class TestUnfinishedFile : public QObject {
    Q_OBJECT

private slots:
    void init() { folder_ = std::make_unique<QTemporaryDir>(); }
    void unfinished_isRemovedByItsMarkAlone();
    void allUnfinishedOfAFolder_areRemovedByTheirMark();
    void unfinished_thatIsBeingWrittenStays();
    void unfinished_thatIsReadOnlyIsRemoved();

private:
    QString path() const { return folder_->filePath(QStringLiteral("a.bin")); }
    QStringList filesLeft() const { return QDir(folder_->path()).entryList(QDir::Files); }

    std::unique_ptr<QTemporaryDir> folder_;
};

void TestUnfinishedFile::unfinished_isRemovedByItsMarkAlone() {
    const QStringList others = {QStringLiteral("a.bin"),
                                QStringLiteral("a.bin.velm-aside-12345"),
                                QStringLiteral("a.bin.velm-aside-1234567"),
                                QStringLiteral("a.bin.velm-backup"),
                                QStringLiteral("b.bin.velm-aside-123456"),
                                QStringLiteral("xa.bin.velm-aside-123456")};
    for (const QString &name : others)
        QVERIFY(writeWholeFile(folder_->filePath(name), "x"));
    QVERIFY(QDir(folder_->path()).mkdir(QStringLiteral("a.bin.velm-aside-folder")));
    QVERIFY(QFile::link(path(), path() + QStringLiteral(".velm-aside-linked")));
    QVERIFY(writeWholeFile(path() + QStringLiteral(".velm-aside-abc123"), "left behind"));
    removeUnfinished(path());
    QVERIFY(QFileInfo(path() + QStringLiteral(".velm-aside-folder")).isDir());
    QVERIFY(QFileInfo(path() + QStringLiteral(".velm-aside-linked")).isSymLink());
    QFile::remove(path() + QStringLiteral(".velm-aside-linked"));
    QCOMPARE(filesLeft(), others);
}

void TestUnfinishedFile::allUnfinishedOfAFolder_areRemovedByTheirMark() {
    const QStringList others = {QStringLiteral("a.bin"), QStringLiteral("a.bin.velm-aside-12345"),
                                QStringLiteral("b.bin.velm-aside-1234567")};
    for (const QString &name : others + QStringList{QStringLiteral("a.bin.velm-aside-abc123"),
                                                    QStringLiteral("b.bin.velm-aside-abc123")})
        QVERIFY(writeWholeFile(folder_->filePath(name), "x"));
    removeAllUnfinished(folder_->path());
    QCOMPARE(filesLeft(), others);
}

void TestUnfinishedFile::unfinished_thatIsBeingWrittenStays() {
    const FailingCalls withoutUnnamed(1, FailingCalls::Mishap::Fails, EOPNOTSUPP);
    Result<UnfinishedFile> file = UnfinishedFile::beside(QFile::encodeName(path()));
    QVERIFY(file);
    QCOMPARE(filesLeft().size(), 1);
    removeUnfinished(path());
    QCOMPARE(filesLeft().size(), 1);
    QVERIFY(file->takePlace());
    QCOMPARE(filesLeft(), QStringList(QStringLiteral("a.bin")));
}

void TestUnfinishedFile::unfinished_thatIsReadOnlyIsRemoved() {
    QCOMPARE(::chmod(QFile::encodeName(folder_->path()).constData(), 0777), 0);
    const UnprivilegedUser user;
    QVERIFY(user.isValid());
    const QString left = path() + QStringLiteral(".velm-aside-abc123");
    QVERIFY(writeWholeFile(left, "left behind"));
    QCOMPARE(::chmod(QFile::encodeName(left).constData(), 0444), 0);
    removeUnfinished(path());
    QCOMPARE(filesLeft(), QStringList());
}

QTEST_GUILESS_MAIN(TestUnfinishedFile)
#include "tst_unfinishedfile.moc"

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/FilePatching.h"
#include "support/FileHelpers.h"
#include "support/Privileges.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <fcntl.h>
#include <functional>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

class TestFilePatching : public QObject {
    Q_OBJECT

private slots:
    void init() {
        folder_ = std::make_unique<QTemporaryDir>();
        path_ = folder_->filePath(QStringLiteral("image"));
        QVERIFY(writeWholeFile(path_, "0123456789"));
        known_ = *FileStamp::of(path_);
    }
    void patch_writesTheChangedBytes_data();
    void patch_writesTheChangedBytes();
    void patch_touchesNoOtherByte();
    void patch_givesTheNewStamp();
    void patch_keepsTheFile();
    void otherFile_isLeftAlone_data();
    void otherFile_isLeftAlone();
    void fullDisk_isAFailure();

private:
    QByteArray content() const { return readWholeFile(path_); }
    QByteArray encoded() const { return QFile::encodeName(path_); }

    std::unique_ptr<QTemporaryDir> folder_;
    QString path_;
    FileStamp known_;
};

void TestFilePatching::patch_writesTheChangedBytes_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<qint64>("offset");
    QTest::addColumn<qint64>("length");
    QTest::newRow("the first byte") << QByteArray("x123456789") << qint64(0) << qint64(1);
    QTest::newRow("the last byte") << QByteArray("012345678x") << qint64(9) << qint64(1);
    QTest::newRow("some bytes") << QByteArray("012xyz6789") << qint64(3) << qint64(3);
    QTest::newRow("no byte") << QByteArray("0123456789") << qint64(4) << qint64(0);
    QTest::newRow("more bytes") << QByteArray("012345678xyz") << qint64(9) << qint64(3);
    QTest::newRow("bytes behind the last") << QByteArray("0123456789xy") << qint64(10) << qint64(2);
    QTest::newRow("more bytes than were told")
        << QByteArray("0123456789xy") << qint64(4) << qint64(1);
    QTest::newRow("fewer bytes") << QByteArray("0123456x") << qint64(7) << qint64(3);
    QTest::newRow("none left") << QByteArray() << qint64(0) << qint64(10);
}

void TestFilePatching::patch_writesTheChangedBytes() {
    QFETCH(const QByteArray, bytes);
    QFETCH(const qint64, offset);
    QFETCH(const qint64, length);
    QVERIFY(patchFile(path_, known_, bytes, {offset, length}));
    QCOMPARE(content(), bytes);
}

void TestFilePatching::patch_touchesNoOtherByte() {
    QVERIFY(patchFile(path_, known_, "xxxxxxxxxx", {4, 2}));
    QCOMPARE(content(), QByteArray("0123xx6789"));
}

void TestFilePatching::patch_givesTheNewStamp() {
    const Result<FileStamp> first = patchFile(path_, known_, "01234567890123456789", {10, 10});
    QVERIFY(first);
    QCOMPARE(*first, *FileStamp::of(path_));
    const Result<FileStamp> second = patchFile(path_, *first, "x1234567890123456789", {0, 1});
    QVERIFY(second);
    QCOMPARE(content(), QByteArray("x1234567890123456789"));
}

void TestFilePatching::patch_keepsTheFile() {
    const quint64 inode = known_.inode;
    QVERIFY(::chmod(encoded().constData(), 0640) == 0);
    QVERIFY(patchFile(path_, known_, "x123456789", {0, 1}));
    QCOMPARE(FileStamp::of(path_)->inode, inode);
    struct stat facts = {};
    QCOMPARE(::stat(encoded().constData(), &facts), 0);
    QCOMPARE(facts.st_mode & 07777U, 0640U);
}

void TestFilePatching::otherFile_isLeftAlone_data() {
    using Spoil = std::function<void(const QString &path)>;
    QTest::addColumn<Spoil>("spoil");
    const auto row = [](const char *name, const Spoil &spoil) { QTest::newRow(name) << spoil; };
    row("longer", [](const QString &path) { writeWholeFile(path, "0123456789+"); });
    row("touched", [](const QString &path) {
        const timespec times[] = {{1, 0}, {1, 0}};
        ::utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times, 0);
    });
    row("another file of that name", [](const QString &path) {
        QFile::remove(path);
        writeWholeFile(path + QStringLiteral("2"), "");
        writeWholeFile(path, "0123456789");
    });
    row("a file of two names", [](const QString &path) {
        const QByteArray name = QFile::encodeName(path);
        ::link(name.constData(), (name + "2").constData());
    });
    row("a link", [](const QString &path) {
        QFile::rename(path, path + QStringLiteral("2"));
        QFile::link(path + QStringLiteral("2"), path);
    });
    row("a folder", [](const QString &path) {
        QFile::remove(path);
        QDir().mkdir(path);
    });
    row("nothing", [](const QString &path) { QFile::remove(path); });
}

void TestFilePatching::otherFile_isLeftAlone() {
    QFETCH(const std::function<void(const QString &path)>, spoil);
    spoil(path_);
    const QByteArray before = content();
    QVERIFY(!patchFile(path_, known_, "xxxxxxxxxx", {0, 10}));
    QCOMPARE(content(), before);
}

void TestFilePatching::fullDisk_isAFailure() {
    const FileSizeLimit limit(12);
    const Result<FileStamp> patched = patchFile(path_, known_, QByteArray(20, 'x'), {10, 10});
    QVERIFY(patched.failure());
    QCOMPARE(patched.failure()->systemError, EFBIG);
}

QTEST_APPLESS_MAIN(TestFilePatching)
#include "tst_filepatching.moc"

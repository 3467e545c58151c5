// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/StampedFile.h"

#include "support/FailingCalls.h"
#include "support/FileHelpers.h"

#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <optional>

class TestStampedFile : public QObject {
    Q_OBJECT

private slots:
    void file_isReadWithItsStamp();
    void fileThatIsWrittenMeanwhile_neverHasTheNewStamp();
    void fileThatCannotBeLookedAt_isAFailure();
    void missingFile_isAFailure();
};

void TestStampedFile::file_isReadWithItsStamp() {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("rom.bin"));
    QVERIFY(writeWholeFile(path, "abc"));
    const Result<StampedFile> file = loadStamped(path);
    QVERIFY(file);
    QCOMPARE(file->path, path);
    QCOMPARE(*file->bytes, QByteArray("abc"));
    QVERIFY(file->stamp && file->stamp == FileStamp::of(path));
}

// It may have the new bytes and the older stamp, which only makes it be read once more.
void TestStampedFile::fileThatIsWrittenMeanwhile_neverHasTheNewStamp() {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("rom.bin"));
    bool hasStruck = true;
    for (int call = 1; hasStruck; ++call) {
        QVERIFY(writeWholeFile(path, "abc"));
        std::optional<Result<StampedFile>> file;
        {
            const FailingCalls meanwhile(call, [&] { QVERIFY(writeWholeFile(path, "longer")); });
            file = loadStamped(path);
            hasStruck = meanwhile.hasStruck();
        }
        QVERIFY(*file);
        const bool isNewest = *(*file)->bytes == readWholeFile(path);
        QVERIFY(isNewest || (*file)->stamp != FileStamp::of(path));
    }
}

// Whoever has a file without its stamp cannot tell whether it is as it was.
void TestStampedFile::fileThatCannotBeLookedAt_isAFailure() {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("rom.bin"));
    QVERIFY(writeWholeFile(path, "abc"));
    const FailingCalls failing("stat", 1, EIO);
    const Result<StampedFile> file = loadStamped(path);
    QVERIFY(!file);
    QCOMPARE(file.failure()->systemError, EIO);
}

void TestStampedFile::missingFile_isAFailure() {
    const QTemporaryDir folder;
    const Result<StampedFile> file = loadStamped(folder.filePath(QStringLiteral("no")));
    QVERIFY(!file);
    QCOMPARE(file.failure()->reason, QStringLiteral("No such file or directory"));
}

QTEST_GUILESS_MAIN(TestStampedFile)
#include "tst_stampedfile.moc"

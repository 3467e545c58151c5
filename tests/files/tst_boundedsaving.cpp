// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/BoundedSaving.h"
#include "files/FileLock.h"

#include "support/FailingCalls.h"
#include "support/FileHelpers.h"
#include "support/HeldDisk.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <chrono>

using namespace std::chrono_literals;

class TestBoundedSaving : public QObject {
    Q_OBJECT

private slots:
    void init();
    void aDiskThatRefusesAtOnce_leavesTheOldFile();
    void aFolderThatTheDiskRefusesAtOnce_leavesTheOldFile();
    void aFolderThatTheDiskRefusesLater_isTold();
    void aDiskThatIsSlow_isNotWaitedFor();
    void aSlowDisk_isAskedAboutTheFolderInTheEnd();
    void aFileThatTheDiskHasYetToTake_isNotLocked();
    void ofManyFiles_aSlowDiskIsAskedAboutTheLast();
    void aRefusalThatComesLater_isTold();
    void aRefusalOfWhatHasBeenReplaced_isNot();
    void aRefusalThatASaveFinds_isNotForgotten();
    void theEnd_doesNotWaitForEver();
    void theEndOfTwo_doesNotWaitTwiceAsLong();

private:
    QString path() const { return folder_->filePath(QStringLiteral("a.conf")); }
    QStringList files() const { return QDir(folder_->path()).entryList(QDir::Files); }

    std::unique_ptr<QTemporaryDir> folder_;
};

void TestBoundedSaving::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    QVERIFY(writeWholeFile(path(), "old"));
}

void TestBoundedSaving::aDiskThatRefusesAtOnce_leavesTheOldFile() {
    BoundedSaving saving;
    const QSignalSpy refusals(&saving, &BoundedSaving::refused);
    const FailingCalls failing("fdatasync", 1, EIO);
    const Result<void> saved = saving.save(path(), "new", 10s);
    QVERIFY(!saved);
    QCOMPARE(saved.failure()->systemError, EIO);
    QCOMPARE(readWholeFile(path()), QByteArray("old"));
    QCOMPARE(files().size(), 1);
    QCOMPARE(refusals.size(), 0);
}

void TestBoundedSaving::aFolderThatTheDiskRefusesAtOnce_leavesTheOldFile() {
    BoundedSaving saving;
    const QSignalSpy refusals(&saving, &BoundedSaving::refused);
    const FailingCalls failing("fsync", 1, EIO);
    const Result<void> saved = saving.save(path(), "new", 10s);
    QVERIFY(failing.hasStruck());
    QVERIFY(!saved);
    QCOMPARE(saved.failure()->systemError, EIO);
    QCOMPARE(readWholeFile(path()), QByteArray("old"));
    QCOMPARE(files().size(), 1);
    QVERIFY(!saving.isBusy());
    QCOMPARE(refusals.size(), 0);
}

void TestBoundedSaving::aFolderThatTheDiskRefusesLater_isTold() {
    BoundedSaving saving;
    QSignalSpy refusals(&saving, &BoundedSaving::refused);
    const FailingCalls failing("fsync", 1, EIO);
    HeldDisk disk;
    QVERIFY(saving.save(path(), "new", 0ms));
    disk.release();
    QTRY_COMPARE(refusals.size(), 1);
    QVERIFY(saving.isRefused());
    QVERIFY(!saving.isBusy());
    QCOMPARE(readWholeFile(path()), QByteArray("new"));
}

void TestBoundedSaving::aSlowDisk_isAskedAboutTheFolderInTheEnd() {
    BoundedSaving saving;
    const QSignalSpy confirmations(&saving, &BoundedSaving::confirmed);
    const FailingCalls counting("nothing", 1, EIO);
    HeldDisk disk;
    for (const char *bytes : {"first", "second", "third"})
        QVERIFY(saving.save(path(), bytes, 0ms));
    disk.release();
    QTRY_COMPARE(confirmations.size(), 1);
    QVERIFY(!saving.isBusy());
    QCOMPARE(counting.callsMade().value("fdatasync"), 2);
    QCOMPARE(counting.callsMade().value("fsync"), 1);
}

void TestBoundedSaving::aDiskThatIsSlow_isNotWaitedFor() {
    BoundedSaving saving;
    HeldDisk disk;
    QVERIFY(saving.save(path(), "new", 0ms));
    QCOMPARE(readWholeFile(path()), QByteArray("new"));
    QCOMPARE(files().size(), 1);
    QTRY_COMPARE(disk.calls(), 1);
}

void TestBoundedSaving::aFileThatTheDiskHasYetToTake_isNotLocked() {
    BoundedSaving saving;
    const HeldDisk disk;
    QVERIFY(saving.save(path(), "new", 0ms));
    QVERIFY(FileLock::take(path(), 0ms));
}

void TestBoundedSaving::ofManyFiles_aSlowDiskIsAskedAboutTheLast() {
    BoundedSaving saving;
    const QSignalSpy refusals(&saving, &BoundedSaving::refused);
    HeldDisk disk;
    QVERIFY(saving.save(path(), "first", 0ms));
    QTRY_COMPARE(disk.calls(), 1);
    for (const char *bytes : {"second", "third"}) {
        QVERIFY(saving.save(path(), bytes, 10h));
        QCOMPARE(readWholeFile(path()), QByteArray(bytes));
    }
    QCOMPARE(disk.calls(), 1);
    disk.release();
    QTRY_COMPARE(disk.calls(), 2);
    QCOMPARE(refusals.size(), 0);
}

void TestBoundedSaving::aRefusalThatComesLater_isTold() {
    BoundedSaving saving;
    QString reason;
    connect(&saving, &BoundedSaving::refused, this,
            [&reason](const Failure &failure) { reason = failure.reason; });
    HeldDisk disk;
    QVERIFY(saving.save(path(), "new", 0ms));
    QTRY_COMPARE(disk.calls(), 1);
    disk.release(EIO);
    QTRY_COMPARE(reason, QStringLiteral("Input/output error"));
    QVERIFY(saving.save(path(), "newer", 10s));
    QCOMPARE(readWholeFile(path()), QByteArray("newer"));
}

void TestBoundedSaving::aRefusalOfWhatHasBeenReplaced_isNot() {
    BoundedSaving saving;
    const QSignalSpy refusals(&saving, &BoundedSaving::refused);
    HeldDisk disk;
    QVERIFY(saving.save(path(), "new", 0ms));
    QTRY_COMPARE(disk.calls(), 1);
    QVERIFY(saving.save(path(), "newer", 10h));
    disk.release(EIO);
    QTRY_COMPARE(disk.calls(), 2);
    QVERIFY(saving.save(path(), "newest", 10s));
    QCOMPARE(refusals.size(), 0);
}

void TestBoundedSaving::aRefusalThatASaveFinds_isNotForgotten() {
    BoundedSaving saving;
    HeldDisk disk;
    QVERIFY(saving.save(path(), "new", 0ms));
    QTRY_COMPARE(disk.calls(), 1);
    disk.release(EIO);
    // Nothing is told meanwhile: no event comes.
    const QString nowhere = folder_->filePath(QStringLiteral("nowhere/a.conf"));
    for (const QDeadlineTimer patience(10s); !saving.isRefused() && !patience.hasExpired();)
        QVERIFY(!saving.save(nowhere, "newer", 0ms));
    QVERIFY(saving.isRefused());
}

void TestBoundedSaving::theEnd_doesNotWaitForEver() {
    const HeldDisk disk;
    {
        BoundedSaving saving;
        QVERIFY(saving.save(path(), "new", 0ms));
        QTRY_COMPARE(disk.calls(), 1);
        QVERIFY(saving.save(path(), "newer", 0ms));
    }
    QCOMPARE(disk.calls(), 1);
    QCOMPARE(readWholeFile(path()), QByteArray("newer"));
}

// With a second for each this takes two at least.
void TestBoundedSaving::theEndOfTwo_doesNotWaitTwiceAsLong() {
    const HeldDisk disk;
    QDeadlineTimer twoSeconds;
    {
        BoundedSaving one;
        BoundedSaving other;
        QVERIFY(one.save(path(), "one", 0ms));
        QVERIFY(other.save(folder_->filePath(QStringLiteral("b.conf")), "other", 0ms));
        twoSeconds = QDeadlineTimer(2s);
    }
    QVERIFY(!twoSeconds.hasExpired());
}

QTEST_GUILESS_MAIN(TestBoundedSaving)
#include "tst_boundedsaving.moc"

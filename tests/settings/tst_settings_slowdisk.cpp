// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"

#include "support/FileHelpers.h"
#include "support/HeldDisk.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <memory>

using namespace settingsKeys;

/// What a disk that answers late has refused is said for as long as it is true, and tried again.
class TestSettingsSlowDisk : public QObject {
    Q_OBJECT

private slots:
    void init();
    void sameValueAgain_isGivenToTheDiskAgain();
    void anAnswerThatIsOwed_isNotTakenForASuccess();
    void theEnd_givesTheDiskAgainWhatItRefused();
    void aKeptFile_isSaidApartFromWhatSavingEnds();

private:
    QString path() const { return folder_->filePath(QStringLiteral("velm.conf")); }
    // The disk takes the device \a name for saved, and refuses it later.
    void haveRefused(const QString &name);

    std::unique_ptr<QTemporaryDir> folder_;
    std::unique_ptr<SettingsStore> store_;
};

void TestSettingsSlowDisk::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    store_ = std::make_unique<SettingsStore>(path());
}

void TestSettingsSlowDisk::haveRefused(const QString &name) {
    HeldDisk disk;
    QSignalSpy problems(store_.get(), &SettingsStore::problem);
    store_->setValue(device, name);
    QTRY_COMPARE(disk.calls(), 1);
    QCOMPARE(problems.count(), 0);
    disk.release(EIO);
    QTRY_COMPARE(problems.count(), 1);
}

void TestSettingsSlowDisk::sameValueAgain_isGivenToTheDiskAgain() {
    haveRefused(QStringLiteral("B"));
    QSignalSpy works(store_.get(), &SettingsStore::savingWorksAgain);
    HeldDisk disk;
    store_->setValue(device, QStringLiteral("B"));
    QTRY_COMPARE(disk.calls(), 1);
    QCOMPARE(works.count(), 0);
    disk.release();
    QTRY_COMPARE(works.count(), 1);
    QVERIFY(readWholeFile(path()).contains("device=B"));
}

void TestSettingsSlowDisk::anAnswerThatIsOwed_isNotTakenForASuccess() {
    haveRefused(QStringLiteral("B"));
    QSignalSpy works(store_.get(), &SettingsStore::savingWorksAgain);
    QSignalSpy problems(store_.get(), &SettingsStore::problem);
    HeldDisk disk;
    for (const QChar letter : QStringLiteral("CDE"))
        store_->setValue(device, QString(letter));
    QCOMPARE(works.count(), 0);
    // It refuses the first, which the last has replaced, and takes the last and its name.
    disk.release(EIO);
    QTRY_COMPARE(works.count(), 1);
    QCOMPARE(disk.calls(), 3);
    QCOMPARE(problems.count(), 0);
}

void TestSettingsSlowDisk::theEnd_givesTheDiskAgainWhatItRefused() {
    haveRefused(QStringLiteral("B"));
    HeldDisk disk;
    disk.release();
    store_.reset();
    QCOMPARE(disk.calls(), 2); // about the file, and its name
}

void TestSettingsSlowDisk::aKeptFile_isSaidApartFromWhatSavingEnds() {
    haveRefused(QStringLiteral("B"));
    QVERIFY(writeWholeFile(path(), "damaged\n"));
    QSignalSpy problems(store_.get(), &SettingsStore::problem);
    QSignalSpy kept(store_.get(), &SettingsStore::keptAside);
    QSignalSpy works(store_.get(), &SettingsStore::savingWorksAgain);
    store_->setValue(pad, true);
    QCOMPARE(kept.count(), 1);
    QTRY_COMPARE(works.count(), 1);
    QCOMPARE(problems.count(), 0);
    const SettingsStore later(path());
    QCOMPARE(later.stringValue(device), QStringLiteral("B"));
}

QTEST_GUILESS_MAIN(TestSettingsSlowDisk)
#include "tst_settings_slowdisk.moc"

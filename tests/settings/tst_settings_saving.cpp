// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/FileLock.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"

#include "support/FailingCalls.h"
#include "support/FileHelpers.h"
#include "support/HeldDisk.h"
#include "support/Privileges.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <sys/stat.h>
#include <thread>
#include <utility>

using namespace settingsKeys;

class TestSettingsSaving : public QObject {
    Q_OBJECT

private slots:
    void init();
    void missingFolders_areMade();
    void everyValue_isOnDiskWhenSetValueReturns();
    void fileWhereTheFolderShouldBe_isReportedOnce();
    void readOnlyFolder_keepsTheValueForThisRun();
    void readOnlyFile_isNotReplaced();
    void umaskThatTakesFromTheOwner_isNoObstacle_data();
    void umaskThatTakesFromTheOwner_isNoObstacle();
    void fullDisk_isReportedAgainAfterARecovery();
    void twoStores_keepEachOthersKeys();
    void anotherProgramsKeys_areKeptAndAnnounced();
    void linkedFile_staysALink();
    void whatAPersonWrote_staysAsItIs();
    void lockFilesLeftBehind_areNotWaitedFor_data();
    void lockFilesLeftBehind_areNotWaitedFor();
    void otherProgramThatHoldsTheFile_isWaitedForBriefly();
    void valuesSetAtOnce_areWaitedForOnce();
    void storesAtOnce_keepEachOthersChanges();
    void changeThatCouldNotBeSaved_isSavedAtTheEnd();
    void moreThanAFileMayHold_isNotSaved();
    void aDiskThatIsSlow_holdsNoChangeUp();
    void aDiskThatRefusesLater_isReported();

private:
    QString path() const { return folder_->filePath(QStringLiteral("velm.conf")); }
    void allow(mode_t mode) const {
        QCOMPARE(chmod(QFile::encodeName(folder_->path()).constData(), mode), 0);
    }

    std::unique_ptr<QTemporaryDir> folder_;
};

void TestSettingsSaving::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    QVERIFY(folder_->isValid());
}

void TestSettingsSaving::missingFolders_areMade() {
    const QString deep = folder_->filePath(QStringLiteral("a/b c/velm.conf"));
    SettingsStore store(deep);
    QVERIFY(!QFile::exists(folder_->filePath(QStringLiteral("a"))));
    store.setValue(pad, true);
    QCOMPARE(readWholeFile(deep), QByteArray("[General]\npad=true\n"));
}

void TestSettingsSaving::everyValue_isOnDiskWhenSetValueReturns() {
    SettingsStore store(path());
    store.setValue(device, QStringLiteral("A"));
    QCOMPARE(readWholeFile(path()), QByteArray("[General]\ndevice=A\n"));
    store.setValue(device, QStringLiteral("AT"));
    QCOMPARE(readWholeFile(path()), QByteArray("[General]\ndevice=AT\n"));
}

void TestSettingsSaving::fileWhereTheFolderShouldBe_isReportedOnce() {
    const QString blocker = folder_->filePath(QStringLiteral("velm"));
    QVERIFY(writeWholeFile(blocker, "mine"));
    const QString blocked = blocker + QStringLiteral("/velm.conf");
    SettingsStore store(blocked);
    QSignalSpy problems(&store, &SettingsStore::problem);
    QSignalSpy changes(&store, &SettingsStore::valueChanged);
    store.setValue(pad, true);
    store.setValue(device, QStringLiteral("A"));
    QCOMPARE(problems.size(), 1);
    QCOMPARE(problems.first().first().toString(),
             QStringLiteral("The settings hold until VELM ends, but cannot be saved in %1: "
                            "Not a directory")
                 .arg(blocked));
    QCOMPARE(changes.size(), 2);
    QVERIFY(store.boolValue(pad));
    QCOMPARE(store.stringValue(device), QStringLiteral("A"));
    QCOMPARE(readWholeFile(blocker), QByteArray("mine"));
}

void TestSettingsSaving::readOnlyFolder_keepsTheValueForThisRun() {
    QVERIFY(writeWholeFile(path(), "[General]\npad=false\ndevice=A\n"));
    QCOMPARE(chmod(QFile::encodeName(path()).constData(), 0644), 0);
    allow(0555);
    {
        const UnprivilegedUser user;
        SettingsStore store(path());
        QSignalSpy problems(&store, &SettingsStore::problem);
        store.setValue(pad, true);
        QCoreApplication::processEvents();
        store.setValue(skipErase, true);
        QCOMPARE(problems.size(), 1);
        QVERIFY(store.boolValue(pad));
        QVERIFY(store.boolValue(skipErase));
        QCOMPARE(store.stringValue(device), QStringLiteral("A"));
    }
    allow(0755);
    QCOMPARE(readWholeFile(path()), QByteArray("[General]\npad=false\ndevice=A\n"));
}

void TestSettingsSaving::readOnlyFile_isNotReplaced() {
    QVERIFY(writeWholeFile(path(), "[General]\npad=false\n"));
    QCOMPARE(chmod(QFile::encodeName(path()).constData(), 0444), 0);
    allow(0777);
    const UnprivilegedUser user;
    SettingsStore store(path());
    QSignalSpy problems(&store, &SettingsStore::problem);
    store.setValue(pad, true);
    QCOMPARE(problems.size(), 1);
    QVERIFY(store.boolValue(pad));
    QCOMPARE(readWholeFile(path()), QByteArray("[General]\npad=false\n"));
}

void TestSettingsSaving::umaskThatTakesFromTheOwner_isNoObstacle_data() {
    QTest::addColumn<uint>("mask");
    QTest::newRow("the owner may not write") << 0277U;
    QTest::newRow("all is taken") << 0777U;
}

void TestSettingsSaving::umaskThatTakesFromTheOwner_isNoObstacle() {
    QFETCH(uint, mask);
    allow(0777);
    const UnprivilegedUser user;
    QVERIFY(user.isValid());
    const mode_t before = ::umask(mode_t(mask));
    int problems = 0;
    for (const auto &[key, value] : {std::pair(pad, false), std::pair(skipErase, true)}) {
        SettingsStore store(path());
        const QSignalSpy said(&store, &SettingsStore::problem);
        store.setValue(key, value);
        problems += int(said.size());
    }
    ::umask(before);
    QCOMPARE(problems, 0);
    QCOMPARE(readWholeFile(path()), QByteArray("[General]\npad=false\nskipErase=true\n"));
}

void TestSettingsSaving::fullDisk_isReportedAgainAfterARecovery() {
    SettingsStore store(path());
    QSignalSpy problems(&store, &SettingsStore::problem);
    QSignalSpy recoveries(&store, &SettingsStore::savingWorksAgain);
    store.setValue(device, QStringLiteral("A"));
    {
        const FileSizeLimit full(4);
        store.setValue(device, QStringLiteral("AT"));
        store.setValue(pad, true);
        QCOMPARE(problems.size(), 1);
        QCOMPARE(store.stringValue(device), QStringLiteral("AT"));
        QCOMPARE(readWholeFile(path()), QByteArray("[General]\ndevice=A\n"));
    }
    QCOMPARE(recoveries.size(), 0);
    store.setValue(skipErase, true);
    QCOMPARE(problems.size(), 1);
    QTRY_COMPARE(recoveries.size(), 1);
    QCOMPARE(readWholeFile(path()), QByteArray("[General]\ndevice=AT\npad=true\nskipErase=true\n"));
    const FileSizeLimit fullAgain(4);
    store.setValue(pad, false);
    QCOMPARE(problems.size(), 2);
}

void TestSettingsSaving::twoStores_keepEachOthersKeys() {
    SettingsStore first(path());
    SettingsStore second(path());
    first.setValue(device, QStringLiteral("A"));
    second.setValue(pad, true);
    first.setValue(skipErase, true);
    QCOMPARE(readWholeFile(path()), QByteArray("[General]\ndevice=A\npad=true\nskipErase=true\n"));
}

void TestSettingsSaving::anotherProgramsKeys_areKeptAndAnnounced() {
    SettingsStore store(path());
    store.setValue(device, QStringLiteral("A"));
    QVERIFY(writeWholeFile(path(), "[General]\ndevice=AT28C256\nunprotect=true\n"));
    QSignalSpy changes(&store, &SettingsStore::valueChanged);
    store.setValue(pad, true);
    QCOMPARE(readWholeFile(path()),
             QByteArray("[General]\ndevice=AT28C256\npad=true\nunprotect=true\n"));
    QStringList keys;
    for (const QVariantList &change : changes)
        keys.append(change.first().toString());
    QCOMPARE(keys, QStringList({device, pad, unprotect}));
    QCOMPARE(store.stringValue(device), QStringLiteral("AT28C256"));
}

void TestSettingsSaving::linkedFile_staysALink() {
    const QString target = folder_->filePath(QStringLiteral("elsewhere.conf"));
    QVERIFY(writeWholeFile(target, "[General]\npad=false\n"));
    QVERIFY(QFile::link(target, path()));
    SettingsStore store(path());
    store.setValue(pad, true);
    QVERIFY(QFileInfo(path()).isSymLink());
    QCOMPARE(readWholeFile(target), QByteArray("[General]\npad=true\n"));
}

void TestSettingsSaving::whatAPersonWrote_staysAsItIs() {
    QVERIFY(writeWholeFile(path(), "; mine\n[General]\nskipErase = yes ; always\n# chips\n"
                                   "device=A\nkey/=value\n\n[More]\nx=@Size(1 2)\n"));
    SettingsStore store(path());
    store.setValue(device, QStringLiteral("AT"));
    store.setValue(skipErase, false);
    store.setValue(binary, QStringLiteral("/a"));
    QCOMPARE(readWholeFile(path()),
             QByteArray("; mine\n[General]\nbinary=/a\nskipErase = false ; always\n# chips\n"
                        "device=AT\nkey/=value\n\n[More]\nx=@Size(1 2)\n"));
}

void TestSettingsSaving::lockFilesLeftBehind_areNotWaitedFor_data() {
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("of a program killed while it made one") << QByteArray();
    QTest::newRow("of another machine") << QByteArray("1\nvelm\nelsewhere\n\n\n");
}

void TestSettingsSaving::lockFilesLeftBehind_areNotWaitedFor() {
    QFETCH(QByteArray, content);
    QVERIFY(writeWholeFile(path() + QStringLiteral(".lock"), content));
    SettingsStore store(path());
    const double before = millisecondsSlept();
    store.setValue(pad, true);
    QCOMPARE(millisecondsSlept() - before, 0.0);
    QCOMPARE(readWholeFile(path()), QByteArray("[General]\npad=true\n"));
}

void TestSettingsSaving::otherProgramThatHoldsTheFile_isWaitedForBriefly() {
    QVERIFY(writeWholeFile(path(), "[General]\ndevice=A\n"));
    SettingsStore store(path());
    QSignalSpy problems(&store, &SettingsStore::problem);
    {
        const auto lock = FileLock::take(path(), std::chrono::seconds(0));
        QVERIFY(bool(lock));
        const double before = millisecondsSlept();
        store.setValue(pad, true);
        QVERIFY(millisecondsSlept() - before <= 100);
        QVERIFY(store.boolValue(pad));
        QCOMPARE(problems.size(), 1);
        QVERIFY(problems.first().first().toString().endsWith(u": Another program is changing it"));
    }
    store.setValue(skipErase, true);
    QCOMPARE(problems.size(), 1);
    QCOMPARE(readWholeFile(path()), QByteArray("[General]\ndevice=A\npad=true\nskipErase=true\n"));
}

void TestSettingsSaving::valuesSetAtOnce_areWaitedForOnce() {
    QVERIFY(writeWholeFile(path(), "[General]\npad_ff=true\n"));
    SettingsStore store(path());
    QStringList changes;
    connect(&store, &SettingsStore::valueChanged, &store, [&](const QString &key) {
        changes << key + u' ' + store.stringValue(pad_00) + u' ' + store.stringValue(pad_ff);
    });
    {
        const auto lock = FileLock::take(path(), std::chrono::seconds(0));
        QVERIFY(bool(lock));
        const double before = millisecondsSlept();
        QVERIFY(store.setValues({{pad_ff, false}, {pad_00, true}}));
        QVERIFY(millisecondsSlept() - before <= 100);
    }
    QCOMPARE(changes, QStringList({QStringLiteral("pad_00 true false"),
                                   QStringLiteral("pad_ff true false")}));
    QVERIFY(store.setValues({{device, QStringLiteral("A")}, {pad, true}}));
    QCOMPARE(readWholeFile(path()),
             QByteArray("[General]\ndevice=A\npad=true\npad_00=true\npad_ff=false\n"));
}

void TestSettingsSaving::storesAtOnce_keepEachOthersChanges() {
    constexpr int changes = 60;
    const auto change = [this](char name) {
        SettingsStore store(path());
        for (int i = 0; i < changes; ++i)
            store.setValue(QLatin1Char(name) + QString::number(i), true);
    };
    std::thread other(change, 'b');
    change('a');
    other.join();
    const SettingsStore store(path());
    for (int i = 0; i < changes; ++i) {
        QVERIFY(store.boolValue(u'a' + QString::number(i)));
        QVERIFY(store.boolValue(u'b' + QString::number(i)));
    }
}

void TestSettingsSaving::changeThatCouldNotBeSaved_isSavedAtTheEnd() {
    QVERIFY(writeWholeFile(path(), "[General]\ndevice=A\n"));
    {
        SettingsStore store(path());
        const FileSizeLimit full(4);
        store.setValue(pad, true);
        QCOMPARE(readWholeFile(path()), QByteArray("[General]\ndevice=A\n"));
    }
    QCOMPARE(readWholeFile(path()), QByteArray("[General]\ndevice=A\npad=true\n"));
}

void TestSettingsSaving::moreThanAFileMayHold_isNotSaved() {
    QVERIFY(writeWholeFile(path(), "[General]\ndevice=A\n"));
    SettingsStore store(path());
    QSignalSpy problems(&store, &SettingsStore::problem);
    const QString endless(2 << 20, u'b');
    store.setValue(binary, endless);
    QCOMPARE(store.stringValue(binary), endless);
    QCOMPARE(problems.size(), 1);
    QVERIFY(problems.first().first().toString().endsWith(u": File too large"));
    QCOMPARE(readWholeFile(path()), QByteArray("[General]\ndevice=A\n"));
    store.setValue(binary, QStringLiteral("/b"));
    QCOMPARE(readWholeFile(path()), QByteArray("[General]\nbinary=/b\ndevice=A\n"));
}

void TestSettingsSaving::aDiskThatIsSlow_holdsNoChangeUp() {
    HeldDisk disk;
    {
        SettingsStore store(path());
        QSignalSpy problems(&store, &SettingsStore::problem);
        for (const QString &name : {QStringLiteral("A"), QStringLiteral("AT")}) {
            QVERIFY(store.setValue(device, name));
            QCOMPARE(SettingsStore(path()).stringValue(device), name);
        }
        QTRY_COMPARE(disk.calls(), 1);
        QCOMPARE(problems.size(), 0);
    }
    QCOMPARE(SettingsStore(path()).stringValue(device), QStringLiteral("AT"));
}

void TestSettingsSaving::aDiskThatRefusesLater_isReported() {
    HeldDisk disk;
    SettingsStore store(path());
    QSignalSpy problems(&store, &SettingsStore::problem);
    QSignalSpy recoveries(&store, &SettingsStore::savingWorksAgain);
    store.setValue(pad, true);
    QTRY_COMPARE(disk.calls(), 1);
    disk.release(EIO);
    QTRY_COMPARE(problems.size(), 1);
    QCOMPARE(problems.first().first().toString(),
             QStringLiteral("The settings hold until VELM ends, but cannot be saved in %1: "
                            "Input/output error")
                 .arg(path()));
    store.setValue(device, QStringLiteral("A"));
    QTRY_COMPARE(recoveries.size(), 1);
    QCOMPARE(readWholeFile(path()), QByteArray("[General]\ndevice=A\npad=true\n"));
}

QTEST_GUILESS_MAIN(TestSettingsSaving)
#include "tst_settings_saving.moc"

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"

#include "support/FileHelpers.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace settingsKeys;

class TestSettingsValues : public QObject {
    Q_OBJECT

private slots:
    void init();
    void firstStart_readsEveryRegisteredDefault_data();
    void firstStart_readsEveryRegisteredDefault();
    void startupDefaults_areTheFourteenKeys();
    void firstStart_hasNoBinaryAndNoDevice();
    void defaults_areNeverWritten();
    void storedValue_winsOverDefaultsRegisteredAgain();
    void storedValue_survivesARestart();
    void laterRegistration_replacesTheDefault();
    void valueChanged_comesBeforeSetValueReturns();
    void valueChanged_onlyWhenTheVisibleValueChanges_data();
    void valueChanged_onlyWhenTheVisibleValueChanges();
    void valueChanged_onRegistrationForVisibleChangesOnly();
    void valueChanged_listenerMaySetAnotherValue();
    void readsOfAnAbsentKey();
    void guard_refusesEveryChange();

private:
    QString path() const { return folder_->filePath(QStringLiteral("velm/velm.conf")); }

    std::unique_ptr<QTemporaryDir> folder_;
};

void TestSettingsValues::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    QVERIFY(folder_->isValid());
}

void TestSettingsValues::firstStart_readsEveryRegisteredDefault_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("flag");
    const auto row = [](const char *key, const char *text, bool flag) {
        QTest::newRow(key) << QString::fromLatin1(text) << flag;
    };
    row("miniproLocation", "/usr/local/bin/minipro", false);
    row("noSizeMismatchError", "true", true);
    row("noIDMismatchError", "false", false);
    row("skipErase", "false", false);
    row("unprotect", "false", false);
    row("rom_start_address", "0000", false);
    row("pad_ff", "true", true);
    row("pad_00", "false", false);
    row("pad_to", "", false);
    row("pad", "false", false);
    row("temp_output_file", "~/Library/Application Support/VELM/temp.bin", false);
    row("temp_read_from_chip_file", "~/Library/Application Support/VELM/temp_read.bin", false);
    row("temp_search_results_file", "~/Library/Application Support/VELM/temp_sr.bin", false);
    row("temp_logic_chip_test_results_file", "~/Library/Application Support/VELM/temp_logtest.bin",
        false);
}

void TestSettingsValues::firstStart_readsEveryRegisteredDefault() {
    QFETCH(QString, text);
    QFETCH(bool, flag);
    const QString key = QString::fromLatin1(QTest::currentDataTag());
    SettingsStore store(path());
    store.registerDefaults(startupDefaults());
    QVERIFY(!store.stringValue(key).isNull());
    QCOMPARE(store.stringValue(key), text);
    QCOMPARE(store.boolValue(key), flag);
}

void TestSettingsValues::startupDefaults_areTheFourteenKeys() {
    QCOMPARE(startupDefaults().size(), 14);
    QVERIFY(!startupDefaults().contains(binary));
    QVERIFY(!startupDefaults().contains(device));
    QVERIFY(!startupDefaults().contains(favourites));
    QCOMPARE(startupDefaults().value(pad_ff).typeId(), int(QMetaType::Bool));
}

void TestSettingsValues::firstStart_hasNoBinaryAndNoDevice() {
    SettingsStore store(path());
    store.registerDefaults(startupDefaults());
    QVERIFY(store.stringValue(binary).isNull());
    QVERIFY(store.stringValue(device).isNull());
}

void TestSettingsValues::defaults_areNeverWritten() {
    {
        SettingsStore store(path());
        store.registerDefaults(startupDefaults());
        QVERIFY(!QFile::exists(path()));
        store.setValue(device, QStringLiteral("AT28C256"));
    }
    QCOMPARE(readWholeFile(path()), QByteArray("[General]\ndevice=AT28C256\n"));
}

void TestSettingsValues::storedValue_winsOverDefaultsRegisteredAgain() {
    SettingsStore store(path());
    store.setValue(skipErase, true);
    store.registerDefaults(startupDefaults());
    store.registerDefaults(startupDefaults());
    QCOMPARE(store.boolValue(skipErase), true);
}

void TestSettingsValues::storedValue_survivesARestart() {
    {
        SettingsStore store(path());
        store.registerDefaults(startupDefaults());
        store.setValue(skipErase, true);
        store.setValue(noSizeMismatchError, false);
        store.setValue(favourites, QStringList({QStringLiteral("A"), QStringLiteral("B")}));
    }
    SettingsStore store(path());
    store.registerDefaults(startupDefaults());
    QCOMPARE(store.boolValue(skipErase), true);
    QCOMPARE(store.boolValue(noSizeMismatchError), false);
    QCOMPARE(store.stringListValue(favourites),
             QStringList({QStringLiteral("A"), QStringLiteral("B")}));
}

void TestSettingsValues::laterRegistration_replacesTheDefault() {
    SettingsStore store(path());
    store.registerDefaults({{pad_to, QStringLiteral("1")}, {pad, true}});
    store.registerDefaults({{pad_to, QStringLiteral("2")}});
    QCOMPARE(store.stringValue(pad_to), QStringLiteral("2"));
    QCOMPARE(store.boolValue(pad), true);
}

void TestSettingsValues::valueChanged_comesBeforeSetValueReturns() {
    SettingsStore store(path());
    QString seen;
    connect(&store, &SettingsStore::valueChanged, this,
            [&](const QString &key) { seen = key + u'=' + store.stringValue(key); });
    store.setValue(device, QStringLiteral("AT28C256"));
    QCOMPARE(seen, QStringLiteral("device=AT28C256"));
}

void TestSettingsValues::valueChanged_onlyWhenTheVisibleValueChanges_data() {
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("changes");
    QTest::newRow("another text") << pad_to << QVariant(QStringLiteral("64")) << 1;
    QTest::newRow("the text that the default shows") << pad_to << QVariant(QString()) << 0;
    QTest::newRow("the boolean that the default shows") << pad_ff << QVariant(true) << 0;
    QTest::newRow("another boolean") << pad_ff << QVariant(false) << 1;
    QTest::newRow("the text already stored") << device << QVariant(QStringLiteral("A")) << 0;
    QTest::newRow("an empty text where nothing was") << binary << QVariant(QStringLiteral("")) << 1;
    QTest::newRow("the list already stored")
        << favourites << QVariant(QStringList(QStringLiteral("A, B"))) << 0;
    QTest::newRow("a list that reads the same as one text")
        << favourites << QVariant(QStringList({QStringLiteral("A"), QStringLiteral("B")})) << 1;
}

void TestSettingsValues::valueChanged_onlyWhenTheVisibleValueChanges() {
    QFETCH(QString, key);
    QFETCH(QVariant, value);
    QFETCH(int, changes);
    SettingsStore store(path());
    store.registerDefaults(startupDefaults());
    store.setValue(device, QStringLiteral("A"));
    store.setValue(favourites, QStringList(QStringLiteral("A, B")));
    QSignalSpy spy(&store, &SettingsStore::valueChanged);
    store.setValue(key, value);
    QCOMPARE(spy.size(), changes);
    if (changes > 0)
        QCOMPARE(spy.first(), QVariantList({key}));
}

void TestSettingsValues::valueChanged_onRegistrationForVisibleChangesOnly() {
    SettingsStore store(path());
    store.setValue(skipErase, true);
    QSignalSpy spy(&store, &SettingsStore::valueChanged);
    store.registerDefaults({{skipErase, false}, {pad_to, QStringLiteral("64")}});
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.first(), QVariantList({pad_to}));
    store.registerDefaults({{pad_to, QStringLiteral("64")}});
    QCOMPARE(spy.size(), 1);
}

void TestSettingsValues::valueChanged_listenerMaySetAnotherValue() {
    SettingsStore store(path());
    QStringList seen;
    connect(&store, &SettingsStore::valueChanged, this, [&](const QString &key) {
        seen.append(key);
        if (key == pad_ff)
            store.setValue(pad_00, !store.boolValue(pad_ff));
    });
    store.setValue(pad_ff, true);
    store.setValue(pad_ff, false);
    QCOMPARE(seen, QStringList({pad_ff, pad_00, pad_ff, pad_00}));
    QCOMPARE(store.boolValue(pad_00), true);
}

void TestSettingsValues::readsOfAnAbsentKey() {
    SettingsStore store(path());
    QVERIFY(store.stringValue(favourites).isNull());
    QCOMPARE(store.boolValue(favourites), false);
    QCOMPARE(store.stringListValue(favourites), QStringList());
    QCOMPARE(store.filePath(), path());
    QVERIFY(!store.unreadFile());
}

void TestSettingsValues::guard_refusesEveryChange() {
    SettingsStore store(path());
    QVERIFY(store.setValue(device, QStringLiteral("27C64")));
    bool mayChange = false;
    store.setGuard([&] { return mayChange; });
    QSignalSpy changed(&store, &SettingsStore::valueChanged);
    QSignalSpy refused(&store, &SettingsStore::changeRefused);
    QVERIFY(!store.mayChange());
    QVERIFY(!store.setValue(device, QStringLiteral("27C128")));
    QCOMPARE(store.stringValue(device), QStringLiteral("27C64"));
    QCOMPARE(SettingsStore(path()).stringValue(device), QStringLiteral("27C64"));
    QCOMPARE(changed.size(), 0);
    QCOMPARE(refused, QList<QList<QVariant>>({{device}}));
    QVERIFY(!store.setValues({{device, QStringLiteral("27C128")}, {pad, true}}));
    QCOMPARE(refused, QList<QList<QVariant>>({{device}, {device}, {pad}}));
    QCOMPARE(store.stringValue(device), QStringLiteral("27C64"));
    mayChange = true;
    QVERIFY(store.setValue(device, QStringLiteral("27C128")));
    QCOMPARE(store.stringValue(device), QStringLiteral("27C128"));
}

QTEST_GUILESS_MAIN(TestSettingsValues)
#include "tst_settings_values.moc"

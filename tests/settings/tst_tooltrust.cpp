// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "settings/ToolTrust.h"
#include "settings/WindowMemory.h"

#include "support/FileHelpers.h"

#include <QTemporaryDir>
#include <QTest>

using settingsKeys::miniproLocation;

/// Whose command the programmer tool is.
class TestToolTrust : public QObject {
    Q_OBJECT

private slots:
    void cleanup() const {
        QFile::remove(settingsPath());
        QFile::remove(memoryPath());
    }
    void theDefault_isTrusted();
    void whatTheFileHolds_isNot();
    void whatIsSetHere_isTrustedFromThenOn_data();
    void whatIsSetHere_isTrustedFromThenOn();
    void whatAnotherProgramWrites_isNotTakenForSetHere();
    void whatWasLetRun_isTrusted();
    void onlyTheLastOne_isTrusted();
    void withoutAMemory_itIsTrustedUntilTheEnd();

private:
    QString settingsPath() const { return folder_.filePath(QStringLiteral("velm.conf")); }
    QString memoryPath() const { return folder_.filePath(QStringLiteral("state.conf")); }
    void writeSettings(const QByteArray &lines) const {
        QVERIFY(writeWholeFile(settingsPath(), "[General]\n" + lines));
    }

    QTemporaryDir folder_;
};

void TestToolTrust::theDefault_isTrusted() {
    SettingsStore settings(settingsPath());
    settings.registerDefaults(settingsKeys::startupDefaults());
    WindowMemory memory(memoryPath());
    const ToolTrust trust(settings, memory);
    QVERIFY(trust.covers(settings.stringValue(miniproLocation)));
}

void TestToolTrust::whatTheFileHolds_isNot() {
    writeSettings("miniproLocation=evil\n");
    SettingsStore settings(settingsPath());
    WindowMemory memory(memoryPath());
    const ToolTrust trust(settings, memory);
    QCOMPARE(settings.stringValue(miniproLocation), QStringLiteral("evil"));
    QVERIFY(!trust.covers(QStringLiteral("evil")));
    QVERIFY(!trust.covers(QString()));
}

void TestToolTrust::whatIsSetHere_isTrustedFromThenOn_data() {
    QTest::addColumn<QString>("tool");
    QTest::newRow("a path") << QStringLiteral("/opt/minipro");
    QTest::newRow("a command") << QStringLiteral("sudo -n 'a, \"b\"' \\c; @d %41");
    QTest::newRow("nothing") << QStringLiteral("");
}

void TestToolTrust::whatIsSetHere_isTrustedFromThenOn() {
    QFETCH(const QString, tool);
    writeSettings("miniproLocation=evil\n");
    SettingsStore settings(settingsPath());
    WindowMemory memory(memoryPath());
    {
        const ToolTrust trust(settings, memory);
        settings.setValue(miniproLocation, tool);
        QVERIFY(trust.covers(tool));
    }
    QVERIFY(ToolTrust(settings, memory).covers(tool));
}

void TestToolTrust::whatAnotherProgramWrites_isNotTakenForSetHere() {
    SettingsStore settings(settingsPath());
    WindowMemory memory(memoryPath());
    const ToolTrust trust(settings, memory);
    writeSettings("miniproLocation=evil\n");
    settings.setValue(settingsKeys::device, QStringLiteral("27C64"));
    QCOMPARE(settings.stringValue(miniproLocation), QStringLiteral("evil"));
    QVERIFY(!trust.covers(QStringLiteral("evil")));
}

void TestToolTrust::whatWasLetRun_isTrusted() {
    SettingsStore settings(settingsPath());
    WindowMemory memory(memoryPath());
    ToolTrust(settings, memory).trust(QStringLiteral("known"));
    QVERIFY(ToolTrust(settings, memory).covers(QStringLiteral("known")));
}

void TestToolTrust::onlyTheLastOne_isTrusted() {
    SettingsStore settings(settingsPath());
    WindowMemory memory(memoryPath());
    ToolTrust trust(settings, memory);
    trust.trust(QStringLiteral("one"));
    trust.trust(QStringLiteral("two"));
    QVERIFY(!trust.covers(QStringLiteral("one")));
    QVERIFY(trust.covers(QStringLiteral("two")));
}

void TestToolTrust::withoutAMemory_itIsTrustedUntilTheEnd() {
    SettingsStore settings(settingsPath());
    WindowMemory memory(QStringLiteral("/dev/null/velm/state.conf"));
    ToolTrust trust(settings, memory);
    trust.trust(QStringLiteral("known"));
    QVERIFY(trust.covers(QStringLiteral("known")));
    QVERIFY(!ToolTrust(settings, memory).covers(QStringLiteral("known")));
}

QTEST_GUILESS_MAIN(TestToolTrust)
#include "tst_tooltrust.moc"

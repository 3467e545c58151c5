// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "devices/KnownDevices.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "settings/WindowMemory.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

/// Which devices are offered without typing.
class TestKnownDevices : public QObject {
    Q_OBJECT

private slots:
    void recentOnes_comeBeforeFavourites();
    void searches_comeLastAndTheNewestFirst();
    void customMark_isNoPartOfAName();
    void namesThatCannotBeShown_areLeftOut();
    void searches_areBounded();
    void changes_areTold();
};

namespace {

struct Known {
    Known() {
        settings.setValue(settingsKeys::favourites,
                          QStringList{QStringLiteral("F"), QStringLiteral("B")});
    }
    QString likely() const { return devices.likely().join(u' '); }
    QString all() const { return devices.all().join(u' '); }

    QTemporaryDir folder;
    SettingsStore settings{folder.filePath(QStringLiteral("velm.conf"))};
    WindowMemory memory{folder.filePath(QStringLiteral("state.conf"))};
    KnownDevices devices{settings, memory};
};

QStringList words(const char *text) {
    return QString::fromLatin1(text).split(u' ');
}

} // namespace

void TestKnownDevices::recentOnes_comeBeforeFavourites() {
    Known known;
    QCOMPARE(known.likely(), QStringLiteral("F B"));
    for (const char *device : {"A", "B", "C", "A", ""})
        known.devices.wasUsed(QString::fromLatin1(device));
    QCOMPARE(known.likely(), QStringLiteral("A C B F"));
    const KnownDevices nextStart(known.settings, known.memory);
    QCOMPARE(nextStart.likely().join(u' '), known.likely());
}

void TestKnownDevices::searches_comeLastAndTheNewestFirst() {
    Known known;
    known.devices.wereListed(words("X Y B X"));
    known.devices.wereListed(words("Z Y"));
    QCOMPARE(known.all(), QStringLiteral("F B Z Y X"));
    QCOMPARE(known.likely(), QStringLiteral("F B"));
}

void TestKnownDevices::customMark_isNoPartOfAName() {
    Known known;
    known.devices.wereListed(words("LM339(custom) LM339"));
    QCOMPARE(known.all(), QStringLiteral("F B LM339"));
}

void TestKnownDevices::namesThatCannotBeShown_areLeftOut() {
    Known known;
    known.devices.wereListed({QStringLiteral("X\u202eY"), QString(2000, u'n'), QStringLiteral("Z"),
                              QStringLiteral("é b")});
    known.devices.wasUsed(QStringLiteral("A\x1b"));
    QCOMPARE(known.all(), QStringLiteral("F B Z é b"));
}

void TestKnownDevices::searches_areBounded() {
    Known known;
    QStringList names;
    for (int i = 0; i < KnownDevices::maxListed + 10; ++i)
        names.append(QString::number(i));
    known.devices.wereListed(names);
    QCOMPARE(known.devices.all().size(), KnownDevices::maxListed + 2);
    for (qsizetype search = 0; search < KnownDevices::maxSearches; ++search)
        known.devices.wereListed({QStringLiteral("S%1").arg(search)});
    QCOMPARE(known.all(), QStringLiteral("F B S3 S2 S1 S0"));
}

void TestKnownDevices::changes_areTold() {
    Known known;
    QSignalSpy changes(&known.devices, &KnownDevices::changed);
    known.devices.wasUsed(QStringLiteral("A"));
    QCOMPARE(changes.size(), 1);
    known.devices.wasUsed(QStringLiteral("A"));
    QCOMPARE(changes.size(), 1);
    known.devices.wereListed(words("X"));
    QCOMPARE(changes.size(), 2);
    known.settings.setValue(settingsKeys::favourites, words("G"));
    QCOMPARE(changes.size(), 3);
    known.settings.setValue(settingsKeys::device, QStringLiteral("D"));
    QCOMPARE(changes.size(), 3);
}

QTEST_GUILESS_MAIN(TestKnownDevices)
#include "tst_known_devices.moc"

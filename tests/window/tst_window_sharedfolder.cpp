// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/WindowFixture.h"

#include "settings/SettingsKeys.h"

#include <QFile>
#include <QTest>

#include <sys/stat.h>

/// A folder of temporary files into which others may put theirs.
class TestWindowSharedFolder : public QObject {
    Q_OBJECT

private slots:
    void sharedFolder_isSaidOnce_data();
    void sharedFolder_isSaidOnce();
    void sharedFolder_isSaidOfTheFolderInUse();
};

void TestWindowSharedFolder::sharedFolder_isSaidOnce_data() {
    QTest::addColumn<mode_t>("mode");
    QTest::addColumn<bool>("said");
    QTest::newRow("the user's alone") << mode_t(0755) << false;
    QTest::newRow("open to all") << mode_t(0777) << true;
}

void TestWindowSharedFolder::sharedFolder_isSaidOnce() {
    QFETCH(const mode_t, mode);
    QFETCH(const bool, said);
    WindowFixture velm;
    velm.write(QStringLiteral("workspace/x"), "");
    QCOMPARE(::chmod(QFile::encodeName(velm.temporary({})).constData(), mode), 0);
    velm.start();
    const QString sentence = QStringLiteral("Others may put files into");
    QCOMPARE(velm.message().count(sentence), said ? 1 : 0);
    velm.delegate().build_and_reload();
    velm.settle();
    QCOMPARE(velm.message().count(sentence), said ? 1 : 0);
}

void TestWindowSharedFolder::sharedFolder_isSaidOfTheFolderInUse() {
    WindowFixture velm;
    velm.write(QStringLiteral("shared/x"), "");
    QCOMPARE(::chmod(QFile::encodeName(velm.path(QStringLiteral("shared"))).constData(), 0777), 0);
    velm.start();
    const QString own = velm.settings().stringValue(settingsKeys::temp_output_file);
    const QString sentence = QStringLiteral("Others may put files into");
    QVERIFY(!velm.message().contains(sentence));
    velm.settings().setValue(settingsKeys::temp_output_file,
                             velm.path(QStringLiteral("shared/temp.bin")));
    QVERIFY2(velm.message().contains(sentence), qPrintable(velm.message()));
    velm.settings().setValue(settingsKeys::temp_output_file, own);
    QVERIFY2(!velm.message().contains(sentence), qPrintable(velm.message()));
    // What lies there becomes the data read from a chip, or the list of devices.
    for (const QString &key :
         {settingsKeys::temp_read_from_chip_file, settingsKeys::temp_search_results_file,
          settingsKeys::temp_logic_chip_test_results_file}) {
        const QString before = velm.settings().stringValue(key);
        velm.settings().setValue(key, velm.path(QStringLiteral("shared/file")));
        QVERIFY2(velm.message().contains(sentence), qPrintable(velm.message()));
        velm.settings().setValue(key, before);
        QVERIFY2(!velm.message().contains(sentence), qPrintable(velm.message()));
    }
}

QTEST_MAIN(TestWindowSharedFolder)
#include "tst_window_sharedfolder.moc"

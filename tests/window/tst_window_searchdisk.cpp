// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "settings/SettingsKeys.h"
#include "window/SearchSteps.h"

#include <sys/statvfs.h>

namespace {

bool diskIsFull = false;

} // namespace

/// In place of the system's: a disk has room or has none.
extern "C" int statvfs(const char * /*path*/, struct statvfs *facts) noexcept {
    *facts = {};
    facts->f_blocks = 1000;
    facts->f_bavail = diskIsFull ? 0 : 500;
    return 0;
}

/// A list of devices that a full disk has cut, or that is not this window's to write.
class TestWindowSearchDisk : public QObject {
    Q_OBJECT

private slots:
    void list_thatLooksCutOnAFullDisk_data();
    void list_thatLooksCutOnAFullDisk();
    void folderOfAnotherWindow_isNotSearchedThrough();
};

void TestWindowSearchDisk::list_thatLooksCutOnAFullDisk_data() {
    QTest::addColumn<QByteArray>("tool");
    QTest::addColumn<bool>("full");
    QTest::addColumn<QString>("remark");
    const QString none = QStringLiteral("No device's name holds this term.");
    const QString cut = QStringLiteral("The list may not be whole: there is no room left in %1.");
    QTest::newRow("empty") << QByteArray("exit 0\n") << true << cut;
    QTest::newRow("empty, with room left") << QByteArray("exit 0\n") << false << none;
    QTest::newRow("half a line") << QByteArray("printf 'W27C512\nW27'\n") << true
                                 << QStringLiteral("2 devices found. ") + cut;
    QTest::newRow("half a line, with room left")
        << QByteArray("printf 'W27C512\nW27'\n") << false << QStringLiteral("2 devices found.");
    QTest::newRow("whole lines") << QByteArray("echo W27C512\n") << true
                                 << QStringLiteral("1 device found.");
}

void TestWindowSearchDisk::list_thatLooksCutOnAFullDisk() {
    QFETCH(QByteArray, tool);
    QFETCH(bool, full);
    QFETCH(QString, remark);
    WindowFixture velm;
    velm.useTool(tool);
    velm.start();
    const Panel panel(velm);
    diskIsFull = full;
    panel.searchFor(QStringLiteral("w27"));
    diskIsFull = false;
    QCOMPARE(panel.remark->text(),
             remark.replace(QStringLiteral("%1"), velm.path(QStringLiteral("workspace"))));
}

void TestWindowSearchDisk::folderOfAnotherWindow_isNotSearchedThrough() {
    WindowFixture velm;
    velm.useTool("echo W27C512\n");
    velm.start();
    const Panel panel(velm);
    const QString others = velm.write(QStringLiteral("another/temp_sr.bin"), "its list\n");
    velm.settings().setValue(settingsKeys::temp_output_file,
                             velm.path(QStringLiteral("another/temp.bin")));
    velm.settings().setValue(settingsKeys::temp_search_results_file, others);
    velm.folderIsAnothers = true;
    panel.searchFor(QStringLiteral("w27"));
    QVERIFY2(panel.remark->text().contains(u"Another window works with this folder"),
             qPrintable(panel.remark->text()));
    QCOMPARE(WindowFixture::bytesOf(others), QByteArray("its list\n"));
    velm.folderIsAnothers = false;
    panel.searchFor(QStringLiteral("w27"));
    QCOMPARE(panel.remark->text(), QStringLiteral("1 device found."));
}

QTEST_MAIN(TestWindowSearchDisk)
#include "tst_window_searchdisk.moc"

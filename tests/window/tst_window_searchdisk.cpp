// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "settings/FilePaths.h"
#include "settings/SettingsKeys.h"
#include "support/Privileges.h"
#include "window/SearchSteps.h"

#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

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
    void earlierList_inAFolderThatMayNotBeChanged_data();
    void earlierList_inAFolderThatMayNotBeChanged();
    void earlierList_behindALinkOfTheUsers();
    void linkOfSomebodyElse_isNotReadThrough();
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

void TestWindowSearchDisk::earlierList_inAFolderThatMayNotBeChanged_data() {
    QTest::addColumn<int>("mode");
    QTest::newRow("it is emptied") << 0666;
    QTest::newRow("it stays and is not shown") << 0444;
}

// The list of an earlier search must not pass for that of one that never came to the tool.
void TestWindowSearchDisk::earlierList_inAFolderThatMayNotBeChanged() {
    QFETCH(int, mode);
    WindowFixture velm;
    velm.useTool("echo A\n");
    velm.start();
    const Panel panel(velm);
    panel.searchFor(QStringLiteral("x"));
    QCOMPARE(panel.names(), QStringList(QStringLiteral("A")));
    const QString list = resolvedPathOf(velm.settings(), settingsKeys::temp_search_results_file);
    ::chmod(QFile::encodeName(velm.path({})).constData(), 0777);
    ::chmod(QFile::encodeName(velm.temporary({})).constData(), 0555);
    ::chmod(QFile::encodeName(list).constData(), mode_t(mode));
    {
        const UnprivilegedUser nobody;
        QVERIFY(nobody.isValid());
        qputenv("SHELL", "/nowhere/sh");
        panel.searchFor(QStringLiteral("x"));
    }
    QCOMPARE(panel.names(), QStringList());
    QVERIFY2(panel.remark->text().contains(u"was not started"), qPrintable(panel.remark->text()));
    QVERIFY(QFile::exists(list));
    const bool mayBeWritten = mode == 0666;
    QCOMPARE(WindowFixture::bytesOf(list).isEmpty(), mayBeWritten);
}

void TestWindowSearchDisk::earlierList_behindALinkOfTheUsers() {
    WindowFixture velm;
    velm.useTool("echo A\n");
    velm.start();
    const Panel panel(velm);
    const QString list = resolvedPathOf(velm.settings(), settingsKeys::temp_search_results_file);
    const QString place = velm.path(QStringLiteral("place"));
    QVERIFY(QFile::link(place, list));
    panel.searchFor(QStringLiteral("x"));
    QCOMPARE(panel.names(), QStringList(QStringLiteral("A")));
    QCOMPARE(QFileInfo(list).symLinkTarget(), place);
    QCOMPARE(WindowFixture::bytesOf(place), QByteArray("A\n"));
}

void TestWindowSearchDisk::linkOfSomebodyElse_isNotReadThrough() {
    if (::geteuid() != 0)
        QSKIP("only root can give a link away");
    WindowFixture velm;
    velm.useTool("echo precious >mine; ln -sf mine temp_sr.bin; chown -h 12345 temp_sr.bin\n");
    velm.start();
    const Panel panel(velm);
    panel.searchFor(QStringLiteral("w27"));
    QCOMPARE(panel.names(), QStringList());
    QVERIFY2(panel.remark->text().contains(u"It is a link that belongs to somebody else"),
             qPrintable(panel.remark->text()));
}

QTEST_MAIN(TestWindowSearchDisk)
#include "tst_window_searchdisk.moc"

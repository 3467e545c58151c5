// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/EditingSteps.h"

#include "files/FileLoading.h"
#include "settings/SettingsKeys.h"
#include "support/Privileges.h"

#include <QFile>
#include <QFileInfo>
#include <QMenu>
#include <QSignalSpy>

#include <sys/stat.h>

/// Bringing a binary in and saving the images.
class TestWindowFiles : public QObject {
    Q_OBJECT

private slots:
    void open_composesWithTheFileAndRemembersIt();
    void open_takesHexFilesAsTheyStand();
    void open_offersTheImageTypesAsASheet();
    void open_cancelledChangesNothing();
    void open_ofWhatIsNoFileKeepsThePathAndSaysWhy_data();
    void open_ofWhatIsNoFileKeepsThePathAndSaysWhy();
    void recentFiles_canBeOpenedAgain();
    void recentFiles_areShownAsTheyAreCalled();
    void exportRead_beforeAnyReadOpensNoPanel();
    void exportOutput_ofNothingOpensNoPanel();
    void exportOutput_ofPaddingAloneIsPossible();
    void exports_suggestTheDeviceAsTheName_data();
    void exports_suggestTheDeviceAsTheName();
    void exportRead_suggestsTheDeviceThatWasRead();
    void exportRead_suggestsWhoseReadFailed();
    void exports_writeTheWholeBuffer();
    void exports_writeTheBufferAsItIsAtConfirmation();
    void exports_ofAnImageThatIsGoneLeaveTheOldFile();
    void exports_commitWhatIsBeingTypedFirst();
    void exports_rememberTheFolder();
    void exports_cancelledWriteNothing();
    void exports_replaceTheTargetOfALink();
    void exports_keepThePermissions();
    void exports_thatFailLeaveTheOldFile_data();
    void exports_thatFailLeaveTheOldFile();
    void exports_toAReadOnlyFolderLeaveTheOldFile();
    void exports_toAFullDiskLeaveTheOldFile();
    void saveConsole_writesTheTextAsItCame();
    void nothingToSave_isSaidUntilThereIsSomething();
};

namespace {

/// \a name as a path: what can be made in a test's own folder is made there.
QString made(WindowFixture &velm, const QString &name) {
    const QString path = velm.path(name);
    if (name == QStringLiteral("pipe")) {
        if (::mkfifo(qPrintable(path), 0600) != 0)
            qFatal("no pipe");
    } else if (name == QStringLiteral("large")) {
        velm.write(name, "");
        if (!QFile::resize(path, largestImage + 1)) // holes take no room on the disk
            qFatal("no large file");
    } else {
        return name;
    }
    return path;
}

} // namespace

void TestWindowFiles::open_composesWithTheFileAndRemembersIt() {
    WindowFixture velm;
    velm.start();
    velm.panels.answer = velm.write(QStringLiteral("rom.bin"), "ROM!");
    velm.click(velm.controls().btn_open);
    velm.settle();
    QCOMPARE(*velm.state().output_data, QByteArray("ROM!"));
    QCOMPARE(WindowFixture::bytesOf(velm.temporary(QStringLiteral("temp.bin"))),
             QByteArray("ROM!"));
    QCOMPARE(velm.settings().stringValue(settingsKeys::binary), velm.panels.answer);
    QCOMPARE(velm.controls().readFileTextField->text(), velm.panels.answer);
    velm.end();
    velm.start();
    QCOMPARE(*velm.state().output_data, QByteArray("ROM!"));
}

void TestWindowFiles::open_takesHexFilesAsTheyStand() {
    WindowFixture velm;
    velm.start();
    velm.panels.answer = velm.write(QStringLiteral("rom.hex"), ":00000001FF\n");
    velm.click(velm.controls().btn_open);
    QCOMPARE(*velm.state().output_data, QByteArray(":00000001FF\n"));
}

void TestWindowFiles::open_offersTheImageTypesAsASheet() {
    WindowFixture velm;
    velm.start();
    velm.click(velm.controls().btn_open);
    QCOMPARE(velm.panels.requests.size(), 1);
    const FilePanelRequest &request = velm.panels.requests.first();
    QCOMPARE(request.kind, FilePanelRequest::Kind::Open);
    QCOMPARE(request.extensions, QStringList({QStringLiteral("bin"), QStringLiteral("hex"),
                                              QStringLiteral("rom"), QStringLiteral("crt")}));
    QCOMPARE(velm.panels.lastParent, &velm.velm().window());
}

void TestWindowFiles::open_cancelledChangesNothing() {
    WindowFixture velm;
    velm.start();
    velm.log.take();
    const ByteBuffer before = velm.state().output_data;
    velm.click(velm.controls().btn_open);
    velm.settle();
    QCOMPARE(velm.state().output_data, before);
    QVERIFY(velm.settings().stringValue(settingsKeys::binary).isNull());
    QCOMPARE(velm.log.lines, QStringList());
}

void TestWindowFiles::open_ofWhatIsNoFileKeepsThePathAndSaysWhy_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("vanished") << QStringLiteral("/nowhere/rom.bin");
    QTest::newRow("a folder") << QStringLiteral("/tmp");
    QTest::newRow("a device") << QStringLiteral("/dev/zero");
    QTest::newRow("a pipe") << QStringLiteral("pipe");
    QTest::newRow("larger than an image can be") << QStringLiteral("large");
}

void TestWindowFiles::open_ofWhatIsNoFileKeepsThePathAndSaysWhy() {
    QFETCH(QString, name);
    WindowFixture velm;
    const QString path = made(velm, name);
    velm.settings().setValue(settingsKeys::binary, velm.write(QStringLiteral("rom.bin"), "ROM!"));
    velm.start();
    velm.log.take();
    velm.panels.answer = path;
    velm.click(velm.controls().btn_open);
    velm.settle();
    QVERIFY(!velm.state().opened_bin_data);
    QCOMPARE(lengthOf(velm.state().output_data), 0);
    QCOMPARE(velm.settings().stringValue(settingsKeys::binary), path);
    QVERIFY2(velm.message().contains(path), qPrintable(velm.message()));
    QCOMPARE(velm.log.startingWith(QStringLiteral("error")), QStringList());
}

void TestWindowFiles::recentFiles_canBeOpenedAgain() {
    WindowFixture velm;
    velm.start();
    const QString first = velm.write(QStringLiteral("a & b.bin"), "first");
    const QString second = velm.write(QStringLiteral("second.bin"), "second");
    for (const QString &path : {first, second}) {
        velm.panels.answer = path;
        velm.click(velm.controls().btn_open);
    }
    QCOMPARE(velm.recentFiles(), QStringList({second, first}));
    velm.recentEntries().last()->trigger();
    velm.settle();
    QCOMPARE(*velm.state().output_data, QByteArray("first"));
}

void TestWindowFiles::recentFiles_areShownAsTheyAreCalled() {
    WindowFixture velm;
    velm.start();
    velm.panels.answer = velm.write(QStringLiteral("a\tb.bin"), "first");
    velm.click(velm.controls().btn_open);
    const QString shown = velm.recentEntries().last()->text();
    QVERIFY2(shown.endsWith(u"a\\x09b.bin"), qPrintable(shown));
}

void TestWindowFiles::exportRead_beforeAnyReadOpensNoPanel() {
    WindowFixture velm;
    velm.start();
    velm.log.take();
    velm.click(velm.controls().btn_export_read);
    QCOMPARE(velm.log.lines, QStringList(QStringLiteral("first read the chip!")));
    QVERIFY(velm.panels.requests.isEmpty());
    QVERIFY(!velm.message().isEmpty());
}

void TestWindowFiles::exportOutput_ofNothingOpensNoPanel() {
    WindowFixture velm;
    velm.start();
    velm.log.take();
    velm.click(velm.controls().btn_export_output);
    QCOMPARE(velm.log.lines, QStringList(QStringLiteral("first create some data!")));
    QVERIFY(velm.panels.requests.isEmpty());
}

void TestWindowFiles::exportOutput_ofPaddingAloneIsPossible() {
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::rom_start_address, QStringLiteral("3"));
    velm.start();
    velm.panels.answer = velm.path(QStringLiteral("saved.bin"));
    velm.click(velm.controls().btn_export_output);
    QCOMPARE(WindowFixture::bytesOf(velm.panels.answer), QByteArray("\xFF\xFF\xFF"));
}

void TestWindowFiles::exports_suggestTheDeviceAsTheName_data() {
    QTest::addColumn<QString>("device");
    QTest::addColumn<QString>("name");
    QTest::newRow("a plain name") << QStringLiteral("W27C512@DIP28")
                                  << QStringLiteral("W27C512@DIP28-burn.bin");
    QTest::newRow("a slash") << QStringLiteral("A29L040V/X@TSOP32(ADP:Pin9to1)")
                             << QStringLiteral("A29L040V_X@TSOP32_ADP_Pin9to1_-burn.bin");
    QTest::newRow("no name") << QString() << QStringLiteral("chip-burn.bin");
    QTest::newRow("a hidden file") << QStringLiteral("..") << QStringLiteral("chip..-burn.bin");
}

void TestWindowFiles::exports_suggestTheDeviceAsTheName() {
    QFETCH(QString, device);
    QFETCH(QString, name);
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::device, device);
    velm.settings().setValue(settingsKeys::rom_start_address, QStringLiteral("3"));
    velm.start();
    velm.click(velm.controls().btn_export_output);
    QCOMPARE(velm.panels.requests.first().suggestedName, name);
    QCOMPARE(velm.panels.requests.first().extensions, QStringList(QStringLiteral("bin")));
}

void TestWindowFiles::exports_writeTheWholeBuffer() {
    WindowFixture velm;
    velm.start();
    velm.click(velm.controls().btn_read);
    velm.panels.answer = velm.path(QStringLiteral("saved.bin"));
    velm.click(velm.controls().btn_export_read);
    QVERIFY(WindowFixture::bytesOf(velm.panels.answer) == *velm.state().read_from_chip_data);
    QCOMPARE(velm.state().read_from_chip_data->size(), 65536);
    QVERIFY2(velm.message().contains(velm.panels.answer), qPrintable(velm.message()));
}

void TestWindowFiles::exports_rememberTheFolder() {
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::rom_start_address, QStringLiteral("3"));
    velm.start();
    velm.write(QStringLiteral("deep/folder/other"), "x");
    velm.panels.answer = velm.path(QStringLiteral("deep/folder/saved.bin"));
    velm.click(velm.controls().btn_export_output);
    velm.end();
    velm.start();
    velm.click(velm.controls().btn_export_output);
    QCOMPARE(velm.panels.requests.last().folder, velm.path(QStringLiteral("deep/folder")));
}

void TestWindowFiles::exports_cancelledWriteNothing() {
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::rom_start_address, QStringLiteral("3"));
    velm.start();
    velm.log.take();
    velm.click(velm.controls().btn_export_output);
    QCOMPARE(velm.panels.requests.size(), 1);
    QCOMPARE(velm.log.lines, QStringList());
}

void TestWindowFiles::exports_replaceTheTargetOfALink() {
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::rom_start_address, QStringLiteral("3"));
    velm.start();
    const QString target = velm.write(QStringLiteral("target.bin"), "old");
    const QString link = velm.path(QStringLiteral("link.bin"));
    const QString linkToLink = velm.path(QStringLiteral("second.bin"));
    QVERIFY(QFile::link(target, link));
    QVERIFY(QFile::link(link, linkToLink));
    velm.panels.answer = linkToLink;
    velm.click(velm.controls().btn_export_output);
    QVERIFY(QFileInfo(link).isSymLink());
    QVERIFY(QFileInfo(linkToLink).isSymLink());
    QCOMPARE(WindowFixture::bytesOf(target), QByteArray("\xFF\xFF\xFF"));
}

void TestWindowFiles::exports_keepThePermissions() {
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::rom_start_address, QStringLiteral("3"));
    velm.start();
    velm.panels.answer = velm.write(QStringLiteral("saved.bin"), "old");
    const QFile::Permissions kept = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser |
                                    QFile::WriteUser | QFile::ReadGroup;
    QVERIFY(QFile::setPermissions(velm.panels.answer, kept));
    velm.click(velm.controls().btn_export_output);
    QCOMPARE(QFile::permissions(velm.panels.answer), kept);
    QCOMPARE(WindowFixture::bytesOf(velm.panels.answer).size(), 3);
}

void TestWindowFiles::exports_thatFailLeaveTheOldFile_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("no such folder") << QStringLiteral("/nowhere/saved.bin");
    QTest::newRow("a file where the folder should be") << QStringLiteral("/etc/passwd/saved.bin");
    QTest::newRow("a pipe") << QStringLiteral("pipe");
}

void TestWindowFiles::exports_thatFailLeaveTheOldFile() {
    QFETCH(QString, name);
    WindowFixture velm;
    const QString path = made(velm, name);
    velm.settings().setValue(settingsKeys::rom_start_address, QStringLiteral("3"));
    velm.start();
    velm.log.take();
    const ByteBuffer before = velm.state().output_data;
    velm.panels.answer = path;
    velm.click(velm.controls().btn_export_output);
    QCOMPARE(velm.log.lines, QStringList(QStringLiteral("error writing to ") + path));
    QVERIFY2(velm.message().contains(path), qPrintable(velm.message()));
    QCOMPARE(velm.state().output_data, before);
    QCOMPARE(QFileInfo::exists(path), name == QStringLiteral("pipe"));
    QVERIFY(!QFileInfo(path).isFile());
}

void TestWindowFiles::exports_toAReadOnlyFolderLeaveTheOldFile() {
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::rom_start_address, QStringLiteral("3"));
    velm.start();
    velm.panels.answer = velm.write(QStringLiteral("locked/saved.bin"), "old");
    const QString folder = velm.path(QStringLiteral("locked"));
    QCOMPARE(::chmod(qPrintable(velm.path(QStringLiteral("."))), 0755), 0);
    QCOMPARE(::chmod(qPrintable(folder), 0555), 0);
    {
        const UnprivilegedUser user;
        QVERIFY(user.isValid());
        velm.click(velm.controls().btn_export_output);
    }
    QCOMPARE(::chmod(qPrintable(folder), 0755), 0);
    QCOMPARE(WindowFixture::bytesOf(velm.panels.answer), QByteArray("old"));
    QCOMPARE(velm.log.count(QStringLiteral("error writing to ") + velm.panels.answer), 1);
    QVERIFY2(velm.message().contains(u"Permission denied"), qPrintable(velm.message()));
}

void TestWindowFiles::exports_toAFullDiskLeaveTheOldFile() {
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::rom_start_address, QStringLiteral("100000"));
    velm.start();
    velm.panels.answer = velm.write(QStringLiteral("saved.bin"), "old");
    {
        const FileSizeLimit fullDisk(65536);
        velm.click(velm.controls().btn_export_output);
    }
    QCOMPARE(WindowFixture::bytesOf(velm.panels.answer), QByteArray("old"));
    QCOMPARE(velm.log.count(QStringLiteral("error writing to ") + velm.panels.answer), 1);
}

void TestWindowFiles::saveConsole_writesTheTextAsItCame() {
    WindowFixture velm;
    velm.useTool("printf '\\r\\033[K 5%%\\r\\033[K 6%%\\n'\n");
    velm.start();
    velm.click(velm.controls().btn_verify);
    velm.settle();
    velm.panels.answer = velm.path(QStringLiteral("console.txt"));
    velm.controls().textView->saveAction()->trigger();
    QCOMPARE(WindowFixture::bytesOf(velm.panels.answer),
             QByteArray("\r\x1b[K 5%\r\x1b[K 6%\nminipro has exited with status 0"));
}

void TestWindowFiles::exportRead_suggestsTheDeviceThatWasRead() {
    WindowFixture velm;
    velm.start();
    velm.click(velm.controls().btn_read);
    velm.settings().setValue(settingsKeys::device, QStringLiteral("AT28C256"));
    velm.click(velm.controls().btn_export_read);
    velm.click(velm.controls().btn_read);
    velm.click(velm.controls().btn_export_read);
    QCOMPARE(velm.panels.requests.at(0).suggestedName, QStringLiteral("W27C512@DIP28.bin"));
    QCOMPARE(velm.panels.requests.at(1).suggestedName, QStringLiteral("AT28C256.bin"));
}

void TestWindowFiles::exportRead_suggestsWhoseReadFailed() {
    WindowFixture velm;
    velm.start();
    velm.click(velm.controls().btn_read);
    velm.settings().setValue(settingsKeys::device, QStringLiteral("AT28C256"));
    velm.useTool("exit 1\n");
    velm.click(velm.controls().btn_read);
    velm.click(velm.controls().btn_export_read);
    velm.useTool("printf part > \"$4\"; exit 1\n");
    velm.click(velm.controls().btn_read);
    velm.click(velm.controls().btn_export_read);
    QCOMPARE(velm.panels.requests.at(0).suggestedName, QStringLiteral("W27C512@DIP28.bin"));
    QCOMPARE(velm.panels.requests.at(1).suggestedName, QStringLiteral("AT28C256.bin"));
    // A file at another path, which was there before, may be of any chip.
    const QString other = velm.write(QStringLiteral("other.bin"), "other");
    QFile file(other);
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(QDateTime::currentDateTime().addDays(-1),
                             QFileDevice::FileModificationTime));
    file.close();
    velm.settings().setValue(settingsKeys::temp_read_from_chip_file, other);
    velm.useTool("exit 1\n");
    velm.click(velm.controls().btn_read);
    velm.click(velm.controls().btn_export_read);
    QCOMPARE(velm.panels.requests.at(2).suggestedName, QStringLiteral("chip.bin"));
    // The clock of the folder's machine may be another one.
    velm.useTool("printf part > \"$4\"; touch -d '1 minute ago' \"$4\"; exit 1\n");
    velm.click(velm.controls().btn_read);
    velm.click(velm.controls().btn_export_read);
    QCOMPARE(velm.panels.requests.at(3).suggestedName, QStringLiteral("AT28C256.bin"));
}

void TestWindowFiles::exports_writeTheBufferAsItIsAtConfirmation() {
    WindowFixture velm;
    showTwentyBytes(velm);
    velm.panels.answer = velm.path(QStringLiteral("saved.bin"));
    velm.panels.whileOpen = [&] { enter(velm, 0, 1, QStringLiteral("7A")); };
    velm.click(velm.controls().btn_export_output);
    QCOMPARE(WindowFixture::bytesOf(velm.panels.answer), QByteArray("z123456789ABCDEFGHIJ"));
}

void TestWindowFiles::exports_ofAnImageThatIsGoneLeaveTheOldFile() {
    WindowFixture velm;
    showTwentyBytes(velm);
    velm.panels.answer = velm.write(QStringLiteral("saved.bin"), "precious");
    velm.panels.whileOpen = [&] {
        velm.settings().setValue(settingsKeys::pad_to, QStringLiteral("-1"));
        velm.controls().btn_pad->setChecked(true);
    };
    velm.click(velm.controls().btn_export_output);
    QVERIFY(!velm.state().output_data);
    QCOMPARE(WindowFixture::bytesOf(velm.panels.answer), QByteArray("precious"));
    QVERIFY2(velm.message().contains(u"no bytes to save any more"), qPrintable(velm.message()));
    QVERIFY(velm.log.lines.contains(QStringLiteral("error writing to ") + velm.panels.answer));
}

// An address that is still being typed may be what gives the image its length.
void TestWindowFiles::exports_commitWhatIsBeingTypedFirst() {
    WindowFixture velm;
    velm.start();
    velm.controls().startAddTextField->setFocus();
    velm.controls().startAddTextField->selectAll();
    QTest::keyClicks(velm.controls().startAddTextField, QStringLiteral("4"));
    velm.panels.answer = velm.path(QStringLiteral("saved.bin"));
    QTest::keyClick(&velm.velm().window(), Qt::Key_S, Qt::ControlModifier);
    velm.settle();
    QCOMPARE(WindowFixture::bytesOf(velm.panels.answer), QByteArray(4, '\xff'));
}

void TestWindowFiles::nothingToSave_isSaidUntilThereIsSomething() {
    WindowFixture velm;
    velm.start();
    velm.click(velm.controls().btn_export_read);
    velm.click(velm.controls().btn_export_output);
    QVERIFY(velm.message().contains(u"First read the chip"));
    QVERIFY(velm.message().contains(u"First create some data"));
    velm.click(velm.controls().btn_read);
    QVERIFY2(!velm.message().contains(u"First read"), qPrintable(velm.message()));
    velm.delegate().openBinary(velm.write(QStringLiteral("rom.bin"), "bytes"));
    QVERIFY2(!velm.message().contains(u"First create"), qPrintable(velm.message()));
}

QTEST_MAIN(TestWindowFiles)
#include "tst_window_files.moc"

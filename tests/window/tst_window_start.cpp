// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/WindowFixture.h"

#include "settings/SettingsKeys.h"
#include "support/Privileges.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

/// Starts \a velm, whose settings name no folder, with its temporary files below \a folder.
void startIn(const QTemporaryDir &folder, VelmWindow &velm) {
    const QByteArray before = qgetenv("XDG_DATA_HOME");
    qputenv("XDG_DATA_HOME", QFile::encodeName(folder.path()));
    velm.start();
    qputenv("XDG_DATA_HOME", before);
}

} // namespace

/// What the window is when it has just been started.
class TestWindowStart : public QObject {
    Q_OBJECT

private slots:
    void firstStart_composesAnEmptyImageAndShowsTheReadTab();
    void firstStart_showsTheRegisteredDefaultsInTheControls();
    void storedSettings_areInTheControlsBeforeTheFirstComposition();
    void leftovers_goButTheLogicReportStays();
    void leftovers_missingOnesAreLoggedWithTheErrorCarriedOver();
    void openedBinary_isInTheImageAgain();
    void openedBinary_thatVanishedIsSaidAndItsPathKept();
    void openedBinary_thatIsNoFileIsSaid_data();
    void openedBinary_thatIsNoFileIsSaid();
    void damagedSettings_areKeptAsideAndSaid();
    void unreadableSettings_areSaid();
    void unreadableSettings_areSaidUntilTheyAreRead();
    void unsavedSettings_areSaidUntilTheyAreSaved();
    void paths_showTheirEnds();
    void quitting_leavesTheTemporaryFiles();
    void everyControl_hasItsAccessibleName();
    void emptyGrid_saysWhatToDo_data();
    void emptyGrid_saysWhatToDo();
    void theWindow_fitsASmallScreen();
    void theConsole_hasRoomForFourLines();
};

void TestWindowStart::firstStart_composesAnEmptyImageAndShowsTheReadTab() {
    WindowFixture velm;
    velm.start();
    QCOMPARE(velm.log.take(), QStringList({QStringLiteral("populateMenu is adding 1 items"),
                                           QStringLiteral("have read pad_to and converted to 0"),
                                           QStringLiteral("start_address is 0"),
                                           QStringLiteral("filling output_data length:0 with 255"),
                                           QStringLiteral("inserting opened binary:0 at 0")}));
    QVERIFY(!velm.state().opened_bin_data);
    QVERIFY(!velm.state().display_data);
    QVERIFY(velm.state().retainArray.isEmpty());
    QVERIFY(velm.settings().stringValue(settingsKeys::binary).isNull());
    QCOMPARE(velm.controls().peeping_at->text(), QStringLiteral("Data read from chip:"));
    QCOMPARE(velm.row(0), QStringLiteral("0000 XX XX XX XX XX XX XX XX XX XX XX XX XX XX XX XX "));
    QVERIFY(QFileInfo(velm.temporary(QStringLiteral("temp.bin"))).isFile());
    QCOMPARE(QFileInfo(velm.temporary(QStringLiteral("temp.bin"))).size(), 0);
    QCOMPARE(velm.message(), QString());
}

void TestWindowStart::firstStart_showsTheRegisteredDefaultsInTheControls() {
    WindowFixture velm;
    velm.start();
    const Ui::MainWindow &c = velm.controls();
    QCOMPARE(c.startAddTextField->text(), QStringLiteral("0000"));
    QCOMPARE(c.padToTextField->text(), QString());
    QCOMPARE(c.check_noSizeMismatchError->isChecked(), true);
    QCOMPARE(c.check_noIDMismatchError->isChecked(), false);
    QCOMPARE(c.check_skipErase->isChecked(), false);
    QCOMPARE(c.check_unprotect->isChecked(), false);
    QCOMPARE(c.btn_pad->isChecked(), false);
    QCOMPARE(c.btn_pad_ff->isChecked(), true);
    QCOMPARE(c.btn_pad_00->isChecked(), false);
    QCOMPARE(c.readFileTextField->text(), QString());
}

void TestWindowStart::storedSettings_areInTheControlsBeforeTheFirstComposition() {
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::rom_start_address, QStringLiteral("4"));
    velm.settings().setValue(settingsKeys::pad, true);
    velm.settings().setValue(settingsKeys::pad_to, QStringLiteral("1"));
    velm.settings().setValue(settingsKeys::pad_ff, false);
    velm.settings().setValue(settingsKeys::pad_00, true);
    velm.start();
    QVERIFY(velm.controls().btn_pad_00->isChecked());
    QCOMPARE(*velm.state().output_data, QByteArray(1024, '\0'));
}

void TestWindowStart::leftovers_goButTheLogicReportStays() {
    WindowFixture velm;
    for (const char *name : {"temp.bin", "temp_read.bin", "temp_sr.bin", "temp_logtest.bin"})
        velm.write(velm.temporary(QLatin1String(name)), "left over");
    velm.start();
    QCOMPARE(WindowFixture::bytesOf(velm.temporary(QStringLiteral("temp.bin"))), QByteArray());
    QVERIFY(!QFile::exists(velm.temporary(QStringLiteral("temp_read.bin"))));
    QVERIFY(!QFile::exists(velm.temporary(QStringLiteral("temp_sr.bin"))));
    QVERIFY(QFile::exists(velm.temporary(QStringLiteral("temp_logtest.bin"))));
    QCOMPARE(velm.log.startingWith(QStringLiteral("error removing")), QStringList());
}

void TestWindowStart::leftovers_missingOnesAreLoggedWithTheErrorCarriedOver() {
    WindowFixture velm;
    velm.write(velm.temporary(QStringLiteral("temp_read.bin")), "left over");
    velm.write(velm.temporary(QStringLiteral("temp_sr.bin")), "left over");
    velm.start();
    const QStringList lines = velm.log.startingWith(QStringLiteral("error removing "));
    QCOMPARE(lines.size(), 3);
    const QString firstError = lines.first().section(QStringLiteral(" : "), 1);
    QVERIFY(!firstError.isEmpty());
    QCOMPARE(lines.at(2), QStringLiteral("error removing %1 : %2")
                              .arg(velm.temporary(QStringLiteral("temp_sr.bin")), firstError));
}

void TestWindowStart::openedBinary_isInTheImageAgain() {
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::binary, velm.write(QStringLiteral("rom.bin"), "ROM!"));
    velm.start();
    QCOMPARE(*velm.state().output_data, QByteArray("ROM!"));
    QCOMPARE(WindowFixture::bytesOf(velm.temporary(QStringLiteral("temp.bin"))),
             QByteArray("ROM!"));
    QCOMPARE(velm.controls().readFileTextField->text(), velm.path(QStringLiteral("rom.bin")));
}

void TestWindowStart::openedBinary_thatVanishedIsSaidAndItsPathKept() {
    WindowFixture velm;
    const QString gone = velm.path(QStringLiteral("gone.bin"));
    velm.settings().setValue(settingsKeys::binary, gone);
    velm.start();
    QVERIFY(!velm.state().opened_bin_data);
    QCOMPARE(velm.settings().stringValue(settingsKeys::binary), gone);
    QVERIFY2(velm.message().contains(gone), qPrintable(velm.message()));
    QCOMPARE(velm.log.startingWith(QStringLiteral("error")), QStringList());
}

void TestWindowStart::openedBinary_thatIsNoFileIsSaid_data() {
    QTest::addColumn<QString>("path");
    QTest::newRow("a folder") << QStringLiteral("/tmp");
    QTest::newRow("a device") << QStringLiteral("/dev/zero");
}

void TestWindowStart::openedBinary_thatIsNoFileIsSaid() {
    QFETCH(QString, path);
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::binary, path);
    velm.start();
    QVERIFY(!velm.state().opened_bin_data);
    QVERIFY2(velm.message().contains(path), qPrintable(velm.message()));
}

void TestWindowStart::damagedSettings_areKeptAsideAndSaid() {
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("velm.conf"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QByteArray("\0\1\2 no settings at all\n[", 24));
    file.close();
    SettingsStore settings(path);
    RecordingLog log;
    AnsweringPanels panels;
    VelmWindow velm({settings, log, panels, [] {}, folder.filePath(QStringLiteral("state"))});
    QVERIFY(QFile::exists(path)); // another start may turn out to be at work with it
    startIn(folder, velm);
    QVERIFY(settings.unreadFile() && settings.unreadFile()->movedTo);
    QVERIFY(QFile::exists(path + QStringLiteral(".damaged")));
    const QString message = velm.window().controls().messageLine->toPlainText();
    QVERIFY2(message.contains(settings.unreadFile()->sentence), qPrintable(message));
    QVERIFY2(!message.contains(u"could not be read: "), qPrintable(message));
}

void TestWindowStart::paths_showTheirEnds() {
    WindowFixture velm;
    const QString folder = QStringLiteral("/a folder with a long name").repeated(8);
    velm.settings().setValue(settingsKeys::binary, folder + QStringLiteral("/rom.bin"));
    velm.start();
    velm.settings().setValue(settingsKeys::miniproLocation, folder + QStringLiteral("/minipro"));
    velm.velm().window().resize(1366, 700);
    const Ui::MainWindow &c = velm.controls();
    QVERIFY(c.readFileTextField->shownText().endsWith(u"/rom.bin"));
    QVERIFY(c.miniproLocationField->shownText().endsWith(u"/minipro"));
    QVERIFY(c.miniproLocationField->shownText().contains(QChar(0x2026)));
}

void TestWindowStart::quitting_leavesTheTemporaryFiles() {
    WindowFixture velm;
    velm.start();
    velm.end();
    QVERIFY(QFile::exists(velm.temporary(QStringLiteral("temp.bin"))));
}

void TestWindowStart::everyControl_hasItsAccessibleName() {
    WindowFixture velm;
    velm.start();
    const QStringList expected = {
        QStringLiteral("Read"),
        QStringLiteral("Verify"),
        QStringLiteral("Write"),
        QStringLiteral("Logic test"),
        QStringLiteral("Stop"),
        QStringLiteral("Message"),
        QStringLiteral("Device"),
        QStringLiteral("Search devices"),
        QStringLiteral("Favourites"),
        QStringLiteral("Add to favourites"),
        QStringLiteral("Remove from favourites"),
        QStringLiteral("Programmer tool"),
        QStringLiteral("Ignore chip ID mismatch"),
        QStringLiteral("Ignore size mismatch"),
        QStringLiteral("Skip erase"),
        QStringLiteral("Remove write protection"),
        QStringLiteral("Open binary"),
        QStringLiteral("Opened binary"),
        QStringLiteral("Start address"),
        QStringLiteral("Use data read from chip"),
        QStringLiteral("Pad"),
        QStringLiteral("Pad to"),
        QStringLiteral("0xFF"),
        QStringLiteral("0x00"),
        QStringLiteral("Save data read from chip"),
        QStringLiteral("Save data to burn"),
        QStringLiteral("Bytes"),
        QStringLiteral("Console"),
    };
    QStringList names;
    const QList<QWidget *> widgets = velm.velm().window().findChildren<QWidget *>();
    for (QWidget *widget : widgets)
        if (widget->isVisible() && !widget->accessibleName().isEmpty())
            names.append(widget->accessibleName());
    for (const QString &name : expected)
        QVERIFY2(names.count(name) == 1, qPrintable(name));
}

void TestWindowStart::emptyGrid_saysWhatToDo_data() {
    QTest::addColumn<QString>("tab");
    QTest::addColumn<QString>("words");
    QTest::newRow("read") << readTabIdentifier() << QStringLiteral("press Read (F5)");
    QTest::newRow("burn") << burnTabIdentifier() << QStringLiteral("Open a binary (Ctrl+O)");
    QTest::newRow("logic") << logicTabIdentifier() << QStringLiteral("press Logic test (F8)");
}

void TestWindowStart::emptyGrid_saysWhatToDo() {
    QFETCH(QString, tab);
    QFETCH(QString, words);
    WindowFixture velm;
    velm.start();
    GridView *grid = velm.controls().tableview;
    velm.controls().tabview->selectTabViewItem(tab);
    QTRY_VERIFY2(grid->hint().shown().contains(words), qPrintable(grid->hint().shown()));
    QCOMPARE(grid->accessibleDescription(), grid->hint().shown());
    velm.controls().tabview->selectTabViewItem(readTabIdentifier());
    velm.click(velm.controls().btn_read);
    velm.settle();
    QCOMPARE(grid->hint().shown(), QString());
    QCOMPARE(grid->accessibleDescription(), QString());
}

void TestWindowStart::theWindow_fitsASmallScreen() {
    WindowFixture velm;
    velm.start();
    const QSize least = velm.velm().window().minimumSizeHint();
    QVERIFY2(least.width() <= 1024 && least.height() <= 700,
             qPrintable(QStringLiteral("%1 x %2").arg(least.width()).arg(least.height())));
}

void TestWindowStart::theConsole_hasRoomForFourLines() {
    WindowFixture velm;
    velm.start();
    const ConsoleView &console = *velm.controls().textView;
    QCOMPARE(console.height(), console.heightFor(4));
}

void TestWindowStart::unreadableSettings_areSaid() {
    WindowFixture velm;
    QTemporaryDir folder;
    SettingsStore settings(folder.path()); // a folder in the file's place
    VelmWindow window({settings, velm.log, velm.panels, [] {}, velm.path(QStringLiteral("s"))});
    startIn(folder, window);
    const QString message = window.window().controls().messageLine->toPlainText();
    QVERIFY(settings.unreadFile());
    QVERIFY2(message.contains(settings.unreadFile()->sentence), qPrintable(message));
}

void TestWindowStart::unreadableSettings_areSaidUntilTheyAreRead() {
    WindowFixture velm;
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("velm.conf"));
    QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("velm.conf")));
    SettingsStore settings(path);
    VelmWindow window({settings, velm.log, velm.panels, [] {}, velm.path(QStringLiteral("s"))});
    startIn(folder, window);
    const MessageLine &line = *window.window().controls().messageLine;
    const QString sentence = QStringLiteral("VELM starts with its defaults");
    QVERIFY2(line.toPlainText().contains(sentence), qPrintable(line.toPlainText()));
    QVERIFY(QDir(path).removeRecursively());
    velm.write(path, "[General]\npad_to=77\n");
    settings.setValue(settingsKeys::device, QStringLiteral("27C64"));
    QCOMPARE(settings.stringValue(settingsKeys::pad_to), QStringLiteral("77"));
    // A slow disk answers after the change.
    QTRY_VERIFY2(!line.toPlainText().contains(sentence), qPrintable(line.toPlainText()));
}

void TestWindowStart::unsavedSettings_areSaidUntilTheyAreSaved() {
    WindowFixture velm;
    velm.start();
    {
        const FileSizeLimit full(4);
        velm.settings().setValue(settingsKeys::device, QStringLiteral("27C64"));
    }
    QVERIFY2(velm.message().contains(u"cannot be saved"), qPrintable(velm.message()));
    velm.settings().setValue(settingsKeys::device, QStringLiteral("27C128"));
    // A slow disk answers after the change.
    QTRY_VERIFY2(!velm.message().contains(u"cannot be saved"), qPrintable(velm.message()));
}

QTEST_MAIN(TestWindowStart)
#include "tst_window_start.moc"

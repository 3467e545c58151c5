// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/WindowFixture.h"

#include "settings/SettingsKeys.h"

#include <QMenu>
#include <QSettings>
#include <QSplitter>

/// What a user has set is there when the program is started again.
class TestWindowRestart : public QObject {
    Q_OBJECT

private slots:
    void everyControl_isAsItWasLeft();
    void everyKey_isKeptAndNoneIsAdded();
    void openedBinary_isInTheImageAgain();
    void favourites_areInTheMenuAgain();
    void window_hasItsSizesAgain();
    void panels_lookAsTheyDid();
    void folders_areRememberedApartFromTheSettings();
    void whatBelongsToOneSession_startsAfresh();
    void startAndEnd_changeNoSetting();
};

namespace {

/// The opened binary of these tests.
QByteArray rom() {
    return QByteArrayLiteral("ROM from the last time");
}

/// Replaces the text of a field at the keyboard, and enters it.
void typeInto(QLineEdit *field, const QString &text) {
    field->setFocus();
    field->selectAll();
    QTest::keyClicks(field, text);
    QTest::keyClick(field, Qt::Key_Return);
}

/// Sets each control that the settings keep to what it is not by default.
void setEverything(WindowFixture &velm) {
    Ui::MainWindow &controls = velm.controls();
    velm.panels.answer = velm.write(QStringLiteral("files/rom, 1.bin"), rom());
    velm.click(controls.btn_open);
    typeInto(controls.uaTextField, QStringLiteral("SST39SF040@PLCC32"));
    velm.click(controls.btn_add_favourite);
    typeInto(controls.uaTextField, QStringLiteral("7400"));
    velm.click(controls.btn_add_favourite);
    typeInto(controls.miniproLocationField, QStringLiteral("/opt/bench/minipro"));
    velm.click(controls.check_noIDMismatchError);
    velm.click(controls.check_noSizeMismatchError);
    velm.click(controls.check_skipErase);
    velm.click(controls.check_unprotect);
    typeInto(controls.startAddTextField, QStringLiteral("1F0"));
    typeInto(controls.padToTextField, QStringLiteral("2"));
    velm.click(controls.btn_pad);
    velm.click(controls.btn_pad_00);
    velm.settle();
}

QString checked(const QAbstractButton *button) {
    return button->accessibleName() + QLatin1String(button->isChecked() ? ": on" : ": off");
}

/// What the controls that the settings keep show, line by line.
QStringList picture(WindowFixture &velm) {
    const Ui::MainWindow &controls = velm.controls();
    return {
        controls.uaTextField->text(),
        controls.miniproLocationField->text(),
        controls.readFileTextField->text(),
        controls.startAddTextField->text(),
        controls.padToTextField->text(),
        checked(controls.check_noIDMismatchError),
        checked(controls.check_noSizeMismatchError),
        checked(controls.check_skipErase),
        checked(controls.check_unprotect),
        checked(controls.btn_pad),
        checked(controls.btn_pad_ff),
        checked(controls.btn_pad_00),
    };
}

} // namespace

void TestWindowRestart::everyControl_isAsItWasLeft() {
    WindowFixture velm;
    velm.start();
    setEverything(velm);
    const QStringList left = {
        QStringLiteral("7400"),
        QStringLiteral("/opt/bench/minipro"),
        velm.path(QStringLiteral("files/rom, 1.bin")),
        QStringLiteral("1F0"),
        QStringLiteral("2"),
        QStringLiteral("Ignore chip ID mismatch: on"),
        QStringLiteral("Ignore size mismatch: off"),
        QStringLiteral("Skip erase: on"),
        QStringLiteral("Remove write protection: on"),
        QStringLiteral("Pad: on"),
        QStringLiteral("0xFF: off"),
        QStringLiteral("0x00: on"),
    };
    QCOMPARE(picture(velm), left);
    velm.end();
    velm.start();
    QCOMPARE(picture(velm), left);
}

void TestWindowRestart::everyKey_isKeptAndNoneIsAdded() {
    WindowFixture velm;
    velm.start();
    setEverything(velm);
    velm.end();
    const QSettings file(velm.path(QStringLiteral("velm.conf")), QSettings::IniFormat);
    const QStringList keys = {
        settingsKeys::binary,
        settingsKeys::device,
        settingsKeys::favourites,
        settingsKeys::miniproLocation,
        settingsKeys::noIDMismatchError,
        settingsKeys::noSizeMismatchError,
        settingsKeys::pad,
        settingsKeys::pad_00,
        settingsKeys::pad_ff,
        settingsKeys::pad_to,
        settingsKeys::rom_start_address,
        settingsKeys::skipErase,
        settingsKeys::temp_logic_chip_test_results_file,
        settingsKeys::temp_output_file,
        settingsKeys::temp_read_from_chip_file,
        settingsKeys::temp_search_results_file,
        settingsKeys::unprotect,
    };
    QStringList kept = file.allKeys();
    kept.sort();
    QCOMPARE(kept, keys);
}

void TestWindowRestart::openedBinary_isInTheImageAgain() {
    constexpr qsizetype start = 0x1F0;
    constexpr qsizetype padded = 2048;
    WindowFixture velm;
    velm.start();
    setEverything(velm);
    velm.end();
    velm.start();
    const QByteArray image = QByteArray(padded, '\0').replace(start, rom().size(), rom());
    QCOMPARE(*velm.state().output_data, image);
    QCOMPARE(WindowFixture::bytesOf(velm.temporary(QStringLiteral("temp.bin"))), image);
    velm.controls().tabview->selectTabViewItem(burnTabIdentifier());
    velm.settle();
    QCOMPARE(
        velm.row(start / 16),
        QStringLiteral("01F0 52 4F 4D 20 66 72 6F 6D 20 74 68 65 20 6C 61 73 ROM from the las"));
}

void TestWindowRestart::favourites_areInTheMenuAgain() {
    WindowFixture velm;
    velm.start();
    setEverything(velm);
    velm.end();
    velm.start();
    QStringList entries;
    for (const QAction *action : velm.controls().dButton->menu()->actions())
        entries.append(action->text());
    QCOMPARE(entries, QStringList({QStringLiteral("W27C512@DIP28"),
                                   QStringLiteral("SST39SF040@PLCC32"), QStringLiteral("7400")}));
}

void TestWindowRestart::window_hasItsSizesAgain() {
    WindowFixture velm;
    velm.start();
    // The platform bounds what it restores to the screen, which is small here.
    const QSize size = velm.velm().window().minimumSizeHint() + QSize(0, 200);
    QVERIFY(velm.velm().window().size() != size);
    velm.velm().window().resize(size);
    velm.controls().splitter->setSizes({250, 350});
    const QList<int> sizes = velm.controls().splitter->sizes();
    velm.end();

    velm.start();
    QCOMPARE(velm.velm().window().size(), size);
    QCOMPARE(velm.controls().splitter->sizes(), sizes);
}

void TestWindowRestart::panels_lookAsTheyDid() {
    WindowFixture velm;
    velm.start();
    QCOMPARE(velm.panels.lastLook, QByteArray());
    velm.panels.lastLook = "as a list";
    velm.end();
    velm.panels.lastLook.clear();
    velm.start();
    QCOMPARE(velm.panels.lastLook, QByteArray("as a list"));
}

void TestWindowRestart::folders_areRememberedApartFromTheSettings() {
    WindowFixture velm;
    velm.start();
    setEverything(velm);
    velm.panels.answer = velm.write(QStringLiteral("saved/burn.bin"), "");
    velm.click(velm.controls().btn_export_output);
    velm.end();

    velm.start();
    QCOMPARE(velm.recentFiles(), QStringList{velm.path(QStringLiteral("files/rom, 1.bin"))});
    velm.panels.answer.clear();
    velm.click(velm.controls().btn_open);
    QCOMPARE(velm.panels.requests.last().folder, velm.path(QStringLiteral("files")));
    velm.click(velm.controls().btn_export_output);
    QCOMPARE(velm.panels.requests.last().folder, velm.path(QStringLiteral("saved")));
}

void TestWindowRestart::whatBelongsToOneSession_startsAfresh() {
    WindowFixture velm;
    velm.start();
    velm.click(velm.controls().btn_read);
    velm.click(velm.controls().btn_combine_read_data);
    velm.controls().tabview->selectTabViewItem(logicTabIdentifier());
    velm.settle();
    QVERIFY(velm.state().read_from_chip_data);
    velm.end();

    velm.start();
    velm.settle();
    QVERIFY(!velm.state().read_from_chip_data);
    QVERIFY(!velm.controls().btn_combine_read_data->isChecked());
    QCOMPARE(velm.controls().tabview->selectedTabViewItem().identifier, readTabIdentifier());
    QCOMPARE(velm.controls().textView->storedText(), QString());
    QCOMPARE(velm.row(0), QStringLiteral("0000 XX XX XX XX XX XX XX XX XX XX XX XX XX XX XX XX "));
}

void TestWindowRestart::startAndEnd_changeNoSetting() {
    WindowFixture velm;
    velm.start();
    setEverything(velm);
    velm.end();
    const QByteArray before = WindowFixture::bytesOf(velm.path(QStringLiteral("velm.conf")));
    velm.start();
    velm.settle();
    velm.end();
    QCOMPARE(WindowFixture::bytesOf(velm.path(QStringLiteral("velm.conf"))), before);
}

QTEST_MAIN(TestWindowRestart)
#include "tst_window_restart.moc"

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/WindowFixture.h"

#include "settings/SettingsKeys.h"

#include <QAbstractButton>
#include <QFile>
#include <QLineEdit>
#include <QMimeData>
#include <QScrollBar>

/// The composition controls, the tabs and what is redisplayed.
class TestWindowComposition : public QObject {
    Q_OBJECT

private slots:
    void eachCompositionControl_rebuildsTheImageOnce_data();
    void eachCompositionControl_rebuildsTheImageOnce();
    void anotherSender_onlyWritesTheLogLine();
    void anOptionSwitch_writesItsKeyAndRebuildsNothing();
    void aFailedWrite_leavesNoOlderImageAndSaysSo();
    void aRefusedComposition_leavesNoImageAndSaysWhy_data();
    void aRefusedComposition_leavesNoImageAndSaysWhy();
    void remarks_aboutNumbers_data();
    void remarks_aboutNumbers();
    void tabs_showTheBuffersThemselves();
    void tabs_unknownIdentifierChangesNothing();
    void redisplay_comesATurnLater();
    void multiByteImage_saysHowManyBytesAreHidden();
    void longConsole_scrollsToTheEndAtEveryAppend();
    void appendToOutputView_keepsTheOrder();
    void conversions_areTheControllersToo();
    void drops_areValidatedButChangeNothing();
    void handleControl_composesForItsSixControlsAlone();
};

namespace {

QAbstractButton *buttonNamed(WindowFixture &velm, const QString &name) {
    return velm.velm().window().findChild<QAbstractButton *>(name);
}

} // namespace

void TestWindowComposition::eachCompositionControl_rebuildsTheImageOnce_data() {
    QTest::addColumn<QString>("control");
    QTest::addColumn<QString>("typed");
    QTest::newRow("start address") << QStringLiteral("startAddTextField") << QStringLiteral("10");
    QTest::newRow("pad to") << QStringLiteral("padToTextField") << QStringLiteral("1");
    QTest::newRow("use data read") << QStringLiteral("btn_combine_read_data") << QString();
    QTest::newRow("pad") << QStringLiteral("btn_pad") << QString();
    QTest::newRow("fill with 00") << QStringLiteral("btn_pad_00") << QString();
}

void TestWindowComposition::eachCompositionControl_rebuildsTheImageOnce() {
    QFETCH(QString, control);
    QFETCH(QString, typed);
    WindowFixture velm;
    velm.start();
    const ByteBuffer before = velm.state().output_data;
    velm.log.take();
    if (auto *field = velm.velm().window().findChild<QLineEdit *>(control)) {
        field->setFocus();
        field->selectAll();
        QTest::keyClicks(field, typed + u'\r');
        velm.controls().tableview->setFocus();
    } else {
        velm.click(buttonNamed(velm, control));
    }
    QCOMPARE(velm.log.count(QStringLiteral("handleControl:")), 1);
    QCOMPARE(velm.log.startingWith(QStringLiteral("have read pad_to")).size(), 1);
    QVERIFY(velm.state().output_data != before);
}

void TestWindowComposition::anotherSender_onlyWritesTheLogLine() {
    WindowFixture velm;
    velm.start();
    const ByteBuffer before = velm.state().output_data;
    velm.log.take();
    velm.delegate().handleControl(velm.controls().btn_read);
    velm.delegate().handleControl(nullptr);
    velm.settle();
    QCOMPARE(velm.log.lines,
             QStringList({QStringLiteral("handleControl:"), QStringLiteral("handleControl:")}));
    QCOMPARE(velm.state().output_data, before);
}

void TestWindowComposition::anOptionSwitch_writesItsKeyAndRebuildsNothing() {
    WindowFixture velm;
    velm.start();
    velm.log.take();
    velm.click(velm.controls().check_skipErase);
    QCOMPARE(velm.settings().boolValue(settingsKeys::skipErase), true);
    QCOMPARE(velm.log.lines, QStringList());
}

void TestWindowComposition::aFailedWrite_leavesNoOlderImageAndSaysSo() {
    WindowFixture velm;
    velm.write(QStringLiteral("file"), "a plain file where the folder should be");
    velm.settings().setValue(settingsKeys::temp_output_file,
                             velm.path(QStringLiteral("file/temp.bin")));
    velm.start();
    QCOMPARE(velm.log.count(QStringLiteral("error writing to temp file")), 1);
    QVERIFY2(velm.message().contains(u"could not be written"), qPrintable(velm.message()));
    QVERIFY(velm.state().output_data);
}

void TestWindowComposition::aRefusedComposition_leavesNoImageAndSaysWhy_data() {
    QTest::addColumn<QString>("start");
    QTest::addColumn<QString>("padTo");
    QTest::newRow("a negative size") << QStringLiteral("0") << QStringLiteral("-1");
    QTest::newRow("a size that wraps below zero")
        << QStringLiteral("0") << QStringLiteral("2097152");
    QTest::newRow("more than 1 GiB") << QStringLiteral("40000001") << QString();
    QTest::newRow("the largest start address") << QStringLiteral("FFFFFFFFF") << QString();
}

void TestWindowComposition::aRefusedComposition_leavesNoImageAndSaysWhy() {
    QFETCH(QString, start);
    QFETCH(QString, padTo);
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::binary, velm.write(QStringLiteral("rom.bin"), "ROM!"));
    velm.start();
    velm.log.take();
    velm.settings().setValue(settingsKeys::rom_start_address, start);
    velm.settings().setValue(settingsKeys::pad_to, padTo);
    velm.controls().btn_pad->setChecked(true);
    velm.settle();
    QVERIFY(!velm.state().output_data);
    QCOMPARE(velm.log.count(QStringLiteral("error writing to temp file")), 1);
    QCOMPARE(velm.log.startingWith(QStringLiteral("padding to")), QStringList());
    QVERIFY(!QFile::exists(velm.temporary(QStringLiteral("temp.bin"))));
    QVERIFY2(velm.message().contains(u"There are no data to burn"), qPrintable(velm.message()));
    velm.controls().btn_pad->setChecked(false);
    velm.settings().setValue(settingsKeys::rom_start_address, QStringLiteral("0"));
    velm.delegate().build_and_reload();
    velm.settle();
    QVERIFY2(!velm.message().contains(u"There are no data to burn"), qPrintable(velm.message()));
}

void TestWindowComposition::remarks_aboutNumbers_data() {
    QTest::addColumn<QString>("start");
    QTest::addColumn<QString>("padTo");
    QTest::addColumn<qint64>("length");
    QTest::addColumn<QString>("remark");
    QTest::newRow("a start address that is none")
        << QStringLiteral("xyz") << QStringLiteral("1") << qint64(1024)
        << QStringLiteral("The start address holds no hexadecimal number: 0 is used.");
    QTest::newRow("a start address that is partly one")
        << QStringLiteral("1G") << QStringLiteral("1") << qint64(1024)
        << QStringLiteral("Only the beginning of the start address “1G” is a hexadecimal "
                          "number: 1 is used.");
    QTest::newRow("numbers behind a no-break space")
        << QStringLiteral("\u00a00") << QStringLiteral("\u00a01") << qint64(1024) << QString();
    QTest::newRow("a pad size that is none")
        << QStringLiteral("0") << QStringLiteral("many") << qint64(4)
        << QStringLiteral("Pad to holds no number: nothing is padded.");
    QTest::newRow("a pad size that is partly one")
        << QStringLiteral("0") << QStringLiteral("1k") << qint64(1024)
        << QStringLiteral("Only the beginning of “1k” is a number: the data are padded to 1 KiB.");
    QTest::newRow("a pad size that reads as a place for another number")
        << QStringLiteral("0") << QStringLiteral("1%2x") << qint64(1024)
        << QStringLiteral(
               "Only the beginning of “1%2x” is a number: the data are padded to 1 KiB.");
    QTest::newRow("a start address that reads as a place for another number")
        << QStringLiteral("1%2x") << QStringLiteral("1") << qint64(1024)
        << QStringLiteral("Only the beginning of the start address “1%2x” is a hexadecimal "
                          "number: 1 is used.");
    QTest::newRow("a pad size that wraps")
        << QStringLiteral("0") << QStringLiteral("4194305") << qint64(1024)
        << QStringLiteral("Pad to is too large for its field: it counts as 1,024 bytes.");
    QTest::newRow("good numbers") << QStringLiteral(" 0x10 ") << QStringLiteral(" +1 ")
                                  << qint64(1024) << QString();
}

void TestWindowComposition::remarks_aboutNumbers() {
    QFETCH(QString, start);
    QFETCH(QString, padTo);
    QFETCH(qint64, length);
    QFETCH(QString, remark);
    QLocale::setDefault(QLocale(QLocale::English));
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::binary, velm.write(QStringLiteral("rom.bin"), "ROM!"));
    velm.settings().setValue(settingsKeys::pad, true);
    velm.settings().setValue(settingsKeys::rom_start_address, start);
    velm.settings().setValue(settingsKeys::pad_to, padTo);
    velm.start();
    QCOMPARE(lengthOf(velm.state().output_data), length);
    QVERIFY2(remark.isEmpty() ? velm.message().isEmpty() : velm.message().contains(remark),
             qPrintable(velm.message()));
}

void TestWindowComposition::tabs_showTheBuffersThemselves() {
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::binary, velm.write(QStringLiteral("rom.bin"), "ROM!"));
    velm.useTool("printf AB > \"$4\"\n");
    velm.start();
    velm.click(velm.controls().btn_read);
    velm.settle();
    QCOMPARE(velm.row(0),
             QStringLiteral("0000 41 42 XX XX XX XX XX XX XX XX XX XX XX XX XX XX AB"));
    velm.controls().tabview->selectTabViewItem(burnTabIdentifier());
    QCOMPARE(velm.controls().peeping_at->text(), QStringLiteral("Data to burn:"));
    QCOMPARE(velm.state().display_data.get(), velm.state().output_data.get());
    QCOMPARE(velm.row(0),
             QStringLiteral("0000 52 4F 4D 21 XX XX XX XX XX XX XX XX XX XX XX XX ROM!"));
    velm.controls().tabview->selectTabViewItem(readTabIdentifier());
    QCOMPARE(velm.controls().peeping_at->text(), QStringLiteral("Data read from chip:"));
    QCOMPARE(velm.state().display_data.get(), velm.state().read_from_chip_data.get());
}

void TestWindowComposition::tabs_unknownIdentifierChangesNothing() {
    WindowFixture velm;
    velm.start();
    const ByteBuffer shown = velm.state().display_data;
    velm.controls().peeping_at->setText(QStringLiteral("untouched"));
    velm.delegate().tabView_didSelectTabViewItem(velm.controls().tabview,
                                                 TabViewItem{QStringLiteral("3")});
    QCOMPARE(velm.state().display_data, shown);
    QCOMPARE(velm.controls().peeping_at->text(), QStringLiteral("untouched"));
}

void TestWindowComposition::redisplay_comesATurnLater() {
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::binary, velm.write(QStringLiteral("rom.bin"), "ROM!"));
    velm.start();
    velm.controls().tabview->selectTabViewItem(burnTabIdentifier());
    velm.delegate().build_and_reload();
    QVERIFY(velm.state().display_data != velm.state().output_data);
    QCOMPARE(velm.cell(0, 1), QStringLiteral("52"));
    velm.settle();
    QCOMPARE(velm.state().display_data, velm.state().output_data);
}

void TestWindowComposition::multiByteImage_saysHowManyBytesAreHidden() {
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::binary,
                             velm.write(QStringLiteral("rom.bin"), "\xC3\xA9\x41"));
    velm.start();
    velm.controls().tabview->selectTabViewItem(burnTabIdentifier());
    QCOMPARE(velm.row(0),
             QStringLiteral("0000 C3 A9 XX XX XX XX XX XX XX XX XX XX XX XX XX XX \u00e9A"));
    QVERIFY2(velm.message().contains(u"reads as UTF-8: its last byte "),
             qPrintable(velm.message()));
    velm.controls().tabview->selectTabViewItem(readTabIdentifier());
    QVERIFY2(!velm.message().contains(u"UTF-8"), qPrintable(velm.message()));
}

void TestWindowComposition::longConsole_scrollsToTheEndAtEveryAppend() {
    WindowFixture velm;
    velm.start();
    const QScrollBar *bar = velm.controls().textView->verticalScrollBar();
    for (int i = 0; i < 200; ++i) {
        velm.delegate().appendToOutputView(QStringLiteral("line %1\n").arg(i));
        velm.settle();
        QCOMPARE(bar->value(), bar->maximum());
    }
    QVERIFY(bar->maximum() > 0);
}

void TestWindowComposition::appendToOutputView_keepsTheOrder() {
    WindowFixture velm;
    velm.start();
    velm.delegate().appendToOutputView(QStringLiteral("one "));
    velm.delegate().appendToOutputView(QStringLiteral("two "));
    QCOMPARE(velm.controls().textView->storedText(), QString());
    velm.settle();
    QCOMPARE(velm.controls().textView->storedText(), QStringLiteral("one two "));
}

void TestWindowComposition::conversions_areTheControllersToo() {
    WindowFixture velm;
    velm.start();
    QCOMPARE(velm.delegate().trimEmptyStrings({QString(), QStringLiteral("a"), QString(),
                                               QStringLiteral("b"), QStringLiteral(" ")}),
             QStringList({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral(" ")}));
    QCOMPARE(velm.delegate().hexDigitFor(11), QStringLiteral("B"));
    QCOMPARE(velm.delegate().hexValue(16), QStringLiteral("1F"));
}

void TestWindowComposition::drops_areValidatedButChangeNothing() {
    WindowFixture velm;
    velm.start();
    QMimeData files;
    files.setUrls({QUrl::fromLocalFile(QStringLiteral("/tmp/rom.bin"))});
    QMimeData text;
    text.setText(QStringLiteral("plain"));
    const auto answer = [&](const QMimeData *drag) {
        return velm.delegate().tableView_validateDrop_proposedRow_proposedDropOperation(
            velm.controls().tableview, drag, 0, 0);
    };
    QCOMPARE(answer(&files), DragOperation::Generic);
    QCOMPARE(answer(&text), DragOperation::None);
}

void TestWindowComposition::handleControl_composesForItsSixControlsAlone() {
    WindowFixture velm;
    velm.start();
    Ui::MainWindow &c = velm.controls();
    const auto composes = [&](QObject *sender) {
        const ByteBuffer before = velm.state().output_data;
        velm.delegate().handleControl(sender);
        return velm.state().output_data != before;
    };
    for (QObject *control :
         {static_cast<QObject *>(c.startAddTextField),
          static_cast<QObject *>(c.btn_combine_read_data), static_cast<QObject *>(c.btn_pad),
          static_cast<QObject *>(c.padToTextField), static_cast<QObject *>(c.btn_pad_ff),
          static_cast<QObject *>(c.btn_pad_00)})
        QVERIFY2(composes(control), qPrintable(control->objectName()));
    for (QObject *other : {static_cast<QObject *>(c.check_skipErase),
                           static_cast<QObject *>(c.uaTextField), static_cast<QObject *>(nullptr)})
        QVERIFY(!composes(other));
    QCOMPARE(velm.log.startingWith(QStringLiteral("handleControl:")).size(), 9);
}

QTEST_MAIN(TestWindowComposition)
#include "tst_window_composition.moc"

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/WindowFixture.h"

#include "settings/SettingsKeys.h"

#include <QFile>
#include <QPushButton>

#include <unistd.h>

/// The operation buttons and what they leave.
class TestWindowOperations : public QObject {
    Q_OBJECT

private slots:
    void readComposeWriteVerify_byPressingTheButtons();
    void read_replacesTheWholeBuffer();
    void read_whoseFileCannotBeLoadedLeavesNothing_data();
    void read_whoseFileCannotBeLoadedLeavesNothing();
    void read_ofNoBytesIsComposedFromTheOpenedFile();
    void read_thatFailedShowsTheEarlierBytesAndSaysSo();
    void writeAndVerify_changeNoBufferAndNoTab();
    void operations_logTheirNames_data();
    void operations_logTheirNames();
    void anyOtherTag_runsTheInitialOperationAndDoesNothingAfter();
    void everyPress_keepsItsRun();
    void emptyImage_takesTwoPressesToWrite();
    void emptyImage_isAskedAboutAgainAfterAnotherComposition();
    void aFieldBeingTypedIn_countsForTheRun();
};

void TestWindowOperations::readComposeWriteVerify_byPressingTheButtons() {
    WindowFixture velm;
    velm.start();
    Ui::MainWindow &c = velm.controls();

    velm.click(c.btn_read);
    velm.settle();
    const QByteArray chip = WindowFixture::bytesOf(velm.chipPath(QStringLiteral("W27C512@DIP28")));
    QCOMPARE(chip.size(), 65536);
    QVERIFY(*velm.state().read_from_chip_data == chip);
    QCOMPARE(c.tableview->model()->rowCount(), 4097);
    QCOMPARE(velm.cell(0, 1), QString::fromLatin1(chip.left(1).toHex().toUpper()));
    QVERIFY(c.textView->storedText().endsWith(u"minipro has exited with status 0"));
    QVERIFY(c.textView->toPlainText().endsWith(u"minipro has exited with status 0"));
    QVERIFY2(velm.message().contains(QLocale().toString(65536)), qPrintable(velm.message()));

    c.tabview->selectTabViewItem(burnTabIdentifier());
    velm.click(c.btn_combine_read_data);
    c.padToTextField->setFocus();
    QTest::keyClicks(c.padToTextField, QStringLiteral("64\r"));
    velm.click(c.btn_pad);
    velm.settle();
    QCOMPARE(c.peeping_at->text(), QStringLiteral("Data to burn:"));
    QVERIFY(*velm.state().output_data == chip);

    velm.click(c.btn_write);
    velm.settle();
    QVERIFY(WindowFixture::bytesOf(velm.chipPath(QStringLiteral("W27C512@DIP28"))) ==
            *velm.state().output_data);
    QVERIFY2(velm.message().contains(QStringLiteral("succeeded"), Qt::CaseInsensitive),
             qPrintable(velm.message()));
    velm.click(c.btn_verify);
    velm.settle();
    QVERIFY2(velm.message().contains(QStringLiteral("succeeded"), Qt::CaseInsensitive),
             qPrintable(velm.message()));
    QCOMPARE(c.textView->storedText().count(QStringLiteral("minipro has exited with status 0")), 3);
}

void TestWindowOperations::read_replacesTheWholeBuffer() {
    WindowFixture velm;
    velm.useTool("printf 'a long first content' > \"$4\"\n");
    velm.start();
    velm.click(velm.controls().btn_read);
    velm.useTool("printf 'short' > \"$4\"\n");
    velm.click(velm.controls().btn_read);
    velm.settle();
    QCOMPARE(*velm.state().read_from_chip_data, QByteArray("short"));
    QCOMPARE(velm.state().display_data.get(), velm.state().read_from_chip_data.get());
}

void TestWindowOperations::read_whoseFileCannotBeLoadedLeavesNothing_data() {
    QTest::addColumn<QByteArray>("script");
    QTest::newRow("no file") << QByteArray("exit 1\n");
    QTest::newRow("a folder in its place") << QByteArray("mkdir \"$4\"\n");
    QTest::newRow("a pipe in its place") << QByteArray("mkfifo \"$4\"\n");
    QTest::newRow("a link to nowhere") << QByteArray("ln -s /nowhere/at/all \"$4\"\n");
    if (::geteuid() == 0) // who alone can give a link away
        QTest::newRow("a link of somebody else's")
            << QByteArray("echo precious >mine; ln -s mine \"$4\"; chown -h 12345 \"$4\"\n");
}

void TestWindowOperations::read_whoseFileCannotBeLoadedLeavesNothing() {
    QFETCH(QByteArray, script);
    WindowFixture velm;
    velm.useTool(script);
    velm.start();
    velm.log.take();
    velm.click(velm.controls().btn_read);
    QCOMPARE(velm.log.startingWith(QStringLiteral("error reading temp file: ")).size(), 1);
    QCOMPARE(velm.log.startingWith(QStringLiteral("start_address is")).size(), 1);
    velm.settle();
    QVERIFY(!velm.state().read_from_chip_data);
    QVERIFY(!velm.state().display_data);
    QVERIFY(velm.controls().btn_read->isEnabled());
    QVERIFY(!velm.message().isEmpty());
}

void TestWindowOperations::read_ofNoBytesIsComposedFromTheOpenedFile() {
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::binary, velm.write(QStringLiteral("rom.bin"), "ROM!"));
    velm.useTool(": > \"$4\"\n");
    velm.start();
    velm.controls().btn_combine_read_data->setChecked(true);
    velm.log.take();
    velm.click(velm.controls().btn_read);
    QVERIFY(velm.state().read_from_chip_data);
    QCOMPARE(velm.state().read_from_chip_data->size(), 0);
    QCOMPARE(velm.log.count(QStringLiteral("start_address is 0")), 1);
    QCOMPARE(*velm.state().output_data, QByteArray("ROM!"));
    QVERIFY2(velm.message().contains(u"Nothing was read: the image comes from the opened file."),
             qPrintable(velm.message()));
}

void TestWindowOperations::read_thatFailedShowsTheEarlierBytesAndSaysSo() {
    WindowFixture velm;
    velm.start();
    velm.click(velm.controls().btn_read);
    velm.useTool("echo 'No programmer found.' >&2; exit 1\n");
    velm.click(velm.controls().btn_read);
    velm.settle();
    QCOMPARE(velm.state().read_from_chip_data->size(), 65536);
    QVERIFY2(velm.message().contains(u"these bytes are from "), qPrintable(velm.message()));
    velm.useSimulator();
    velm.click(velm.controls().btn_read);
    velm.settle();
    QVERIFY2(!velm.message().contains(u"these bytes are from "), qPrintable(velm.message()));
}

void TestWindowOperations::writeAndVerify_changeNoBufferAndNoTab() {
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::binary, velm.write(QStringLiteral("rom.bin"), "ROM!"));
    velm.start();
    const QByteArray *before = velm.state().output_data.get();
    velm.click(velm.controls().btn_write);
    velm.click(velm.controls().btn_verify);
    velm.settle();
    QCOMPARE(velm.state().output_data.get(), before);
    QCOMPARE(*velm.state().output_data, QByteArray("ROM!"));
    QVERIFY(!velm.state().read_from_chip_data);
    QCOMPARE(velm.controls().tabview->selectedTabViewItem().identifier, readTabIdentifier());
}

void TestWindowOperations::operations_logTheirNames_data() {
    QTest::addColumn<int>("tag");
    QTest::addColumn<QString>("line");
    QTest::newRow("Read") << 0 << QStringLiteral("ReadOperation");
    QTest::newRow("Verify") << 1 << QStringLiteral("VerifyOperation");
    QTest::newRow("Write") << 2 << QStringLiteral("WriteOperation");
    QTest::newRow("Logic test") << 3 << QStringLiteral("LogicOperation");
}

void TestWindowOperations::operations_logTheirNames() {
    QFETCH(int, tag);
    QFETCH(QString, line);
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::binary, velm.write(QStringLiteral("rom.bin"), "ROM!"));
    velm.useTool("exit 0\n");
    velm.start();
    QPushButton button;
    button.setProperty("tag", tag);
    velm.log.take();
    velm.delegate().go(&button);
    QCOMPARE(velm.log.lines.first(), line);
    QCOMPARE(velm.log.count(line), 1);
}

void TestWindowOperations::anyOtherTag_runsTheInitialOperationAndDoesNothingAfter() {
    WindowFixture velm;
    velm.useTool("printf bytes > \"$4\"; echo \"$3\"\n");
    velm.start();
    QPushButton button;
    button.setProperty("tag", 4);
    velm.log.take();
    velm.delegate().go(&button);
    velm.settle();
    QVERIFY(velm.controls().textView->storedText().startsWith(u"-r\n"));
    QCOMPARE(velm.log.startingWith(QStringLiteral("ReadOperation")), QStringList());
    QVERIFY(!velm.state().read_from_chip_data);
    QCOMPARE(velm.state().retainArray.size(), 1);
}

void TestWindowOperations::everyPress_keepsItsRun() {
    WindowFixture velm;
    velm.useTool("exit 0\n");
    velm.start();
    for (int press = 0; press < 10; ++press)
        velm.click(velm.controls().btn_verify);
    QCOMPARE(velm.state().retainArray.size(), 10);
}

void TestWindowOperations::emptyImage_takesTwoPressesToWrite() {
    WindowFixture velm;
    velm.useTool("echo ran\n");
    velm.start();
    velm.click(velm.controls().btn_write);
    velm.settle();
    QCOMPARE(velm.controls().textView->storedText(), QString());
    QVERIFY2(velm.message().contains(u"no data to burn"), qPrintable(velm.message()));
    velm.click(velm.controls().btn_write);
    velm.settle();
    QVERIFY(velm.controls().textView->storedText().startsWith(u"ran\n"));
}

void TestWindowOperations::emptyImage_isAskedAboutAgainAfterAnotherComposition() {
    WindowFixture velm;
    velm.useTool("echo ran\n");
    velm.start();
    velm.click(velm.controls().btn_write);
    velm.click(velm.controls().btn_pad_00);
    velm.click(velm.controls().btn_write);
    velm.settle();
    QCOMPARE(velm.controls().textView->storedText(), QString());
}

void TestWindowOperations::aFieldBeingTypedIn_countsForTheRun() {
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::binary, velm.write(QStringLiteral("rom.bin"), "ROM!"));
    velm.useTool("wc -c < \"$4\"\n");
    velm.start();
    QLineEdit *field = velm.controls().startAddTextField;
    field->setFocus();
    field->selectAll();
    QTest::keyClicks(field, QStringLiteral("10"));
    QTest::keyClick(&velm.velm().window(), Qt::Key_F7);
    QTRY_VERIFY(velm.controls().textView->storedText().startsWith(u"20\n"));
}

QTEST_MAIN(TestWindowOperations)
#include "tst_window_operations.moc"

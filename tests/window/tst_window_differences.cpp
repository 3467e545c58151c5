// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/EditingSteps.h"

/// What the window shows of the differences between the data read and the data to burn.
class TestWindowDifferences : public QObject {
    Q_OBJECT

private slots:
    void oneImage_isComparedWithNothing();
    void equalImages_haveNoDifferences();
    void cells_areMarkedInBothTabs();
    void edit_isCountedAndCountedBack();
    void theMap_marksTheirBlocks();
    void lengths_areTold();
    void steps_goFromPlaceToPlaceAndSayThatTheyWrap();
    void stepsWithoutDifferences_sayWhy();
    void stepsInEqualImages_takeNoLookAtThem();
    void eprom_saysWhetherItMustBeErased();
    void eprom_isJudgedOnlyByWhatItIsKnownToHold();
    void assistiveTechnology_readsTheOtherByte();
};

namespace {

constexpr char readingTool[] = "printf 0123456789ABCDEFGHIJ > \"$4\"\n"
                               "echo 'Reading Code...  0.01Sec  OK' >&2\n";

/// Starts with twenty bytes read from the chip, and the data to burn from \a file.
void readTwentyBytes(WindowFixture &velm, const QByteArray &file) {
    velm.settings().setValue(settingsKeys::binary, velm.write(QStringLiteral("rom.bin"), file));
    velm.useTool(readingTool);
    velm.start();
    velm.click(velm.controls().btn_read);
    velm.settle();
    QCOMPARE(lengthOf(velm.state().read_from_chip_data), 20);
}

QString facts(WindowFixture &velm) {
    return velm.controls().factsLine->wholeText();
}

ByteMark markAt(WindowFixture &velm, int row, int column) {
    return velm.controls().tableview->gridModel()->mark(row, column);
}

QPair<int, int> cursor(WindowFixture &velm) {
    const QModelIndex cell = velm.controls().tableview->currentIndex();
    return {cell.row(), cell.column()};
}

void press(WindowFixture &velm, Qt::Key key) {
    QTest::keyClick(velm.controls().tableview, key, Qt::AltModifier);
    QCoreApplication::processEvents();
}

} // namespace

void TestWindowDifferences::oneImage_isComparedWithNothing() {
    WindowFixture velm;
    showTwentyBytes(velm);
    QTRY_VERIFY(facts(velm).contains(u"CRC-32"));
    QVERIFY(!facts(velm).contains(u"difference"));
    QVERIFY(!markAt(velm, 0, 1).differs);
}

void TestWindowDifferences::equalImages_haveNoDifferences() {
    WindowFixture velm;
    readTwentyBytes(velm, "0123456789ABCDEFGHIJ");
    QTRY_VERIFY(facts(velm).contains(u"no differences"));
}

void TestWindowDifferences::cells_areMarkedInBothTabs() {
    WindowFixture velm;
    readTwentyBytes(velm, "012x456789ABCDEFGHyz");
    for (const QString &tab : {readTabIdentifier(), burnTabIdentifier()}) {
        velm.controls().tabview->selectTabViewItem(tab);
        QTRY_VERIFY(facts(velm).contains(u"3 differences"));
        QVERIFY(markAt(velm, 0, 4).differs);
        QVERIFY(!markAt(velm, 0, 5).differs);
        QVERIFY(markAt(velm, 1, 3).differs);
        QVERIFY(markAt(velm, 1, 4).differs);
        QVERIFY(!markAt(velm, 1, 5).differs);
    }
    velm.controls().tabview->selectTabViewItem(logicTabIdentifier());
    QCoreApplication::processEvents();
    QVERIFY(!markAt(velm, 0, 4).differs);
}

void TestWindowDifferences::edit_isCountedAndCountedBack() {
    WindowFixture velm;
    readTwentyBytes(velm, "0123456789ABCDEFGHIJ");
    velm.controls().tabview->selectTabViewItem(burnTabIdentifier());
    QCoreApplication::processEvents();
    enter(velm, 1, 2, QStringLiteral("5A"));
    QTRY_VERIFY(facts(velm).contains(u"1 difference"));
    QVERIFY(markAt(velm, 1, 2).differs);
    velm.delegate().edits().undo();
    QTRY_VERIFY(facts(velm).contains(u"no differences"));
    QVERIFY(!markAt(velm, 1, 2).differs);
}

void TestWindowDifferences::theMap_marksTheirBlocks() {
    WindowFixture velm;
    readTwentyBytes(velm, "0123456789ABCDEFGHIJ");
    velm.controls().tabview->selectTabViewItem(burnTabIdentifier());
    QCoreApplication::processEvents();
    ImageMap *map = velm.controls().imageMap;
    enter(velm, 0, 2, QStringLiteral("5A"));
    QTRY_VERIFY(map->valueWords().endsWith(u", differs"));
    velm.delegate().edits().undo();
    QTRY_VERIFY(!map->valueWords().endsWith(u", differs"));
}

void TestWindowDifferences::lengths_areTold() {
    WindowFixture velm;
    readTwentyBytes(velm, "0123456789");
    velm.controls().tabview->selectTabViewItem(burnTabIdentifier());
    QTRY_VERIFY(facts(velm).contains(u"no differences, 10 bytes shorter"));
    velm.controls().tabview->selectTabViewItem(readTabIdentifier());
    QTRY_VERIFY(facts(velm).contains(u"no differences, 10 bytes longer"));
    QVERIFY(!markAt(velm, 0, 12).differs);
}

void TestWindowDifferences::steps_goFromPlaceToPlaceAndSayThatTheyWrap() {
    WindowFixture velm;
    readTwentyBytes(velm, "012x456789ABCDEFGHyz");
    velm.controls().tabview->selectTabViewItem(readTabIdentifier());
    QCoreApplication::processEvents();
    velm.controls().tableview->setFocus();
    press(velm, Qt::Key_Down);
    QCOMPARE(cursor(velm), qMakePair(0, 4));
    press(velm, Qt::Key_Down);
    QCOMPARE(cursor(velm), qMakePair(1, 3));
    QVERIFY(!velm.message().contains(u"difference"));
    press(velm, Qt::Key_Down);
    QCOMPARE(cursor(velm), qMakePair(0, 4));
    QVERIFY(velm.message().contains(u"From the end on to the first difference."));
    press(velm, Qt::Key_Up);
    QCOMPARE(cursor(velm), qMakePair(1, 3));
    QVERIFY(velm.message().contains(u"From the beginning on to the last difference."));
    press(velm, Qt::Key_Up);
    QCOMPARE(cursor(velm), qMakePair(0, 4));
    QVERIFY(!velm.message().contains(u"difference"));
}

void TestWindowDifferences::stepsWithoutDifferences_sayWhy() {
    WindowFixture velm;
    readTwentyBytes(velm, "0123456789ABCDEFGHIJ");
    velm.controls().tabview->selectTabViewItem(burnTabIdentifier());
    QCoreApplication::processEvents();
    velm.controls().tableview->setFocus();
    press(velm, Qt::Key_Down);
    QVERIFY(velm.message().contains(u"do not differ"));
    velm.controls().tabview->selectTabViewItem(logicTabIdentifier());
    QCoreApplication::processEvents();
    press(velm, Qt::Key_Up);
    QVERIFY(velm.message().contains(u"no differences among the logic test results"));
    WindowFixture other;
    showTwentyBytes(other);
    other.controls().tableview->setFocus();
    press(other, Qt::Key_Down);
    QVERIFY(other.message().contains(u"nothing to compare"));
}

// Two equal images of a gibibyte would be read from end to end. The change that nobody was told of
// shows who looks.
void TestWindowDifferences::stepsInEqualImages_takeNoLookAtThem() {
    WindowFixture velm;
    readTwentyBytes(velm, "0123456789ABCDEFGHIJ");
    QTRY_VERIFY(facts(velm).contains(u"no differences"));
    velm.controls().tableview->setFocus();
    velm.state().output_data->replace(7, 1, "x");
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Up}) {
        press(velm, key);
        QVERIFY2(velm.message().contains(u"do not differ"), qPrintable(velm.message()));
    }
}

void TestWindowDifferences::eprom_saysWhetherItMustBeErased() {
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::device, QStringLiteral("M27C512@DIP28"));
    readTwentyBytes(velm, "0123456789ABCDEFGHI\x40"); // 4A loses two bits
    velm.controls().tabview->selectTabViewItem(burnTabIdentifier());
    QTRY_VERIFY(facts(velm).contains(u"1 difference, can be burned on top"));
    enter(velm, 0, 1, QStringLiteral("3F")); // 30 would have to gain four
    QTRY_VERIFY(facts(velm).contains(u"2 differences, needs erasing: 4 bits"));
    velm.settings().setValue(settingsKeys::device, QStringLiteral("W27C512@DIP28"));
    QTRY_VERIFY(!facts(velm).contains(u"erasing"));
}

// What was read tells nothing of a chip that was written since, or of another one.
void TestWindowDifferences::eprom_isJudgedOnlyByWhatItIsKnownToHold() {
    const QString device = QStringLiteral("M27C512@DIP28");
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::device, device);
    readTwentyBytes(velm, "0123456789ABCDEFGHI\x40");
    velm.controls().tabview->selectTabViewItem(burnTabIdentifier());
    QTRY_VERIFY(facts(velm).contains(u"1 difference, can be burned on top"));

    velm.settings().setValue(settingsKeys::device, QStringLiteral("M27C256B@DIP28"));
    QTRY_VERIFY(!facts(velm).contains(u"on top"));
    velm.settings().setValue(settingsKeys::device, device);
    QTRY_VERIFY(facts(velm).contains(u"can be burned on top"));

    velm.click(velm.controls().btn_write);
    velm.settle();
    QTRY_VERIFY(!facts(velm).contains(u"on top"));
    QVERIFY(facts(velm).contains(u"1 difference"));

    // A failed Read may be of another chip, whether it has touched the file or not.
    for (const char *failing : {"exit 1\n", "printf 0123456789ABCDEFGHIJ > \"$4\"; exit 1\n"}) {
        velm.useTool(readingTool);
        velm.click(velm.controls().btn_read);
        velm.settle();
        QTRY_VERIFY(facts(velm).contains(u"can be burned on top"));
        velm.useTool(failing);
        velm.click(velm.controls().btn_read);
        velm.settle();
        QTRY_VERIFY(facts(velm).contains(u"1 difference"));
        QVERIFY(!facts(velm).contains(u"on top"));
    }
}

void TestWindowDifferences::assistiveTechnology_readsTheOtherByte() {
    WindowFixture velm;
    readTwentyBytes(velm, "012x456789ABCDEFGHIJ");
    const QAbstractItemModel *model = velm.controls().tableview->model();
    velm.controls().tabview->selectTabViewItem(readTabIdentifier());
    QCoreApplication::processEvents();
    QCOMPARE(model->data(model->index(0, 4), Qt::AccessibleDescriptionRole).toString(),
             QStringLiteral("78 in the data to burn"));
    velm.controls().tabview->selectTabViewItem(burnTabIdentifier());
    QCoreApplication::processEvents();
    QCOMPARE(model->data(model->index(0, 4), Qt::ToolTipRole).toString(),
             QStringLiteral("33 in the data read from the chip"));
}

QTEST_MAIN(TestWindowDifferences)
#include "tst_window_differences.moc"

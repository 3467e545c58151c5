// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/EditingSteps.h"

#include "image/CopyAhead.h"
#include "support/AddressSpaceLimit.h"

#include <QPushButton>

/// Editing bytes of the data to burn in the grid.
class TestWindowEdit : public QObject {
    Q_OBJECT

private slots:
    void typing_changesTheByteTheFileAndTheCharacters();
    void typing_aWholeRowNeedsNoMouse();
    void quotedText_overwritesAndGrows();
    void quotedText_outsideLatin1BecomesQuestionMarks();
    void rejectedEntry_beepsAndKeepsTheByte_data();
    void rejectedEntry_beepsAndKeepsTheByte();
    void loneQuote_rewritesTheFileOnly();
    void addressCell_editsTheByteBefore();
    void cellsThatTakeNoEntry_data();
    void cellsThatTakeNoEntry();
    void otherTabs_openNoCell_data();
    void otherTabs_openNoCell();
    void anOpenCell_isCommittedBeforeARun();
    void edits_surviveATabChange();
    void editsReplacedByAComposition_canBeRestored();
    void restoredEdits_sayWhichControlsSaySomethingElse();
    void restoredEdits_hideWhatWasSaidOfTheComposition();
    void restoring_isOneStepOfTheHistory();
    void compositionOfTheSameBytes_losesNoEdits();
    void editsDoNotTouchTheReadData();
    void openedCellOfALargeFile_isReadyBeforeItsEntry();
    void entryTypedAtOnce_findsTheImageReady();
    void entryWithoutMemory_isRefusedInWords();
};

/// Starts with more bytes than an edit copies at once, which the image shares with the file.
static void showLargeFile(WindowFixture &velm, qsizetype size = CopyAhead::minSize + 20) {
    const QByteArray bytes(size, 'A');
    velm.settings().setValue(settingsKeys::binary, velm.write(QStringLiteral("rom.bin"), bytes));
    velm.start();
    velm.controls().tabview->selectTabViewItem(burnTabIdentifier());
    QCOMPARE(velm.state().output_data->constData(), velm.state().opened_bin_data->constData());
    velm.controls().tableview->setFocus();
    velm.controls().tableview->setCurrentIndex(velm.controls().tableview->model()->index(0, 1));
}

void TestWindowEdit::typing_changesTheByteTheFileAndTheCharacters() {
    WindowFixture velm;
    showTwentyBytes(velm);
    enter(velm, 0, 1, QStringLiteral("41"));
    QCOMPARE(*velm.state().output_data, QByteArray("A123456789ABCDEFGHIJ"));
    QCOMPARE(onDisk(velm), *velm.state().output_data);
    QCOMPARE(velm.cell(0, 1), QStringLiteral("41"));
    QCOMPARE(velm.cell(0, 17), QStringLiteral("A123456789ABCDEF"));
    QCOMPARE(velm.beeps, 0);
    QCOMPARE(velm.log.lines, QStringList());
}

void TestWindowEdit::typing_aWholeRowNeedsNoMouse() {
    WindowFixture velm;
    showTwentyBytes(velm);
    GridView *grid = velm.controls().tableview;
    grid->setFocus();
    grid->setCurrentIndex(grid->model()->index(0, firstByteColumn));
    for (int i = 0; i < 18; ++i) {
        QTest::keyClick(grid, Qt::Key_7);
        QWidget *editor = grid->entries().editor();
        QVERIFY(editor);
        QTest::keyClicks(editor, QStringLiteral("a"));
        QTest::keyClick(editor, Qt::Key_Return);
        QCoreApplication::processEvents();
    }
    QCOMPARE(*velm.state().output_data, QByteArray("zzzzzzzzzzzzzzzzzzIJ"));
    QCOMPARE(grid->currentIndex().row(), 1);
    QCOMPARE(grid->currentIndex().column(), 3);
}

void TestWindowEdit::quotedText_overwritesAndGrows() {
    WindowFixture velm;
    showTwentyBytes(velm);
    enter(velm, 1, 2, QStringLiteral("'hello'"));
    QCOMPARE(*velm.state().output_data, QByteArray("0123456789ABCDEFGhello"));
    QCOMPARE(onDisk(velm), *velm.state().output_data);
    QCOMPARE(velm.cell(1, 6), QStringLiteral("6F"));
    QCOMPARE(velm.controls().tableview->currentIndex().column(), 7);
    enter(velm, 0, 1, QStringLiteral("\"it's so\""));
    QCOMPARE(*velm.state().output_data, QByteArray("it's so789ABCDEFGhello"));
}

void TestWindowEdit::quotedText_outsideLatin1BecomesQuestionMarks() {
    WindowFixture velm;
    showTwentyBytes(velm);
    enter(velm, 0, 1, QStringLiteral("'\u00e9\u20ac'"));
    QCOMPARE(velm.state().output_data->left(3), QByteArray("\xE9?2"));
}

void TestWindowEdit::rejectedEntry_beepsAndKeepsTheByte_data() {
    QTest::addColumn<QString>("entry");
    QTest::newRow("zero") << QStringLiteral("0");
    QTest::newRow("two zeros") << QStringLiteral("00");
    QTest::newRow("more than a byte") << QStringLiteral("100");
    QTest::newRow("no number") << QStringLiteral("xyz");
    QTest::newRow("a blank before the quote") << QStringLiteral(" 'a'");
}

void TestWindowEdit::rejectedEntry_beepsAndKeepsTheByte() {
    QFETCH(QString, entry);
    WindowFixture velm;
    showTwentyBytes(velm);
    enter(velm, 0, 3, entry);
    QCOMPARE(velm.beeps, 1);
    QCOMPARE(*velm.state().output_data, QByteArray("0123456789ABCDEFGHIJ"));
    QCOMPARE(velm.controls().tableview->currentIndex().column(), 3);
}

void TestWindowEdit::loneQuote_rewritesTheFileOnly() {
    WindowFixture velm;
    showTwentyBytes(velm);
    QFile::remove(velm.temporary(QStringLiteral("temp.bin")));
    enter(velm, 0, 3, QStringLiteral("'"));
    QCOMPARE(onDisk(velm), QByteArray("0123456789ABCDEFGHIJ"));
    QCOMPARE(velm.beeps, 0);
}

void TestWindowEdit::addressCell_editsTheByteBefore() {
    WindowFixture velm;
    showTwentyBytes(velm);
    enter(velm, 1, 0, QStringLiteral("7A"));
    QCOMPARE(*velm.state().output_data, QByteArray("0123456789ABCDEzGHIJ"));
    enter(velm, 0, 0, QStringLiteral("7A"));
    QCOMPARE(*velm.state().output_data, QByteArray("0123456789ABCDEzGHIJ"));
}

void TestWindowEdit::cellsThatTakeNoEntry_data() {
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("entry");
    QTest::newRow("the characters") << 0 << 17 << QStringLiteral("7A");
    QTest::newRow("past the end") << 1 << 5 << QStringLiteral("7A");
    QTest::newRow("an emptied cell") << 0 << 1 << QString();
}

void TestWindowEdit::cellsThatTakeNoEntry() {
    QFETCH(int, row);
    QFETCH(int, column);
    QFETCH(QString, entry);
    WindowFixture velm;
    showTwentyBytes(velm);
    enter(velm, row, column, entry);
    QCOMPARE(*velm.state().output_data, QByteArray("0123456789ABCDEFGHIJ"));
    QCOMPARE(velm.beeps, 0);
}

void TestWindowEdit::otherTabs_openNoCell_data() {
    QTest::addColumn<QString>("tab");
    QTest::newRow("data read from the chip") << readTabIdentifier();
    QTest::newRow("logic test results") << logicTabIdentifier();
}

void TestWindowEdit::otherTabs_openNoCell() {
    QFETCH(QString, tab);
    WindowFixture velm;
    velm.useTool("printf AB > \"$4\"\n");
    velm.start();
    velm.click(velm.controls().btn_read);
    velm.settle();
    velm.controls().tabview->selectTabViewItem(tab);
    GridView *grid = velm.controls().tableview;
    grid->setFocus();
    grid->setCurrentIndex(grid->model()->index(0, 1));
    QTest::keyClick(grid, Qt::Key_F2);
    QVERIFY(!grid->entries().editor());
    QTest::keyClick(grid, Qt::Key_4);
    QVERIFY(!grid->entries().editor());
    velm.delegate().tableView_setObjectValue_forTableColumn_row(grid, QStringLiteral("7A"),
                                                                QStringLiteral("1"), 0);
    QCOMPARE(*velm.state().read_from_chip_data, QByteArray("AB"));
}

void TestWindowEdit::anOpenCell_isCommittedBeforeARun() {
    WindowFixture velm;
    velm.useTool("cat \"$4\"\n");
    showTwentyBytes(velm);
    GridView *grid = velm.controls().tableview;
    grid->setFocus();
    grid->setCurrentIndex(grid->model()->index(0, 1));
    QTest::keyClick(grid, Qt::Key_7);
    QTest::keyClicks(grid->entries().editor(), QStringLiteral("a"));
    QTest::keyClick(&velm.velm().window(), Qt::Key_F7);
    QTRY_VERIFY(velm.controls().textView->storedText().startsWith(u"z123456789ABCDEFGHIJ"));
}

void TestWindowEdit::edits_surviveATabChange() {
    WindowFixture velm;
    showTwentyBytes(velm);
    enter(velm, 0, 1, QStringLiteral("7A"));
    velm.controls().tabview->selectTabViewItem(readTabIdentifier());
    velm.controls().tabview->selectTabViewItem(burnTabIdentifier());
    QCOMPARE(velm.cell(0, 1), QStringLiteral("7A"));
}

void TestWindowEdit::editsReplacedByAComposition_canBeRestored() {
    WindowFixture velm;
    showTwentyBytes(velm);
    enter(velm, 0, 1, QStringLiteral("7A"));
    enter(velm, 0, 2, QStringLiteral("7A"));
    velm.click(velm.controls().btn_pad_00);
    velm.settle();
    QCOMPARE(*velm.state().output_data, QByteArray("0123456789ABCDEFGHIJ"));
    QVERIFY2(velm.message().contains(u"2 hand edits were replaced."), qPrintable(velm.message()));
    auto *restore = velm.controls().messageLine->findChild<QPushButton *>();
    QVERIFY(restore && restore->isVisible());
    velm.click(restore);
    velm.settle();
    QCOMPARE(*velm.state().output_data, QByteArray("zz23456789ABCDEFGHIJ"));
    QCOMPARE(onDisk(velm), *velm.state().output_data);
    QCOMPARE(velm.cell(0, 2), QStringLiteral("7A"));
    QVERIFY2(velm.message().contains(u"2 hand edits were restored."), qPrintable(velm.message()));
    QVERIFY(!velm.message().contains(u"were replaced"));
    QCOMPARE(QApplication::focusWidget(), velm.controls().tableview);
}

void TestWindowEdit::restoredEdits_sayWhichControlsSaySomethingElse() {
    WindowFixture velm;
    showTwentyBytes(velm);
    enter(velm, 0, 1, QStringLiteral("7A"));
    velm.controls().padToTextField->setText(QStringLiteral("1"));
    velm.click(velm.controls().btn_pad);
    velm.settle();
    QCOMPARE(velm.state().output_data->size(), 1024);
    velm.click(velm.controls().messageLine->findChild<QPushButton *>());
    QVERIFY2(velm.message().contains(QStringLiteral(
                 "This image was made with other values than these now: Pad, Pad to.")),
             qPrintable(velm.message()));
    // Taken back, the image is what the controls say; made again, it is not.
    velm.delegate().edits().undo();
    QVERIFY2(!velm.message().contains(u"other values"), qPrintable(velm.message()));
    velm.delegate().edits().redo();
    QVERIFY2(velm.message().contains(u"other values than these now: Pad, Pad to."),
             qPrintable(velm.message()));
    // Another composition ends what the sentence speaks of.
    velm.click(velm.controls().btn_pad);
    velm.settle();
    QVERIFY2(!velm.message().contains(u"was restored"), qPrintable(velm.message()));
}

void TestWindowEdit::restoredEdits_hideWhatWasSaidOfTheComposition() {
    WindowFixture velm;
    showTwentyBytes(velm);
    enter(velm, 0, 1, QStringLiteral("7A"));
    velm.settings().setValue(settingsKeys::pad_to, QStringLiteral("2097152"));
    velm.click(velm.controls().btn_pad);
    velm.settle();
    QVERIFY(!velm.state().output_data);
    QVERIFY2(velm.message().contains(u"There are no data to burn"), qPrintable(velm.message()));
    velm.delegate().edits().restore();
    QCOMPARE(lengthOf(velm.state().output_data), 20);
    QVERIFY2(!velm.message().contains(u"There are no data to burn"), qPrintable(velm.message()));
    // An edit of it changes nothing about that; the refused image that is back does.
    enter(velm, 0, 2, QStringLiteral("7B"));
    velm.delegate().edits().undo();
    QVERIFY2(!velm.message().contains(u"There are no data to burn"), qPrintable(velm.message()));
    velm.delegate().edits().undo();
    QVERIFY(!velm.state().output_data);
    QVERIFY2(velm.message().contains(u"Problem: There are no data to burn"),
             qPrintable(velm.message()));
    velm.delegate().edits().redo();
    QVERIFY2(!velm.message().contains(u"There are no data to burn"), qPrintable(velm.message()));
}

void TestWindowEdit::restoring_isOneStepOfTheHistory() {
    WindowFixture velm;
    showTwentyBytes(velm);
    enter(velm, 0, 1, QStringLiteral("7A"));
    velm.controls().startAddTextField->setText(QStringLiteral("2"));
    velm.click(velm.controls().btn_pad_00);
    velm.settle();
    enter(velm, 0, 3, QStringLiteral("7B"));
    const QByteArray second = *velm.state().output_data;
    velm.click(velm.controls().messageLine->findChild<QPushButton *>());
    QCOMPARE(*velm.state().output_data, QByteArray("z123456789ABCDEFGHIJ"));
    enter(velm, 0, 2, QStringLiteral("79"));
    velm.delegate().edits().undo();
    velm.delegate().edits().undo();
    QCOMPARE(*velm.state().output_data, second);
    QCOMPARE(onDisk(velm), second);
    QCOMPARE(velm.cell(0, 3), QStringLiteral("7B"));
    QVERIFY2(!velm.message().contains(u"restored"), qPrintable(velm.message()));
    velm.delegate().edits().undo();
    QCOMPARE(velm.state().output_data->left(4), QByteArray("\0\00001", 4).replace(2, 2, "01"));
    for (int step = 0; step < 3; ++step)
        velm.delegate().edits().redo();
    QCOMPARE(*velm.state().output_data, QByteArray("zy23456789ABCDEFGHIJ"));
    QCOMPARE(onDisk(velm), *velm.state().output_data);
    QCOMPARE(velm.cell(0, 2), QStringLiteral("79"));
}

void TestWindowEdit::compositionOfTheSameBytes_losesNoEdits() {
    WindowFixture velm;
    showTwentyBytes(velm);
    enter(velm, 0, 1, QStringLiteral("7A"));
    enter(velm, 0, 1, QStringLiteral("30"));
    velm.click(velm.controls().btn_pad_00);
    velm.settle();
    QVERIFY2(!velm.message().contains(u"hand edit"), qPrintable(velm.message()));
}

void TestWindowEdit::editsDoNotTouchTheReadData() {
    WindowFixture velm;
    velm.useTool("printf 0123456789ABCDEF > \"$4\"\n");
    velm.start();
    velm.controls().btn_combine_read_data->setChecked(true);
    velm.click(velm.controls().btn_read);
    velm.controls().tabview->selectTabViewItem(burnTabIdentifier());
    velm.settle();
    enter(velm, 0, 1, QStringLiteral("7A"));
    QCOMPARE(*velm.state().output_data, QByteArray("z123456789ABCDEF"));
    QCOMPARE(*velm.state().read_from_chip_data, QByteArray("0123456789ABCDEF"));
}

void TestWindowEdit::openedCellOfALargeFile_isReadyBeforeItsEntry() {
    WindowFixture velm;
    showLargeFile(velm);
    QTest::keyClick(velm.controls().tableview, Qt::Key_F2);
    QVERIFY(velm.controls().tableview->entries().editor());
    QTRY_VERIFY(velm.state().output_data->isDetached());
    QCOMPARE(*velm.state().output_data, *velm.state().opened_bin_data);
}

void TestWindowEdit::entryTypedAtOnce_findsTheImageReady() {
    WindowFixture velm;
    showLargeFile(velm);
    bool wasReady = false;
    connect(&velm.controls().tableview->entries(), &GridEntries::entryEnds, this,
            [&] { wasReady = velm.state().output_data->isDetached(); });
    enter(velm, 0, 1, QStringLiteral("42"));
    QVERIFY(wasReady);
    QCOMPARE(velm.state().output_data->left(2), QByteArray("BA"));
    QCOMPARE(velm.state().opened_bin_data->left(2), QByteArray("AA"));
}

void TestWindowEdit::entryWithoutMemory_isRefusedInWords() {
    if (!AddressSpaceLimit::works())
        QSKIP("the sanitizers need their address space");
    WindowFixture velm;
    // More than the allocator ever keeps of what was given back, or sets aside for a thread.
    showLargeFile(velm, qsizetype(80) << 20);
    {
        const AddressSpaceLimit limit(rlim_t(16) << 20);
        enter(velm, 0, 1, QStringLiteral("42"));
    }
    QCOMPARE(*velm.state().output_data, *velm.state().opened_bin_data);
    QCOMPARE(velm.delegate().edits().history().count(), 0);
    QVERIFY2(velm.message().contains(u"There is no memory for this edit"),
             qPrintable(velm.message()));
    enter(velm, 0, 1, QStringLiteral("42"));
    QCOMPARE(velm.state().output_data->left(2), QByteArray("BA"));
}

QTEST_MAIN(TestWindowEdit)
#include "tst_window_edit.moc"

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "imageviews/SelectRangeWindow.h"
#include "window/EditingSteps.h"

#include "ui_SelectRangeWindow.h"

#include <QMenuBar>
#include <QScrollBar>

/// The other image beside the one of the tab, in a wide window.
class TestWindowSideBySide : public QObject {
    Q_OBJECT

private slots:
    void wideWindow_showsBothImages();
    void narrowWindow_showsOne();
    void oneImage_hasNothingBeside();
    void theyScrollTogether();
    void theCursorIsTheSame();
    void differences_areMarkedInBoth();
    void edit_isFollowed();
    void anotherTab_endsTheBlockBeside();
    void selectRange_goesToTheGridInUse();
    void besideGrid_cannotBeEdited();
    void choice_isRemembered();
};

namespace {

constexpr int imageSize = 8192;

QByteArray bytesRead() {
    return QByteArray(imageSize, 'r');
}

/// Starts in a wide window with an image read, and a shorter one to burn that is shown.
void showBoth(WindowFixture &velm, const QSize &size = {2000, 900}) {
    velm.settings().setValue(
        settingsKeys::binary,
        velm.write(QStringLiteral("rom.bin"), QByteArray("burn") + bytesRead().mid(4, 4000)));
    velm.useTool("cp '" + velm.write(QStringLiteral("chip"), bytesRead()).toUtf8() +
                 "' \"$4\"\necho 'Reading Code...  0.01Sec  OK' >&2\n");
    velm.start();
    velm.velm().window().resize(size);
    velm.click(velm.controls().btn_read);
    velm.controls().tabview->selectTabViewItem(burnTabIdentifier());
    QCoreApplication::processEvents();
}

QString besideRow(WindowFixture &velm, int row) {
    QStringList cells;
    const QAbstractItemModel *model = velm.controls().besideGrid->model();
    for (int column = 0; column < 5; ++column)
        cells << model->data(model->index(row, column)).toString();
    return cells.join(u' ');
}

} // namespace

void TestWindowSideBySide::wideWindow_showsBothImages() {
    WindowFixture velm;
    showBoth(velm);
    const Ui::MainWindow &c = velm.controls();
    QTRY_VERIFY(c.besideGrid->isVisible());
    QCOMPARE(c.besideHeading->text(), QStringLiteral("Beside: data read from chip"));
    QCOMPARE(besideRow(velm, 0), QStringLiteral("0000 72 72 72 72"));
    QCOMPARE(c.besideGrid->y(), c.tableview->y());
    QTRY_COMPARE(c.besideHeading->x(), c.besideGrid->x());
    QVERIFY(c.besideGrid->width() >= c.besideGrid->sizeHint().width());
    QVERIFY(c.tableview->width() >= c.tableview->sizeHint().width());
    c.tabview->selectTabViewItem(readTabIdentifier());
    QTRY_COMPARE(c.besideHeading->text(), QStringLiteral("Beside: data to burn"));
    QCOMPARE(besideRow(velm, 0), QStringLiteral("0000 62 75 72 6E"));
    c.tabview->selectTabViewItem(logicTabIdentifier());
    QTRY_VERIFY(!c.besideGrid->isVisible());
    QVERIFY(!c.besideHeading->isVisible());
}

void TestWindowSideBySide::narrowWindow_showsOne() {
    WindowFixture velm;
    showBoth(velm, {1100, 740});
    QVERIFY(!velm.controls().besideGrid->isVisible());
    velm.velm().window().resize(2000, 740);
    QTRY_VERIFY(velm.controls().besideGrid->isVisible());
    velm.velm().window().resize(1100, 740);
    QTRY_VERIFY(!velm.controls().besideGrid->isVisible());
    QVERIFY(!velm.controls().besideHeading->isVisible());
    QCOMPARE(velm.velm().window().width(), 1100);
}

void TestWindowSideBySide::oneImage_hasNothingBeside() {
    WindowFixture velm;
    showTwentyBytes(velm);
    velm.velm().window().resize(2000, 740);
    velm.settle();
    QVERIFY(!velm.controls().besideGrid->isVisible());
}

void TestWindowSideBySide::theyScrollTogether() {
    WindowFixture velm;
    showBoth(velm);
    QTRY_VERIFY(velm.controls().besideGrid->isVisible());
    QScrollBar *burn = velm.controls().tableview->verticalScrollBar();
    QScrollBar *read = velm.controls().besideGrid->verticalScrollBar();
    QVERIFY(burn->maximum() < read->maximum());
    burn->setValue(100);
    QCOMPARE(read->value(), 100);
    read->setValue(70);
    QCOMPARE(burn->value(), 70);
    read->setValue(read->maximum());
    QCOMPARE(burn->value(), burn->maximum());
    QCOMPARE(read->value(), read->maximum());
}

void TestWindowSideBySide::theCursorIsTheSame() {
    WindowFixture velm;
    showBoth(velm);
    QTRY_VERIFY(velm.controls().besideGrid->isVisible());
    GridView *burn = velm.controls().tableview;
    GridView *read = velm.controls().besideGrid;
    burn->showAddress(0x123);
    QCOMPARE(read->currentIndex().row(), 0x12);
    QCOMPARE(read->currentIndex().column(), 4);
    read->showAddress(0x45);
    QCOMPARE(burn->currentIndex().row(), 0x4);
    QTRY_VERIFY(velm.controls().factsLine->wholeText().contains(u"at 0045:"));
    // Where the shorter image has no row, its cursor stays.
    read->showAddress(imageSize - 1);
    QCOMPARE(burn->currentIndex().row(), 0x4);
}

void TestWindowSideBySide::differences_areMarkedInBoth() {
    WindowFixture velm;
    showBoth(velm);
    QTRY_VERIFY(velm.controls().besideGrid->isVisible());
    const GridModel *beside = velm.controls().besideGrid->gridModel();
    QVERIFY(beside->mark(0, 1).differs);
    QVERIFY(!beside->mark(0, 3).differs); // both have an r
    QCOMPARE(beside->index(0, 1).data(Qt::ToolTipRole).toString(),
             QStringLiteral("62 in the data to burn"));
    velm.controls().tabview->selectTabViewItem(readTabIdentifier());
    QTRY_COMPARE(beside->index(0, 1).data(Qt::ToolTipRole).toString(),
                 QStringLiteral("72 in the data read from the chip"));
}

void TestWindowSideBySide::edit_isFollowed() {
    WindowFixture velm;
    showBoth(velm);
    QTRY_VERIFY(velm.controls().besideGrid->isVisible());
    enter(velm, 2, 1, QStringLiteral("5A"));
    const GridModel *beside = velm.controls().besideGrid->gridModel();
    QCOMPARE(beside->mark(2, 1), ByteMark{.differs = true});
    QCOMPARE(besideRow(velm, 2), QStringLiteral("0020 72 72 72 72"));
    velm.controls().tabview->selectTabViewItem(readTabIdentifier());
    QTRY_COMPARE(besideRow(velm, 2), QStringLiteral("0020 5A 72 72 72"));
    QCOMPARE(beside->mark(2, 1), (ByteMark{.differs = true, .edited = true}));
    velm.delegate().edits().undo();
    QTRY_COMPARE(besideRow(velm, 2), QStringLiteral("0020 72 72 72 72"));
}

void TestWindowSideBySide::anotherTab_endsTheBlockBeside() {
    WindowFixture velm;
    showBoth(velm);
    GridView *beside = velm.controls().besideGrid;
    QTRY_VERIFY(beside->isVisible());
    beside->selection().select({3, 9});
    QVERIFY(beside->selection().hasBlock());
    velm.controls().tabview->selectTabViewItem(readTabIdentifier());
    QVERIFY(!beside->selection().hasBlock());
    QTRY_COMPARE(besideRow(velm, 0), QStringLiteral("0000 62 75 72 6E"));
    QVERIFY(!beside->selection().hasBlock());
}

void TestWindowSideBySide::selectRange_goesToTheGridInUse() {
    WindowFixture velm;
    showBoth(velm);
    GridView *burn = velm.controls().tableview;
    GridView *read = velm.controls().besideGrid;
    QTRY_VERIFY(read->isVisible());
    const auto askIn = [&velm](GridView *grid) {
        velm.velm().window().activateWindow();
        grid->setFocus();
        QTest::keyClick(grid, Qt::Key_G, Qt::ControlModifier | Qt::ShiftModifier);
        velm.settle();
        return velm.velm().window().findChild<SelectRangeWindow *>();
    };
    burn->selection().select({0x20, 4});
    SelectRangeWindow *range = askIn(burn);
    QVERIFY(range);
    QCOMPARE(range->controls().first->text(), QStringLiteral("0020"));
    // What is typed stays while it is for the same grid.
    range->controls().end->setText(QStringLiteral("99"));
    QCOMPARE(askIn(burn), range);
    QCOMPARE(range->controls().end->text(), QStringLiteral("99"));
    read->selection().select({0x1F00, 6});
    QCOMPARE(askIn(read), range);
    QCOMPARE(range->controls().first->text(), QStringLiteral("1F00"));
    QCOMPARE(range->controls().end->text(), QStringLiteral("1F05"));
    range->controls().end->setText(QStringLiteral("1F0F"));
    velm.click(range->controls().selectButton);
    QCOMPARE(read->selection().bytes().offset, 0x1F00);
    QCOMPARE(read->selection().bytes().length, 16);
    QCOMPARE(burn->selection().bytes().length, 4);
}

void TestWindowSideBySide::besideGrid_cannotBeEdited() {
    WindowFixture velm;
    showBoth(velm);
    GridView *beside = velm.controls().besideGrid;
    QTRY_VERIFY(beside->isVisible());
    beside->showAddress(0);
    beside->setFocus();
    QTest::keyClick(beside, Qt::Key_F2);
    QTest::keyClick(beside, Qt::Key_5);
    QVERIFY(!beside->entries().editor());
}

void TestWindowSideBySide::choice_isRemembered() {
    WindowFixture velm;
    showBoth(velm);
    QTRY_VERIFY(velm.controls().besideGrid->isVisible());
    for (const QAction *menu : velm.velm().window().menuBar()->actions())
        for (QAction *entry : menu->menu()->actions())
            if (entry->text().remove(u'&').startsWith(u"Other image beside"))
                entry->trigger();
    QVERIFY(!velm.controls().besideGrid->isVisible());
    velm.velm().window().close();
    velm.end();
    showBoth(velm);
    velm.settle();
    QVERIFY(!velm.controls().besideGrid->isVisible());
}

QTEST_MAIN(TestWindowSideBySide)
#include "tst_window_sidebyside.moc"

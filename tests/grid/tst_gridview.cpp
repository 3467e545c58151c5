// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "base/Units.h"
#include "grid/GridCopying.h"
#include "support/ShownGrid.h"

#include <QHeaderView>
#include <QScrollBar>
#include <QSignalSpy>

class TestGridView : public QObject {
    Q_OBJECT

private slots:
    void beforeItHasASource_itIsEmpty();
    void firstPaint_asksOnlyForTheVisibleRows();
    void repaint_ofTheLargestImageAsksForTheSame();
    void everyRow_canBeReached();
    void cells_areFoundWhereTheyAreDrawn();
    void places_besideTheCellsAreNone();
    void scrolling_isByRowsAndKeepsTheHeaderInLine();
    void wheel_scrollsByRows();
    void reload_keepsPlace();
    void reload_ofAShorterContentKeepsWhatExists();
    void showAddress_bringsTheByteIntoView();
    void showAddress_refusesWhatIsNotThere();
    void columns_canBeResizedAndGoBackToTheirWidth();
    void characters_takeTheRoomThatIsLeft();
    void largerFont_makesRowsHigher();
    void drops_areNotAccepted();
    void aChangeOfEveryByte_looksAtTheVisibleCellsOnly();
};

namespace {

int lastRowInView(const GridView &view) {
    return view.verticalScrollBar()->value() + view.viewport()->height() / view.rowHeight() - 1;
}

} // namespace

void TestGridView::beforeItHasASource_itIsEmpty() {
    GridView view;
    view.show();
    view.reloadData();
    QVERIFY(!view.showAddress(0));
    QVERIFY(!view.entries().commit());
    QCOMPARE(view.selection().rowCount(), 0);
    view.copying().copy();
    QTest::keyClick(&view, Qt::Key_Down);
    QCOMPARE(view.indexAt(QPoint(5, 5)), QModelIndex());
    QVERIFY(QTest::qWaitForWindowExposed(&view));
}

void TestGridView::firstPaint_asksOnlyForTheVisibleRows() {
    const auto questionsToShow = [](qint64 length) {
        GridSourceDouble source;
        source.pretendedLength = length;
        GridView view;
        view.setSource(source);
        view.resize(view.sizeHint());
        view.grab();
        return source.questions;
    };
    const qint64 small = questionsToShow(mebibyte);
    QVERIFY2(small > 0 && small <= 100 * gridColumns, qPrintable(QString::number(small)));
    QCOMPARE(questionsToShow(64 * mebibyte), small);
}

void TestGridView::repaint_ofTheLargestImageAsksForTheSame() {
    const auto questionsToReload = [](qint64 length) {
        ShownGrid grid({}, false, length);
        grid.setCursor(3, 3);
        grid.view.viewport()->repaint();
        grid.source.questions = 0;
        grid.view.reloadData();
        grid.view.viewport()->repaint();
        return grid.source.questions;
    };
    QCOMPARE(questionsToReload(1024 * mebibyte), questionsToReload(mebibyte));
}

void TestGridView::everyRow_canBeReached() {
    ShownGrid grid({}, false, 1024 * mebibyte);
    QVERIFY(grid.shown);
    const int lastRow = 67108864;
    grid.press(Qt::Key_End, Qt::ControlModifier);
    grid.press(Qt::Key_Down);
    QCOMPARE(grid.cursor(), qMakePair(lastRow, 16));
    QCOMPARE(lastRowInView(grid.view), lastRow);
    QVERIFY(grid.view.viewport()->rect().intersects(grid.view.visualRect(grid.cell(lastRow, 1))));

    // From one end to the other with the shift key selects all bytes.
    grid.press(Qt::Key_Home, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(grid.cursor(), qMakePair(0, 1));
    QCOMPARE(grid.view.selection().bytes().length, qint64(lastRow) * 16);
}

void TestGridView::cells_areFoundWhereTheyAreDrawn() {
    ShownGrid grid(QByteArray(600, 'A'));
    grid.view.verticalScrollBar()->setValue(7);
    for (int row = 7; row <= lastRowInView(grid.view); ++row)
        for (int column = 0; column < gridColumns; ++column) {
            const QRect rect = grid.view.visualRect(grid.cell(row, column));
            QCOMPARE(grid.view.indexAt(rect.topLeft()), grid.cell(row, column));
            QCOMPARE(grid.view.indexAt(rect.bottomRight()), grid.cell(row, column));
        }
    QCOMPARE(grid.view.visualRect(grid.cell(7, 0)).topLeft(), QPoint(0, 0));
}

void TestGridView::places_besideTheCellsAreNone() {
    ShownGrid grid("A");
    const QRect last = grid.view.visualRect(grid.cell(0, 17));
    QCOMPARE(grid.view.indexAt(last.bottomRight() + QPoint(1, 0)), QModelIndex());
    QCOMPARE(grid.view.indexAt(last.bottomRight() + QPoint(0, 1)), QModelIndex());
    QCOMPARE(grid.view.indexAt(QPoint(5, -1)), QModelIndex());
    QCOMPARE(grid.view.visualRect(QModelIndex()), QRect());
}

void TestGridView::scrolling_isByRowsAndKeepsTheHeaderInLine() {
    ShownGrid grid(QByteArray(600, 'A'));
    grid.view.resize(300, 200);
    QTRY_COMPARE(grid.view.width(), 300);
    grid.view.scrollTo(grid.cell(0, 17));
    QCOMPARE(grid.view.visualRect(grid.cell(0, 17)).right(), grid.view.viewport()->width() - 1);
    for (int column = 0; column < gridColumns; ++column)
        QCOMPARE(grid.view.visualRect(grid.cell(0, column)).left(),
                 grid.view.header()->sectionViewportPosition(column));

    grid.view.scrollTo(grid.cell(20, 0), QAbstractItemView::PositionAtTop);
    QCOMPARE(grid.view.visualRect(grid.cell(20, 0)).topLeft(), QPoint(0, 0));
    grid.view.scrollTo(grid.cell(20, 0), QAbstractItemView::PositionAtBottom);
    QCOMPARE(lastRowInView(grid.view), 20);
    grid.view.scrollTo(grid.cell(10, 0));
    QCOMPARE(grid.view.verticalScrollBar()->value(), 10);
}

void TestGridView::wheel_scrollsByRows() {
    ShownGrid grid(QByteArray(6000, 'A'));
    const QPointF where = grid.view.viewport()->rect().center();
    QWheelEvent event(where, grid.view.viewport()->mapToGlobal(where), QPoint(), QPoint(0, -120),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(grid.view.viewport(), &event);
    QCOMPARE(grid.view.verticalScrollBar()->value(), QApplication::wheelScrollLines());
}

void TestGridView::reload_keepsPlace() {
    ShownGrid grid(QByteArray(6000, 'A'));
    grid.view.verticalScrollBar()->setValue(100);
    grid.click(103, 0);
    grid.click(105, 0, Qt::ShiftModifier);
    grid.view.verticalScrollBar()->setValue(200);
    grid.source.bytes.append(QByteArray(6000, 'B'));
    grid.view.reloadData();
    QCOMPARE(grid.view.verticalScrollBar()->value(), 200);
    QCOMPARE(grid.cursor(), qMakePair(105, 0));
    QCOMPARE(grid.view.selection().rowCount(), 3);
    QVERIFY(grid.view.selectionModel()->isSelected(grid.cell(103, 0)));
    QCOMPARE(grid.view.gridModel()->rowCount(), 751);
}

void TestGridView::reload_ofAShorterContentKeepsWhatExists() {
    ShownGrid grid(QByteArray(6000, 'A'));
    grid.view.verticalScrollBar()->setValue(200);
    grid.click(203, 5);
    grid.source.bytes = "A";
    grid.view.reloadData();
    QCOMPARE(grid.view.verticalScrollBar()->value(), 0);
    QVERIFY(!grid.view.currentIndex().isValid());
    QCOMPARE(grid.view.selection().rowCount(), 0);
}

void TestGridView::showAddress_bringsTheByteIntoView() {
    ShownGrid grid({}, false, mebibyte);
    QVERIFY(grid.view.showAddress(0x8123));
    QCOMPARE(grid.cursor(), qMakePair(0x812, 4));
    const QRect cell = grid.view.visualRect(grid.view.currentIndex());
    QVERIFY(grid.view.viewport()->rect().contains(cell));
    QVERIFY(cell.top() > 0);
    QCOMPARE(grid.view.selection().rowCount(), 1);
}

void TestGridView::showAddress_refusesWhatIsNotThere() {
    ShownGrid grid({}, false, mebibyte);
    grid.setCursor(2, 2);
    QVERIFY(!grid.view.showAddress(-1));
    QVERIFY(!grid.view.showAddress(mebibyte + 16));
    grid.view.setHeading(GridHeading::Pins);
    QVERIFY(!grid.view.showAddress(0));
    QCOMPARE(grid.cursor(), qMakePair(2, 2));
}

void TestGridView::columns_canBeResizedAndGoBackToTheirWidth() {
    ShownGrid grid("A");
    const int width = grid.view.header()->sectionSize(3);
    QCOMPARE(width, grid.view.sizeHintForColumn(3));
    grid.view.header()->resizeSection(3, 100);
    QCOMPARE(grid.view.visualRect(grid.cell(0, 3)).width(), 100);
    QVERIFY(grid.view.horizontalScrollBar()->maximum() > 0);
    emit grid.view.header()->sectionHandleDoubleClicked(3);
    QCOMPARE(grid.view.header()->sectionSize(3), width);
    grid.view.reloadData();
    QCOMPARE(grid.view.header()->sectionSize(3), width);
}

void TestGridView::characters_takeTheRoomThatIsLeft() {
    ShownGrid grid("A");
    grid.view.resize(1500, 300);
    QTRY_COMPARE(grid.view.header()->length(), grid.view.viewport()->width());
    QCOMPARE(grid.view.horizontalScrollBar()->maximum(), 0);
    grid.view.resize(300, 300);
    QTRY_VERIFY(grid.view.horizontalScrollBar()->maximum() > 0);
    QCOMPARE(grid.view.header()->sectionSize(17), grid.view.sizeHintForColumn(17));
}

void TestGridView::largerFont_makesRowsHigher() {
    ShownGrid grid("A");
    const int height = grid.view.rowHeight();
    const int width = grid.view.header()->sectionSize(1);
    QFont font = grid.view.font();
    font.setPointSize(font.pointSize() * 2);
    grid.view.setFont(font);
    QVERIFY(grid.view.rowHeight() > height);
    QVERIFY(grid.view.header()->sectionSize(1) > width);
}

void TestGridView::drops_areNotAccepted() {
    ShownGrid grid("A");
    QVERIFY(!grid.view.acceptDrops());
    QVERIFY(!grid.view.viewport()->acceptDrops());
}

/// Counts how often the place of a cell is asked for.
class CountingView final : public GridView {
public:
    QRect visualRect(const QModelIndex &index) const override {
        ++asked;
        return GridView::visualRect(index);
    }
    mutable int asked = 0;
};

void TestGridView::aChangeOfEveryByte_looksAtTheVisibleCellsOnly() {
    GridSourceDouble source;
    source.pretendedLength = 64 * mebibyte;
    CountingView view;
    view.setSource(source);
    view.resize(view.sizeHint());
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    GridModel *model = view.gridModel();
    view.asked = 0;
    emit model->dataChanged(model->index(0, 0),
                            model->index(model->rowCount() - 1, gridColumns - 1));
    QVERIFY2(view.asked < 2000, qPrintable(QString::number(view.asked)));
    view.grab(); // what has changed is drawn
    view.asked = 0;
    emit model->dataChanged(model->index(1000, 0), model->index(1000, 17)); // out of view
    QVERIFY2(view.asked < 2000, qPrintable(QString::number(view.asked)));
}

QTEST_MAIN(TestGridView)
#include "tst_gridview.moc"

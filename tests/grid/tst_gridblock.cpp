// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "base/Units.h"
#include "grid/GridSelection.h"
#include "support/ShownGrid.h"

#include <QScrollBar>
#include <QSignalSpy>

/// A block of bytes in the grid.
class TestGridBlock : public QObject {
    Q_OBJECT

private slots:
    void withoutABlock_theByteUnderTheCursorIsSelected();
    void cellBehindTheLastByte_selectsNone();
    void rows_selectTheirBytes_data();
    void rows_selectTheirBytes();
    void rowsApart_areRangesOfTheirOwn();
    void rowOfAnotherCursor_selectsItsBytes();
    void noRow_selectsNone();
    void everyChangeOfRows_isTold();
    void results_haveNoBytes();
    void selecting_putsTheCursorOnTheFirstByteInView();
    void selecting_takesWhatThereIs_data();
    void selecting_takesWhatThereIs();
    void block_takesThePlaceOfRows();
    void shiftedKeys_extendIt();
    void plainMovement_endsIt_data();
    void plainMovement_endsIt();
    void escape_endsItAlone();
    void selectAll_selectsAllBytes();
    void reload_keepsWhatIsLeft();
    void otherHeading_endsIt();
    void everyChange_isTold();
    void everyChangeOfTheBlock_isTold();
    void largestImage_isSelectedAtOnce();
};

namespace {

QPair<qint64, qint64> selected(const GridView &view) {
    return {view.selection().bytes().offset, view.selection().bytes().length};
}

QPair<qint64, qint64> bytes(qint64 offset, qint64 length) {
    return {offset, length};
}

} // namespace

void TestGridBlock::withoutABlock_theByteUnderTheCursorIsSelected() {
    ShownGrid grid(QByteArray(40, 'A'));
    grid.click(1, 4);
    QCOMPARE(selected(grid.view), bytes(19, 1));
    QVERIFY(!grid.view.selection().hasBlock());
    QCOMPARE(grid.view.selection().rowCount(), 1);
}

void TestGridBlock::cellBehindTheLastByte_selectsNone() {
    ShownGrid grid(QByteArray(40, 'A'));
    grid.click(2, 9);
    QCOMPARE(selected(grid.view), bytes(0, 0));
    QVERIFY(grid.view.selection().ranges().isEmpty());
    QVERIFY(!grid.view.selection().hasBlock());
}

void TestGridBlock::rows_selectTheirBytes_data() {
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    QTest::addColumn<qint64>("offset");
    QTest::addColumn<qint64>("length");
    QTest::newRow("by an address") << 0 << 1 << 1 << qint64(16) << qint64(16);
    QTest::newRow("by addresses") << 0 << 0 << 1 << qint64(0) << qint64(32);
    QTest::newRow("from below") << 0 << 1 << 0 << qint64(0) << qint64(32);
    QTest::newRow("to the end") << 0 << 1 << 2 << qint64(16) << qint64(24);
    QTest::newRow("the last") << 0 << 2 << 2 << qint64(32) << qint64(8);
    QTest::newRow("of bytes") << 5 << 0 << 1 << qint64(0) << qint64(32);
    QTest::newRow("ending behind the last byte") << 12 << 1 << 2 << qint64(16) << qint64(24);
    QTest::newRow("of characters") << charactersColumn << 0 << 1 << qint64(0) << qint64(32);
}

// Those that are selected one by one follow each other all the same.
void TestGridBlock::rows_selectTheirBytes() {
    QFETCH(const int, column);
    QFETCH(const int, first);
    QFETCH(const int, last);
    QFETCH(const qint64, offset);
    QFETCH(const qint64, length);
    ShownGrid grid(QByteArray(40, 'A'));
    grid.click(first, column);
    if (last != first)
        grid.click(last, column, Qt::ControlModifier);
    QCOMPARE(selected(grid.view), bytes(offset, length));
    QVERIFY(!grid.view.selection().hasBlock());
}

void TestGridBlock::rowsApart_areRangesOfTheirOwn() {
    ShownGrid grid(QByteArray(100, 'A'));
    grid.click(4, 5);
    grid.click(0, 5, Qt::ControlModifier);
    grid.click(1, 5, Qt::ControlModifier);
    QCOMPARE(selected(grid.view), bytes(0, 0));
    const QList<ByteRange> ranges = grid.view.selection().ranges();
    QCOMPARE(ranges.size(), 2);
    QCOMPARE(qMakePair(ranges[0].offset, ranges[0].length), bytes(0, 32));
    QCOMPARE(qMakePair(ranges[1].offset, ranges[1].length), bytes(64, 16));
}

void TestGridBlock::rowOfAnotherCursor_selectsItsBytes() {
    ShownGrid grid(QByteArray(100, 'A'));
    grid.click(1, 5);
    grid.click(3, 5, Qt::ControlModifier);
    grid.click(3, 5, Qt::ControlModifier);
    QCOMPARE(grid.view.selection().rowCount(), 1);
    QCOMPARE(selected(grid.view), bytes(16, 16));
}

void TestGridBlock::noRow_selectsNone() {
    ShownGrid grid(QByteArray(100, 'A'));
    grid.setCursor(1, 0);
    grid.view.clearSelection();
    QCOMPARE(selected(grid.view), bytes(0, 0));
}

void TestGridBlock::everyChangeOfRows_isTold() {
    ShownGrid grid(QByteArray(100, 'A'));
    grid.click(1, 0);
    QSignalSpy changes(&grid.view.selection(), &GridSelection::changed);
    qint64 told = 0;
    connect(&grid.view.selection(), &GridSelection::changed, &grid.view,
            [&] { told = grid.view.selection().bytes().length; });
    grid.view.selectionModel()->select(grid.cell(2, 0),
                                       QItemSelectionModel::Select | QItemSelectionModel::Rows);
    QCOMPARE(changes.size(), 1);
    QCOMPARE(told, 32);
}

void TestGridBlock::results_haveNoBytes() {
    ShownGrid grid("A");
    grid.source.report = {{{}, {QStringLiteral("1")}}, {{QStringLiteral("0000:")}}};
    grid.view.setHeading(GridHeading::Pins);
    grid.view.reloadData();
    grid.setCursor(0, 1);
    QCOMPARE(grid.view.selection().bytes().length, 0);
    grid.view.selection().select({0, 2});
    QVERIFY(!grid.view.selection().hasBlock());
    grid.press(Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(grid.view.selection().rowCount(), 2);
    grid.view.selectAll();
    QCOMPARE(grid.view.selection().rowCount(), 2);
}

void TestGridBlock::selecting_putsTheCursorOnTheFirstByteInView() {
    ShownGrid grid(QByteArray(6000, 'A'));
    grid.view.selection().select({0x805, 300});
    QCOMPARE(selected(grid.view), bytes(0x805, 300));
    QVERIFY(grid.view.selection().hasBlock());
    QCOMPARE(grid.cursor(), qMakePair(0x80, 6));
    QVERIFY(grid.view.viewport()->rect().contains(grid.view.visualRect(grid.cell(0x80, 6))));
    // What is in view stays where it is.
    const int top = grid.view.verticalScrollBar()->value();
    QVERIFY(top > 0);
    grid.view.selection().select({0x7F5, 300});
    QCOMPARE(grid.view.verticalScrollBar()->value(), top);
    grid.view.selection().select({7, 1});
    QCOMPARE(selected(grid.view), bytes(7, 1));
    QVERIFY(!grid.view.selection().hasBlock());
    QCOMPARE(grid.view.selection().rowCount(), 1);
}

void TestGridBlock::selecting_takesWhatThereIs_data() {
    QTest::addColumn<qint64>("offset");
    QTest::addColumn<qint64>("length");
    QTest::addColumn<qint64>("expectedOffset");
    QTest::addColumn<qint64>("expectedLength");
    const auto row = [](const char *name, QPair<qint64, qint64> asked,
                        QPair<qint64, qint64> taken) {
        QTest::newRow(name) << asked.first << asked.second << taken.first << taken.second;
    };
    row("all", {0, 40}, {0, 40});
    row("beyond the end", {30, 100}, {30, 10});
    row("from before the start", {-5, 10}, {0, 5});
    row("behind the end", {40, 5}, {2, 3});
    row("before the start", {-5, 5}, {2, 3});
    row("none", {7, 0}, {2, 3});
}

// What cannot be selected leaves the bytes 2 to 4 as they were.
void TestGridBlock::selecting_takesWhatThereIs() {
    QFETCH(qint64, offset);
    QFETCH(qint64, length);
    QFETCH(qint64, expectedOffset);
    QFETCH(qint64, expectedLength);
    ShownGrid grid(QByteArray(40, 'A'));
    grid.view.selection().select({2, 3});
    grid.view.selection().select({offset, length});
    QCOMPARE(selected(grid.view), bytes(expectedOffset, expectedLength));
}

void TestGridBlock::block_takesThePlaceOfRows() {
    ShownGrid grid(QByteArray(100, 'A'));
    grid.click(1, 4);
    grid.view.selection().select({5, 30});
    QCOMPARE(grid.view.selection().rowCount(), 0);
    grid.click(4, 4, Qt::ControlModifier);
    QVERIFY(!grid.view.selection().hasBlock());
    QCOMPARE(grid.view.selection().rowCount(), 1);
    grid.view.selection().select({5, 30});
    grid.view.moveTo(grid.cell(0, 6));
    QVERIFY(!grid.view.selection().hasBlock());
    QCOMPARE(grid.view.selection().rowCount(), 1);
}

void TestGridBlock::shiftedKeys_extendIt() {
    ShownGrid grid(QByteArray(1000, 'A'));
    grid.click(2, 5);
    grid.press(Qt::Key_Right, Qt::ShiftModifier);
    QCOMPARE(selected(grid.view), bytes(36, 2));
    QCOMPARE(grid.cursor(), qMakePair(2, 6));
    grid.press(Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(selected(grid.view), bytes(36, 18));
    grid.press(Qt::Key_End, Qt::ShiftModifier);
    QCOMPARE(selected(grid.view), bytes(36, 28));
    grid.press(Qt::Key_Right, Qt::ShiftModifier);
    QCOMPARE(grid.cursor(), qMakePair(4, 1));
    grid.press(Qt::Key_PageDown, Qt::ShiftModifier);
    QCOMPARE(selected(grid.view), bytes(36, 29 + 16 * 16));
    grid.press(Qt::Key_End, Qt::ShiftModifier | Qt::ControlModifier);
    QCOMPARE(selected(grid.view), bytes(36, 964));
    QVERIFY(grid.view.viewport()->rect().contains(grid.view.visualRect(grid.view.currentIndex())));
    grid.press(Qt::Key_Home, Qt::ShiftModifier | Qt::ControlModifier);
    QCOMPARE(selected(grid.view), bytes(0, 37));
    grid.click(2, 5);
    grid.press(Qt::Key_Left, Qt::ShiftModifier);
    QVERIFY(grid.view.selection().hasBlock());
    grid.press(Qt::Key_Right, Qt::ShiftModifier);
    QVERIFY(!grid.view.selection().hasBlock());
    QCOMPARE(grid.view.selection().rowCount(), 1);
    QCOMPARE(grid.cursor(), qMakePair(2, 5));
}

void TestGridBlock::plainMovement_endsIt_data() {
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("column");
    QTest::newRow("right") << int(Qt::Key_Right) << 2 << 4;
    QTest::newRow("down") << int(Qt::Key_Down) << 3 << 3;
    QTest::newRow("home") << int(Qt::Key_Home) << 2 << 1;
    QTest::newRow("page up") << int(Qt::Key_PageUp) << 0 << 3;
}

void TestGridBlock::plainMovement_endsIt() {
    QFETCH(int, key);
    QFETCH(int, row);
    QFETCH(int, column);
    ShownGrid grid(QByteArray(1000, 'A'));
    grid.view.selection().select({34, 50});
    grid.press(key);
    QVERIFY(!grid.view.selection().hasBlock());
    QCOMPARE(grid.cursor(), qMakePair(row, column));
    QCOMPARE(grid.view.selection().rowCount(), 1);
    // Also where it leads nowhere.
    grid.view.selection().select({0, 50});
    grid.press(Qt::Key_Up);
    QVERIFY(!grid.view.selection().hasBlock());
}

void TestGridBlock::escape_endsItAlone() {
    ShownGrid grid(QByteArray(100, 'A'));
    grid.view.selection().select({34, 30});
    grid.press(Qt::Key_Escape);
    QVERIFY(!grid.view.selection().hasBlock());
    QCOMPARE(grid.cursor(), qMakePair(2, 3));
    QCOMPARE(selected(grid.view), bytes(34, 1));
    QVERIFY(grid.view.selectionModel()->isRowSelected(2));
    // Whoever is around the grid hears of the next one.
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    escape.accept();
    QApplication::sendEvent(&grid.view, &escape);
    QVERIFY(!escape.isAccepted());
}

void TestGridBlock::selectAll_selectsAllBytes() {
    ShownGrid grid(QByteArray(100, 'A'));
    grid.click(2, 5);
    grid.press(Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(selected(grid.view), bytes(0, 100));
    QCOMPARE(grid.cursor(), qMakePair(2, 5));
    QCOMPARE(grid.view.selection().rowCount(), 0);
}

void TestGridBlock::reload_keepsWhatIsLeft() {
    ShownGrid grid(QByteArray(100, 'A'));
    grid.view.selection().select({30, 40});
    grid.view.reloadData();
    QCOMPARE(selected(grid.view), bytes(30, 40));
    QCOMPARE(grid.view.selection().rowCount(), 0);
    grid.source.bytes.truncate(40);
    grid.view.reloadData();
    QCOMPARE(selected(grid.view), bytes(30, 10));
    // A cursor on what has gone comes to where the block now ends.
    grid.source.bytes = QByteArray(31, 'A');
    grid.view.selection().select({2, 3});
    grid.press(Qt::Key_End, Qt::ShiftModifier | Qt::ControlModifier);
    grid.source.bytes.truncate(10);
    grid.view.reloadData();
    QCOMPARE(selected(grid.view), bytes(4, 6));
    QCOMPARE(grid.cursor(), qMakePair(0, 10));
    grid.source.bytes.truncate(3);
    grid.view.reloadData();
    QVERIFY(!grid.view.selection().hasBlock());
    grid.source.bytes = QByteArray(100, 'B');
    grid.view.reloadData();
    QVERIFY(!grid.view.selection().hasBlock());
    grid.view.selection().select({30, 40});
    grid.source.bytes.truncate(40);
    grid.view.showChange({0, 40});
    QCOMPARE(selected(grid.view), bytes(30, 10));
}

void TestGridBlock::otherHeading_endsIt() {
    ShownGrid grid(QByteArray(100, 'A'));
    grid.view.selection().select({30, 40});
    grid.view.setHeading(GridHeading::Bytes);
    QVERIFY(grid.view.selection().hasBlock());
    grid.view.setHeading(GridHeading::Pins);
    QVERIFY(!grid.view.selection().hasBlock());
}

void TestGridBlock::everyChange_isTold() {
    ShownGrid grid(QByteArray(100, 'A'));
    QSignalSpy changes(&grid.view.selection(), &GridSelection::changed);
    const auto wasTold = [&] {
        const bool told = !changes.isEmpty();
        changes.clear();
        return told;
    };
    grid.click(2, 5);
    QVERIFY(wasTold());
    grid.press(Qt::Key_Right, Qt::ShiftModifier);
    QVERIFY(wasTold());
    grid.press(Qt::Key_Escape);
    QVERIFY(wasTold());
    grid.view.selection().select({3, 4});
    QVERIFY(wasTold());
    grid.view.showChange({4, 1});
    QVERIFY(wasTold());
    grid.view.reloadData();
    QVERIFY(wasTold());
    grid.view.selection().end();
    QVERIFY(wasTold());
    grid.view.selection().end();
    QVERIFY(!wasTold());
}

// Assistive technology hears of these, as it does of rows.
void TestGridBlock::everyChangeOfTheBlock_isTold() {
    ShownGrid grid(QByteArray(100, 'A'));
    grid.click(1, 4);
    QSignalSpy changes(&grid.view.selection(), &GridSelection::blockChanged);
    for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Right, Qt::Key_Down, Qt::Key_End})
        grid.press(key, Qt::ShiftModifier);
    QCOMPARE(changes.size(), 4);
    grid.press(Qt::Key_End, Qt::ShiftModifier); // goes nowhere
    grid.view.selection().select({3, 4});
    QCOMPARE(changes.size(), 5);
    grid.view.selection().select({3, 4});
    grid.press(Qt::Key_Escape);
    grid.press(Qt::Key_Right);
    QCOMPARE(changes.size(), 5);
}

void TestGridBlock::largestImage_isSelectedAtOnce() {
    ShownGrid grid({}, false, gibibyte);
    grid.setCursor(5, 1);
    grid.view.setUpdatesEnabled(false);
    grid.source.questions = 0;
    grid.view.selectAll();
    QCOMPARE(selected(grid.view), bytes(0, gibibyte));
    grid.view.selection().select({gibibyte - 5, 100});
    QCOMPARE(selected(grid.view), bytes(gibibyte - 5, 5));
    QVERIFY2(grid.source.questions < 1000, qPrintable(QString::number(grid.source.questions)));
}

QTEST_MAIN(TestGridBlock)
#include "tst_gridblock.moc"

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "grid/GridCopying.h"
#include "support/AddressSpaceLimit.h"
#include "support/ShownGrid.h"

#include <QClipboard>
#include <QScrollBar>
#include <QSignalSpy>
#include <QVBoxLayout>

#include <functional>

class TestGridKeys : public QObject {
    Q_OBJECT

private slots:
    void keys_data();
    void keys();
    void endKeys_knowWhereTheBytesEnd_data();
    void endKeys_knowWhereTheBytesEnd();
    void endKeys_amongResultsLeadToTheTablesEnds();
    void endKeys_askFewQuestions();
    void typing_afterAnEndKeyOpensAByte();
    void firstFocus_putsTheCursorOnAByte();
    void tab_leavesTheGrid();
    void typing_whereNothingMayBeEditedSearchesNothing();
    void selection_isOfRows();
    void dragging_overAddressesSelectsRowsFromWhereItBegan();
    void copy_isADumpOfTheSelectedRows();
    void copy_ofABlockIsItsDigits();
    void copy_takesWhatIsSelectedInEveryForm();
    void copy_ofTooManyBytesIsRefused();
    void copy_ofAReportSeparatesFieldsByTabs();
    void copy_ofTooManyRowsIsRefused();
    void copy_withoutMemoryLeavesTheClipboard_data();
    void copy_withoutMemoryLeavesTheClipboard();
    void copy_withoutASelectionLeavesTheClipboard();
};

// 100 rows of which the last holds no byte, and a cursor in the middle.
void TestGridKeys::keys_data() {
    QTest::addColumn<int>("fromRow");
    QTest::addColumn<int>("fromColumn");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("column");
    const auto row = [](const char *name, QPair<int, int> from, Qt::Key key, QPair<int, int> to,
                        Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::newRow(name) << from.first << from.second << int(key) << int(modifiers.toInt())
                            << to.first << to.second;
    };
    row("up", {50, 5}, Qt::Key_Up, {49, 5});
    row("down", {50, 5}, Qt::Key_Down, {51, 5});
    row("left", {50, 5}, Qt::Key_Left, {50, 4});
    row("right", {50, 5}, Qt::Key_Right, {50, 6});
    row("page up", {50, 5}, Qt::Key_PageUp, {34, 5});
    row("page down", {50, 5}, Qt::Key_PageDown, {66, 5});
    row("home", {50, 5}, Qt::Key_Home, {50, 1});
    row("end", {50, 5}, Qt::Key_End, {50, 16});
    row("home from the address", {50, 0}, Qt::Key_Home, {50, 1});
    row("end from the characters", {50, 17}, Qt::Key_End, {50, 16});
    row("end where there is no byte", {99, 5}, Qt::Key_End, {99, 16});
    row("to the first byte", {50, 5}, Qt::Key_Home, {0, 1}, Qt::ControlModifier);
    row("to the last byte", {50, 5}, Qt::Key_End, {98, 16}, Qt::ControlModifier);
    row("up at the upper edge", {0, 5}, Qt::Key_Up, {0, 5});
    row("down at the lower edge", {99, 5}, Qt::Key_Down, {99, 5});
    row("left at the left edge", {50, 0}, Qt::Key_Left, {50, 0});
    row("right at the right edge", {50, 17}, Qt::Key_Right, {50, 17});
    row("page up near the upper edge", {3, 5}, Qt::Key_PageUp, {0, 5});
    row("page down near the lower edge", {97, 5}, Qt::Key_PageDown, {99, 5});
}

void TestGridKeys::keys() {
    QFETCH(int, fromRow);
    QFETCH(int, fromColumn);
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QFETCH(int, row);
    QFETCH(int, column);
    ShownGrid grid(QByteArray(99 * 16, 'A'));
    QVERIFY(grid.shown);
    grid.setCursor(fromRow, fromColumn);
    grid.press(key, Qt::KeyboardModifiers(modifiers));
    QCOMPARE(grid.cursor(), qMakePair(row, column));
    const QRect cell = grid.view.visualRect(grid.view.currentIndex());
    QVERIFY(grid.view.viewport()->rect().contains(cell));
    QCOMPARE(grid.view.selection().rowCount(), 1);
}

void TestGridKeys::endKeys_knowWhereTheBytesEnd_data() {
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("endRow");
    QTest::addColumn<int>("endColumn");
    QTest::newRow("no bytes") << 0 << 0 << 1;
    QTest::newRow("one byte") << 1 << 0 << 1;
    QTest::newRow("a full row") << 16 << 0 << 16;
    QTest::newRow("a row and a byte") << 17 << 1 << 1;
    QTest::newRow("a row and four bytes") << 20 << 1 << 4;
}

void TestGridKeys::endKeys_knowWhereTheBytesEnd() {
    QFETCH(int, length);
    QFETCH(int, endRow);
    QFETCH(int, endColumn);
    ShownGrid grid(QByteArray(length, 'A'));
    grid.setCursor(0, 3);
    grid.press(Qt::Key_End, Qt::ControlModifier);
    QCOMPARE(grid.cursor(), qMakePair(endRow, endColumn));
    grid.press(Qt::Key_Home);
    QCOMPARE(grid.cursor(), qMakePair(endRow, 1));
    grid.press(Qt::Key_End);
    QCOMPARE(grid.cursor(), qMakePair(endRow, length == 0 ? 16 : endColumn));
    grid.press(Qt::Key_Home, Qt::ControlModifier);
    QCOMPARE(grid.cursor(), qMakePair(0, 1));
}

void TestGridKeys::endKeys_amongResultsLeadToTheTablesEnds() {
    ShownGrid grid("A");
    grid.source.report = {{{}, {QStringLiteral("1")}}, {{QStringLiteral("0000:")}}, {}};
    grid.view.setHeading(GridHeading::Pins);
    grid.view.reloadData();
    grid.setCursor(1, 5);
    grid.press(Qt::Key_Home);
    QCOMPARE(grid.cursor(), qMakePair(1, 0));
    grid.press(Qt::Key_End);
    QCOMPARE(grid.cursor(), qMakePair(1, 17));
    grid.press(Qt::Key_Home, Qt::ControlModifier);
    QCOMPARE(grid.cursor(), qMakePair(0, 0));
    grid.press(Qt::Key_End, Qt::ControlModifier);
    QCOMPARE(grid.cursor(), qMakePair(2, 17));
}

void TestGridKeys::endKeys_askFewQuestions() {
    ShownGrid grid({}, false, qint64(1) << 30);
    grid.setCursor(0, 1);
    grid.view.setUpdatesEnabled(false);
    grid.source.questions = 0;
    grid.press(Qt::Key_End, Qt::ControlModifier);
    QCOMPARE(grid.cursor(), qMakePair((1 << 26) - 1, 16));
    QVERIFY2(grid.source.questions < 100, qPrintable(QString::number(grid.source.questions)));
}

void TestGridKeys::typing_afterAnEndKeyOpensAByte() {
    ShownGrid grid(QByteArray(20, 'A'), true);
    grid.setCursor(1, 2);
    grid.press(Qt::Key_Home, Qt::ControlModifier);
    grid.type(QStringLiteral("7a"));
    grid.press(Qt::Key_Return);
    grid.press(Qt::Key_End, Qt::ControlModifier);
    grid.type(QStringLiteral("7a"));
    grid.press(Qt::Key_Return);
    QCOMPARE(grid.source.bytes, QByteArray("zAAAAAAAAAAAAAAAAAAz"));
}

void TestGridKeys::firstFocus_putsTheCursorOnAByte() {
    ShownGrid grid("A");
    QTRY_COMPARE(grid.cursor(), qMakePair(0, 1));
}

void TestGridKeys::tab_leavesTheGrid() {
    GridSourceDouble source("A");
    QWidget window;
    auto *layout = new QVBoxLayout(&window);
    auto *view = new GridView;
    auto *field = new QLineEdit;
    layout->addWidget(view);
    layout->addWidget(field);
    view->setSource(source);
    window.show();
    view->setFocus();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(view, Qt::Key_Tab);
    QVERIFY(field->hasFocus());
    QTest::keyClick(field, Qt::Key_Backtab, Qt::ShiftModifier);
    QVERIFY(view->hasFocus());
}

void TestGridKeys::typing_whereNothingMayBeEditedSearchesNothing() {
    ShownGrid grid({}, false, 64 << 20);
    grid.setCursor(0, 1);
    grid.view.viewport()->repaint();
    grid.source.questions = 0;
    grid.type(QStringLiteral("AB"));
    QCOMPARE(grid.source.questions, 0);
    QVERIFY(!grid.view.entries().editor());
    QCOMPARE(grid.cursor(), qMakePair(0, 1));
}

void TestGridKeys::selection_isOfRows() {
    ShownGrid grid(QByteArray(200, 'A'));
    grid.click(2, 5);
    QCOMPARE(grid.view.selection().rowCount(), 1);
    QVERIFY(grid.view.selectionModel()->isSelected(grid.cell(2, 17)));
    grid.click(4, 0, Qt::ShiftModifier);
    QCOMPARE(grid.view.selection().rowCount(), 3);
    grid.click(3, 1, Qt::ControlModifier);
    QCOMPARE(grid.view.selection().rowCount(), 2);
    grid.source.report = QList<QList<CellValue>>(13);
    grid.view.setHeading(GridHeading::Pins);
    grid.view.reloadData();
    grid.press(Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(grid.view.selection().rowCount(), 13);
    grid.click(5, 5);
    grid.press(Qt::Key_Down, Qt::ShiftModifier);
    grid.press(Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(grid.view.selection().rowCount(), 3);
}

void TestGridKeys::dragging_overAddressesSelectsRowsFromWhereItBegan() {
    ShownGrid grid(QByteArray(1000, 'A'));
    QWidget *viewport = grid.view.viewport();
    const QPoint start = grid.view.visualRect(grid.cell(4, 0)).center();
    const QPoint end = grid.view.visualRect(grid.cell(8, 0)).center();
    QTest::mousePress(viewport, Qt::LeftButton, Qt::NoModifier, start);
    grid.view.verticalScrollBar()->setValue(3);
    QMouseEvent move(QEvent::MouseMove, end, viewport->mapToGlobal(QPointF(end)), Qt::LeftButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(viewport, &move);
    QTest::mouseRelease(viewport, Qt::LeftButton, Qt::NoModifier, end);
    QCOMPARE(grid.view.selection().rowCount(), 8); // rows 4 to 8 + 3
}

void TestGridKeys::copy_isADumpOfTheSelectedRows() {
    ShownGrid grid(QByteArray("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdef\n\x01z", 35));
    QGuiApplication::clipboard()->clear();
    // Selected from the bottom to the top, copied in the order of the rows.
    grid.click(2, 3);
    grid.click(0, 3, Qt::ControlModifier);
    grid.press(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(
        QGuiApplication::clipboard()->text(),
        QStringLiteral("0000  41 42 43 44 45 46 47 48 49 4A 4B 4C 4D 4E 4F 50  ABCDEFGHIJKLMNOP\n"
                       "0020  0A 01 7A XX XX XX XX XX XX XX XX XX XX XX XX XX    z\n"));
}

void TestGridKeys::copy_ofABlockIsItsDigits() {
    ShownGrid grid("ABCDEFGHIJKLMNOPQRSTUVWXYZ");
    grid.view.selection().select({14, 20});
    grid.press(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(),
             QStringLiteral("4F 50 51 52 53 54 55 56 57 58 59 5A"));
}

void TestGridKeys::copy_takesWhatIsSelectedInEveryForm() {
    ShownGrid grid("ABCDEFGHIJKLMNOPQRSTUVWXYZ");
    GridCopying &copying = grid.view.copying();
    const auto copied = [] { return QGuiApplication::clipboard()->text(); };
    grid.view.selection().select({14, 4});
    copying.copyBytes(ByteNotation::Characters);
    QCOMPARE(copied(), QStringLiteral("OPQR"));
    copying.copyRows();
    QCOMPARE(copied().count(u'\n'), 2);
    QVERIFY(copied().startsWith(u"0000  41 42"));
    grid.view.selection().select({5, 1});
    copying.copyBytes(ByteNotation::Characters);
    QCOMPARE(copied(), QStringLiteral("F"));
    // Rows stand for the bytes in them, in their order.
    grid.click(1, 0);
    copying.copyBytes(ByteNotation::PythonBytes);
    QCOMPARE(copied(), QStringLiteral("b\"QRSTUVWXYZ\""));
    grid.click(0, 5, Qt::ControlModifier);
    copying.copyBytes(ByteNotation::Characters);
    QCOMPARE(copied(), QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZ"));
    // Nothing to copy leaves what was copied.
    grid.source.bytes.clear();
    grid.view.reloadData();
    grid.view.selectAll();
    copying.copyBytes(ByteNotation::CArray);
    QCOMPARE(copied(), QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZ"));
}

void TestGridKeys::copy_ofTooManyBytesIsRefused() {
    ShownGrid grid({}, false, 64 << 20);
    QSignalSpy refusals(&grid.view.copying(), &GridCopying::bytesRefused);
    QGuiApplication::clipboard()->setText(QStringLiteral("before"));
    grid.view.selection().select({100, GridCopying::largest + 1});
    grid.press(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(refusals, QList<QVariantList>{{qint64(GridCopying::largest + 1)}});
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("before"));
    grid.view.selection().select({100, GridCopying::largest});
    grid.press(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text().size(), 3 * GridCopying::largest - 1);
}

void TestGridKeys::copy_ofAReportSeparatesFieldsByTabs() {
    ShownGrid grid("A");
    grid.source.report = {{{}, {QStringLiteral("1")}, {QStringLiteral("2")}, {}},
                          {{QStringLiteral("0000:")}, {QStringLiteral("H"), true}, {}, {}}};
    grid.view.setHeading(GridHeading::Pins);
    grid.view.reloadData();
    grid.view.selectAll();
    grid.press(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("\t1\t2\n0000:\tH\n"));
}

void TestGridKeys::copy_ofTooManyRowsIsRefused() {
    ShownGrid grid({}, false, 64 << 20);
    QSignalSpy refusals(&grid.view.copying(), &GridCopying::rowsRefused);
    QGuiApplication::clipboard()->setText(QStringLiteral("before"));
    const auto select = [&grid](int count) {
        grid.view.selectionModel()->select(
            QItemSelection(grid.cell(0, 0), grid.cell(count - 1, 17)),
            QItemSelectionModel::ClearAndSelect);
    };
    select(16385);
    grid.press(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(refusals, QList<QVariantList>{{qint64(16385)}});
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("before"));
    select(16384);
    grid.press(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text().count(u'\n'), 16384);
}

void TestGridKeys::copy_withoutMemoryLeavesTheClipboard_data() {
    using Copying = std::function<void(GridCopying &)>;
    QTest::addColumn<Copying>("copy");
    QTest::newRow("rows") << Copying([](GridCopying &copying) { copying.copyRows(); });
    QTest::newRow("bytes") << Copying(
        [](GridCopying &copying) { copying.copyBytes(ByteNotation::CArray); });
}

void TestGridKeys::copy_withoutMemoryLeavesTheClipboard() {
    if (!AddressSpaceLimit::works())
        QSKIP("the sanitizers need their address space");
    QFETCH(std::function<void(GridCopying &)>, copy);
    ShownGrid grid({}, false, 64 << 20);
    QSignalSpy lacks(&grid.view.copying(), &GridCopying::memoryLacked);
    QGuiApplication::clipboard()->setText(QStringLiteral("before"));
    grid.view.selection().select({0, GridCopying::largest});
    {
        const AddressSpaceLimit limit(0);
        copy(grid.view.copying());
    }
    QCOMPARE(lacks.count(), 1);
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("before"));
}

void TestGridKeys::copy_withoutASelectionLeavesTheClipboard() {
    ShownGrid grid("A");
    grid.view.clearSelection();
    QGuiApplication::clipboard()->setText(QStringLiteral("before"));
    grid.press(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("before"));
}

QTEST_MAIN(TestGridKeys)
#include "tst_gridkeys.moc"

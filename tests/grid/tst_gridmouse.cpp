// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "grid/CharacterPlaces.h"
#include "support/ShownGrid.h"

#include <QScrollBar>
#include <QSignalSpy>

/// Selecting bytes with the mouse.
class TestGridMouse : public QObject {
    Q_OBJECT

private slots:
    void drag_selectsFromByteToByte_data();
    void drag_selectsFromByteToByte();
    void drag_backToItsBeginningSelectsTheRow();
    void drag_opensNoEditor();
    void drag_overCharactersMovesNothingSideways();
    void drag_beyondTheEdgeScrolls_data();
    void drag_beyondTheEdgeScrolls();
    void drag_whoseReleaseIsLostStopsScrolling();
    void drag_fromAnAddressSelectsRows();
    void drag_ofADoubleClickSelectsNothing();
    void shiftedClick_extendsFromTheCursor();
    void shiftedClick_extendsFromTheCharacterClicked();
    void clickOnACharacter_selectsItsByte();
    void plainClick_endsTheBlock();
    void rightClick_keepsTheBlockUnderIt();
};

namespace {

QPair<qint64, qint64> selected(const GridView &view) {
    return {view.selection().bytes().offset, view.selection().bytes().length};
}

QPair<qint64, qint64> bytes(qint64 offset, qint64 length) {
    return {offset, length};
}

/// The middle of what stands for a byte among the bytes, or among the characters.
QPoint pointOf(const ShownGrid &grid, int byte, bool isCharacter) {
    const QRect characters = grid.view.visualRect(grid.cell(byte / 16, charactersColumn));
    return isCharacter ? CharacterPlaces(grid.view.font()).rectOf(byte % 16, 1, characters).center()
                       : grid.view.visualRect(grid.cell(byte / 16, 1 + byte % 16)).center();
}

void moveMouse(const GridView &view, const QPoint &to, Qt::MouseButtons buttons) {
    QMouseEvent move(QEvent::MouseMove, to, view.viewport()->mapToGlobal(QPointF(to)), Qt::NoButton,
                     buttons, Qt::NoModifier);
    QApplication::sendEvent(view.viewport(), &move);
}

/// As the platform tells of it, which then knows that the button is down.
void pressInWindow(const GridView &view, const QPoint &at) {
    QTest::mousePress(view.windowHandle(), Qt::LeftButton, Qt::NoModifier,
                      view.viewport()->mapTo(&view, at));
}

void releaseInWindow(const GridView &view, const QPoint &at) {
    QTest::mouseRelease(view.windowHandle(), Qt::LeftButton, Qt::NoModifier,
                        view.viewport()->mapTo(&view, at));
}

/// Keeps releases of the mouse from whom it is installed on.
class Swallower final : public QObject {
public:
    bool eventFilter(QObject *, QEvent *event) override {
        const bool isRelease = event->type() == QEvent::MouseButtonRelease;
        swallowed |= isRelease;
        return isRelease;
    }

    bool swallowed = false;
};

void drag(const GridView &view, const QPoint &from, const QPoint &to) {
    QTest::mousePress(view.viewport(), Qt::LeftButton, Qt::NoModifier, from);
    moveMouse(view, (from + to) / 2, Qt::LeftButton);
    moveMouse(view, to, Qt::LeftButton);
    QTest::mouseRelease(view.viewport(), Qt::LeftButton, Qt::NoModifier, to);
}

} // namespace

void TestGridMouse::drag_selectsFromByteToByte_data() {
    QTest::addColumn<bool>("fromCharacter");
    QTest::addColumn<bool>("toCharacter");
    QTest::newRow("bytes") << false << false;
    QTest::newRow("characters") << true << true;
    QTest::newRow("bytes to characters") << false << true;
    QTest::newRow("characters to bytes") << true << false;
}

void TestGridMouse::drag_selectsFromByteToByte() {
    QFETCH(bool, fromCharacter);
    QFETCH(bool, toCharacter);
    ShownGrid grid(QByteArray(200, 'A'));
    drag(grid.view, pointOf(grid, 19, fromCharacter), pointOf(grid, 60, toCharacter));
    QCOMPARE(selected(grid.view), bytes(19, 42));
    QCOMPARE(grid.cursor(), qMakePair(3, 13));
    QCOMPARE(grid.view.selection().rowCount(), 0);
    drag(grid.view, pointOf(grid, 60, fromCharacter), pointOf(grid, 19, toCharacter));
    QCOMPARE(selected(grid.view), bytes(19, 42));
    QCOMPARE(grid.cursor(), qMakePair(1, 4));
    // The rows below have no bytes.
    drag(grid.view, pointOf(grid, 190, fromCharacter), pointOf(grid, 206, toCharacter));
    QCOMPARE(selected(grid.view), bytes(190, 10));
}

void TestGridMouse::drag_backToItsBeginningSelectsTheRow() {
    ShownGrid grid(QByteArray(200, 'A'));
    QWidget *viewport = grid.view.viewport();
    QTest::mousePress(viewport, Qt::LeftButton, Qt::NoModifier, pointOf(grid, 19, false));
    moveMouse(grid.view, pointOf(grid, 40, false), Qt::LeftButton);
    QVERIFY(grid.view.selection().hasBlock());
    moveMouse(grid.view, pointOf(grid, 19, false), Qt::LeftButton);
    QVERIFY(!grid.view.selection().hasBlock());
    QVERIFY(grid.view.selectionModel()->isRowSelected(1));
    QTest::mouseRelease(viewport, Qt::LeftButton, Qt::NoModifier, pointOf(grid, 19, false));
    moveMouse(grid.view, pointOf(grid, 40, false), Qt::NoButton);
    QVERIFY(!grid.view.selection().hasBlock());
}

void TestGridMouse::drag_opensNoEditor() {
    ShownGrid grid(QByteArray(200, 'A'), true);
    drag(grid.view, pointOf(grid, 19, false), pointOf(grid, 60, false));
    QVERIFY(!grid.view.entries().editor());
    QVERIFY(grid.view.selection().hasBlock());
}

void TestGridMouse::drag_overCharactersMovesNothingSideways() {
    ShownGrid grid(QByteArray(200, 'A'));
    grid.view.resize(grid.view.width() / 2, grid.view.height());
    QScrollBar *sideways = grid.view.horizontalScrollBar();
    sideways->setValue(sideways->maximum());
    QVERIFY(sideways->value() > 0);
    drag(grid.view, pointOf(grid, 16, true), pointOf(grid, 20, true));
    QCOMPARE(selected(grid.view), bytes(16, 5));
    QCOMPARE(sideways->value(), sideways->maximum());
}

void TestGridMouse::drag_beyondTheEdgeScrolls_data() {
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("beyond");
    QTest::newRow("below") << 0x105 << 30;
    QTest::newRow("above") << 0x205 << -30;
}

void TestGridMouse::drag_beyondTheEdgeScrolls() {
    QFETCH(int, from);
    QFETCH(int, beyond);
    ShownGrid grid(QByteArray(0x300, 'A'));
    grid.view.showAddress(from);
    const QPoint start = pointOf(grid, from, false);
    const QPoint end(start.x(), beyond > 0 ? grid.view.viewport()->height() + beyond : beyond);
    pressInWindow(grid.view, start);
    moveMouse(grid.view, end, Qt::LeftButton);
    // Until the bytes end; the button is down and the mouse at rest.
    if (beyond > 0)
        QTRY_COMPARE(selected(grid.view), bytes(from, 0x300 - from));
    else
        QTRY_COMPARE(selected(grid.view), bytes(5, from - 4));
    releaseInWindow(grid.view, start);
}

void TestGridMouse::drag_whoseReleaseIsLostStopsScrolling() {
    ShownGrid grid(QByteArray(1 << 20, 'A'));
    const QPoint start = pointOf(grid, 19, false);
    pressInWindow(grid.view, start);
    moveMouse(grid.view, {start.x(), grid.view.viewport()->height() + 1}, Qt::LeftButton);
    QSignalSpy scrolled(grid.view.verticalScrollBar(), &QScrollBar::valueChanged);
    QVERIFY(scrolled.wait());
    Swallower swallower;
    grid.view.viewport()->installEventFilter(&swallower);
    releaseInWindow(grid.view, start);
    QVERIFY(swallower.swallowed);
    // Many times as long as it takes to scroll on.
    scrolled.clear();
    QVERIFY(!scrolled.wait(400));
    moveMouse(grid.view, pointOf(grid, 40, false), Qt::NoButton);
    const auto before = selected(grid.view);
    moveMouse(grid.view, pointOf(grid, 60, false), Qt::NoButton);
    QCOMPARE(selected(grid.view), before);
}

void TestGridMouse::drag_fromAnAddressSelectsRows() {
    ShownGrid grid(QByteArray(200, 'A'));
    drag(grid.view, grid.view.visualRect(grid.cell(2, 0)).center(),
         grid.view.visualRect(grid.cell(5, 0)).center());
    QCOMPARE(grid.view.selection().rowCount(), 4);
    QVERIFY(!grid.view.selection().hasBlock());
}

void TestGridMouse::drag_ofADoubleClickSelectsNothing() {
    ShownGrid grid(QByteArray(200, 'A'), true);
    grid.doubleClick(1, 4);
    QVERIFY(grid.view.entries().editor());
    moveMouse(grid.view, pointOf(grid, 60, false), Qt::LeftButton);
    QVERIFY(grid.view.entries().editor());
    QVERIFY(!grid.view.selection().hasBlock());
}

void TestGridMouse::shiftedClick_extendsFromTheCursor() {
    ShownGrid grid(QByteArray(200, 'A'));
    grid.click(1, 4);
    grid.click(3, 13, Qt::ShiftModifier);
    QCOMPARE(selected(grid.view), bytes(19, 42));
    grid.click(1, 2, Qt::ShiftModifier);
    QCOMPARE(selected(grid.view), bytes(17, 3));
    grid.press(Qt::Key_Left, Qt::ShiftModifier);
    QCOMPARE(selected(grid.view), bytes(16, 4));
}

void TestGridMouse::shiftedClick_extendsFromTheCharacterClicked() {
    ShownGrid grid(QByteArray(200, 'A'));
    QTest::mouseClick(grid.view.viewport(), Qt::LeftButton, {}, pointOf(grid, 19, true));
    QCOMPARE(grid.cursor(), qMakePair(1, charactersColumn));
    QCOMPARE(grid.view.selection().rowCount(), 1);
    QTest::mouseClick(grid.view.viewport(), Qt::LeftButton, Qt::ShiftModifier,
                      pointOf(grid, 22, true));
    QCOMPARE(selected(grid.view), bytes(19, 4));
}

void TestGridMouse::clickOnACharacter_selectsItsByte() {
    ShownGrid grid(QByteArray(40, 'A'));
    const auto click = [&](int byte) {
        QTest::mouseClick(grid.view.viewport(), Qt::LeftButton, {}, pointOf(grid, byte, true));
    };
    click(19);
    QCOMPARE(selected(grid.view), bytes(19, 1));
    click(22); // in the cell where the cursor is already
    QCOMPARE(selected(grid.view), bytes(22, 1));
    grid.view.reloadData();
    QCOMPARE(selected(grid.view), bytes(22, 1));
    click(41);
    QCOMPARE(selected(grid.view), bytes(0, 0));
    click(35);
    grid.press(Qt::Key_Left);
    grid.press(Qt::Key_Right);
    QCOMPARE(grid.cursor(), qMakePair(2, charactersColumn));
    // No character is meant: the cell stands for all of them.
    QCOMPARE(selected(grid.view), bytes(32, 8));
}

void TestGridMouse::plainClick_endsTheBlock() {
    ShownGrid grid(QByteArray(200, 'A'));
    grid.view.selection().select({19, 30});
    grid.click(1, 4); // where the cursor is already
    QVERIFY(!grid.view.selection().hasBlock());
    QCOMPARE(grid.view.selection().rowCount(), 1);
}

void TestGridMouse::rightClick_keepsTheBlockUnderIt() {
    ShownGrid grid(QByteArray(200, 'A'));
    grid.view.selection().select({19, 30});
    QTest::mouseClick(grid.view.viewport(), Qt::RightButton, {}, pointOf(grid, 25, false));
    QCOMPARE(selected(grid.view), bytes(19, 30));
    QTest::mouseClick(grid.view.viewport(), Qt::RightButton, {}, pointOf(grid, 60, false));
    QVERIFY(!grid.view.selection().hasBlock());
    QCOMPARE(grid.cursor(), qMakePair(3, 13));
}

QTEST_MAIN(TestGridMouse)
#include "tst_gridmouse.moc"

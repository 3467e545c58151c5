// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/EditingSteps.h"

#include "base/Units.h"
#include "imageviews/ImageMap.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QScrollBar>
#include <QToolTip>

/// The strip beside the grid that shows the whole image.
class TestWindowMap : public QObject {
    Q_OBJECT

private slots:
    void noBytes_haveNoMap();
    void room_isKeptOnTheTabsOfBytes();
    void parts_areToldApart();
    void click_goesThere();
    void clickOnASmallImage_goesThere();
    void drag_goesThere();
    void otherButtons_doNothing();
    void wheel_scrollsTheGrid();
    void keys_leadThroughTheImage();
    void frame_followsTheGrid();
    void scrolling_drawsTheFrameAlone();
    void edit_changesItsPart();
    void undo_changesItsPartBack();
    void growth_isFollowed();
    void otherTab_showsItsImage();
    void composition_isFollowed();
    void largeImage_isCountedInTurns();
    void editOfALargeImage_countsItsBlockAlone();
    void differingBlocks_areTold();
    void mirroredWindow_readsTheSame();
    void tab_reachesTheMap();
    void assistiveTechnology_hasASlider();
    void assistiveTechnology_setsTheValue();
    void toolTip_saysWhatIsThere();
};

namespace {

ImageMap *map(WindowFixture &velm) {
    return velm.controls().imageMap;
}

QScrollBar *bar(WindowFixture &velm) {
    return velm.controls().tableview->verticalScrollBar();
}

/// The place in the map that shows \a part of the image, from 0 to 1.
QPoint placeOf(WindowFixture &velm, double part) {
    return {map(velm)->width() / 2, int(part * map(velm)->height())};
}

QString words(WindowFixture &velm, double part) {
    return map(velm)->wordsAt(placeOf(velm, part).y());
}

/// Starts on the tab of the data to burn with 64 KiB: a quarter each of 0xFF, of 0x00, of text
/// and of every value.
void showFourParts(WindowFixture &velm) {
    QByteArray image = QByteArray(16 * kibibyte, '\xFF') + QByteArray(16 * kibibyte, '\0') +
                       QByteArray(16 * kibibyte, 'x');
    for (int i = 0; i < 16 * kibibyte; ++i)
        image.append(char(i));
    velm.settings().setValue(settingsKeys::binary, velm.write(QStringLiteral("rom.bin"), image));
    velm.start();
    velm.controls().tabview->selectTabViewItem(burnTabIdentifier());
    QTRY_VERIFY(words(velm, 0.9).endsWith(u"code or data"));
}

void showMebibytes(WindowFixture &velm, int count) {
    velm.settings().setValue(settingsKeys::pad_to, QString::number(count * kibibyte));
    velm.settings().setValue(settingsKeys::pad, true);
    showTwentyBytes(velm);
}

qint64 firstInView(WindowFixture &velm) {
    return qint64(bar(velm)->value()) * bytesInRow;
}

bool isInView(WindowFixture &velm, qint64 offset) {
    const qint64 page = qint64(bar(velm)->pageStep()) * bytesInRow;
    return firstInView(velm) <= offset && offset < firstInView(velm) + page;
}

/// Keeps the areas that a widget has drawn.
class DrawnAreas final : public QObject {
public:
    explicit DrawnAreas(QWidget *widget) { widget->installEventFilter(this); }
    bool eventFilter(QObject *, QEvent *event) override {
        if (event->type() == QEvent::Paint)
            areas.append(static_cast<QPaintEvent *>(event)->rect());
        return false;
    }
    QList<QRect> areas;
};

QAccessibleInterface *accessible(WindowFixture &velm) {
    return QAccessible::queryAccessibleInterface(map(velm));
}

} // namespace

void TestWindowMap::noBytes_haveNoMap() {
    WindowFixture velm;
    velm.start();
    velm.settle();
    QVERIFY(!map(velm)->isVisible());
    QCOMPARE(map(velm)->wordsAt(10), QString());
    QCOMPARE(map(velm)->valueWords(), QString());
}

void TestWindowMap::room_isKeptOnTheTabsOfBytes() {
    WindowFixture velm;
    showTwentyBytes(velm);
    QTRY_VERIFY(map(velm)->isVisible());
    const int width = velm.controls().tableview->width();
    velm.controls().tabview->selectTabViewItem(readTabIdentifier());
    QTRY_VERIFY(!map(velm)->isVisible());
    QCoreApplication::processEvents();
    QCOMPARE(velm.controls().tableview->width(), width);
    velm.controls().tabview->selectTabViewItem(logicTabIdentifier());
    QTRY_VERIFY(velm.controls().tableview->width() > width);
    QVERIFY(!map(velm)->isVisible());
}

void TestWindowMap::parts_areToldApart() {
    WindowFixture velm;
    showFourParts(velm);
    QTRY_VERIFY2(words(velm, 0.1).endsWith(u": blank"), qPrintable(words(velm, 0.1)));
    QVERIFY2(words(velm, 0.4).endsWith(u": zeros"), qPrintable(words(velm, 0.4)));
    QVERIFY2(words(velm, 0.6).endsWith(u": text"), qPrintable(words(velm, 0.6)));
    QVERIFY(words(velm, 0).startsWith(u"0x0000 to "));
    QVERIFY(words(velm, 1).contains(u" to 0xFFFF: "));
}

void TestWindowMap::click_goesThere() {
    WindowFixture velm;
    showFourParts(velm);
    QTest::mouseClick(map(velm), Qt::LeftButton, {}, placeOf(velm, 0.5));
    QVERIFY2(isInView(velm, 32 * kibibyte), qPrintable(map(velm)->valueWords()));
    const QModelIndex cursor = velm.controls().tableview->currentIndex();
    QVERIFY(isInView(velm, qint64(byteIndex(cursor.row(), cursor.column()))));
    QTest::mouseClick(map(velm), Qt::LeftButton, {}, placeOf(velm, 0));
    QCOMPARE(firstInView(velm), 0);
    QTest::mouseClick(map(velm), Qt::LeftButton, {}, QPoint(1, map(velm)->height() - 1));
    QVERIFY(isInView(velm, 64 * kibibyte - 1));
}

void TestWindowMap::clickOnASmallImage_goesThere() {
    WindowFixture velm;
    showTwentyBytes(velm);
    QTRY_VERIFY(map(velm)->isVisible());
    GridView *grid = velm.controls().tableview;
    QTest::mouseClick(map(velm), Qt::LeftButton, {}, placeOf(velm, 0.95));
    QCOMPARE(grid->currentIndex(), grid->model()->index(1, firstByteColumn));
    QTest::mouseClick(map(velm), Qt::LeftButton, {}, placeOf(velm, 0.5));
    QCOMPARE(grid->currentIndex(), grid->model()->index(0, firstByteColumn));
}

void TestWindowMap::drag_goesThere() {
    WindowFixture velm;
    showFourParts(velm);
    QTest::mousePress(map(velm), Qt::LeftButton, {}, placeOf(velm, 0.2));
    const auto dragTo = [&](QPoint place) {
        QMouseEvent move(QEvent::MouseMove, place, map(velm)->mapToGlobal(place), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(map(velm), &move);
    };
    dragTo(placeOf(velm, 0.75));
    QVERIFY2(qAbs(firstInView(velm) - 48 * kibibyte) < kibibyte,
             qPrintable(map(velm)->valueWords()));
    dragTo(QPoint(0, -500));
    QCOMPARE(firstInView(velm), 0);
    dragTo(QPoint(0, 5000));
    QVERIFY(isInView(velm, 64 * kibibyte - 1));
    QTest::mouseRelease(map(velm), Qt::LeftButton);
    QTest::mouseMove(map(velm), placeOf(velm, 0.1));
    QVERIFY(isInView(velm, 64 * kibibyte - 1));
}

void TestWindowMap::otherButtons_doNothing() {
    WindowFixture velm;
    showFourParts(velm);
    QTest::mouseClick(map(velm), Qt::RightButton, {}, placeOf(velm, 0.5));
    QCOMPARE(firstInView(velm), 0);
}

void TestWindowMap::wheel_scrollsTheGrid() {
    WindowFixture velm;
    showFourParts(velm);
    const QPoint place = placeOf(velm, 0.5);
    constexpr QPoint notchDown(0, -120);
    QWheelEvent turn(place, map(velm)->mapToGlobal(place), {}, notchDown, {}, {}, {}, false);
    QCoreApplication::sendEvent(map(velm), &turn);
    QVERIFY(firstInView(velm) > 0);
    QVERIFY(firstInView(velm) < kibibyte);
}

void TestWindowMap::keys_leadThroughTheImage() {
    WindowFixture velm;
    showFourParts(velm);
    const int page = bar(velm)->pageStep() * bytesInRow;
    const auto press = [&](Qt::Key key) {
        QTest::keyClick(map(velm), key);
        QCOMPARE(qint64(map(velm)->value()), firstInView(velm));
    };
    press(Qt::Key_Down);
    QCOMPARE(firstInView(velm), page);
    QCOMPARE(velm.controls().tableview->currentIndex().row(), page / bytesInRow);
    press(Qt::Key_Up);
    QCOMPARE(firstInView(velm), 0);
    press(Qt::Key_PageDown);
    QCOMPARE(firstInView(velm), 4 * kibibyte);
    press(Qt::Key_PageUp);
    QCOMPARE(firstInView(velm), 0);
    press(Qt::Key_End);
    QVERIFY(isInView(velm, 64 * kibibyte - 1));
    QCOMPARE(bar(velm)->value(), bar(velm)->maximum());
    press(Qt::Key_Home);
    QCOMPARE(firstInView(velm), 0);
}

void TestWindowMap::frame_followsTheGrid() {
    WindowFixture velm;
    showFourParts(velm);
    const QRect atTop = map(velm)->viewFrame();
    QVERIFY(map(velm)->rect().contains(atTop));
    bar(velm)->setValue(bar(velm)->maximum() / 2);
    const QRect inMiddle = map(velm)->viewFrame();
    QVERIFY(qAbs(inMiddle.center().y() - map(velm)->rect().center().y()) <= 2);
    QVERIFY(velm.controls().tableview->showAddress(64 * kibibyte - 1));
    const QRect atEnd = map(velm)->viewFrame();
    QVERIFY(map(velm)->rect().contains(atEnd));
    QVERIFY(atEnd.bottom() >= map(velm)->rect().bottom() - 1);
    QTest::keyClick(velm.controls().tableview, Qt::Key_Home, Qt::ControlModifier);
    QCOMPARE(map(velm)->viewFrame(), atTop);
}

// A page key must not wait for a map of many parts.
void TestWindowMap::scrolling_drawsTheFrameAlone() {
    WindowFixture velm;
    showFourParts(velm);
    QTRY_VERIFY(map(velm)->isVisible());
    velm.settle();
    DrawnAreas drawn(map(velm));
    const QRect before = map(velm)->viewFrame();
    bar(velm)->setValue(bar(velm)->maximum() / 20);
    const QRect after = map(velm)->viewFrame();
    QVERIFY(after.top() > before.top());
    QTRY_VERIFY(!drawn.areas.isEmpty());
    QCOMPARE(drawn.areas, QList<QRect>({before | after}));
}

void TestWindowMap::edit_changesItsPart() {
    WindowFixture velm;
    showFourParts(velm);
    QTRY_VERIFY(words(velm, 0).endsWith(u": blank"));
    enter(velm, 0, 1, QStringLiteral("41"));
    QTRY_VERIFY(words(velm, 0).endsWith(u": code or data"));
    QVERIFY(words(velm, 0.1).endsWith(u": blank"));
}

void TestWindowMap::undo_changesItsPartBack() {
    WindowFixture velm;
    showFourParts(velm);
    enter(velm, 0, 1, QStringLiteral("41"));
    QTRY_VERIFY(words(velm, 0).endsWith(u": code or data"));
    velm.delegate().edits().undo();
    QTRY_VERIFY(words(velm, 0).endsWith(u": blank"));
    velm.delegate().edits().redo();
    QTRY_VERIFY(words(velm, 0).endsWith(u": code or data"));
}

void TestWindowMap::growth_isFollowed() {
    WindowFixture velm;
    showTwentyBytes(velm);
    QTRY_COMPARE(words(velm, 1), QStringLiteral("0x0010 to 0x0013: text"));
    enter(velm, 1, 4, QStringLiteral("'a text that makes it longer by a row"));
    QCOMPARE(velm.state().output_data->size(), 0x37);
    QTRY_COMPARE(words(velm, 1), QStringLiteral("0x0030 to 0x0036: text"));
    velm.delegate().edits().undo();
    QTRY_COMPARE(words(velm, 1), QStringLiteral("0x0010 to 0x0013: text"));
}

void TestWindowMap::otherTab_showsItsImage() {
    WindowFixture velm;
    showFourParts(velm);
    velm.useTool("printf '\\000\\000\\000' > \"$4\"\necho 'Reading Code...  0.01Sec  OK' >&2\n");
    velm.click(velm.controls().btn_read);
    velm.controls().tabview->selectTabViewItem(readTabIdentifier());
    QTRY_COMPARE(words(velm, 0.5), QStringLiteral("0x0000 to 0x0002: zeros, differs"));
    velm.controls().tabview->selectTabViewItem(burnTabIdentifier());
    QTRY_VERIFY(words(velm, 0.9).endsWith(u"code or data"));
}

void TestWindowMap::composition_isFollowed() {
    WindowFixture velm;
    showTwentyBytes(velm);
    QTRY_COMPARE(words(velm, 0.5), QStringLiteral("0x0000 to 0x000F: text"));
    velm.delegate().openBinary(velm.write(QStringLiteral("other.bin"), QByteArray(8, '\0')));
    QTRY_COMPARE(words(velm, 0.5), QStringLiteral("0x0000 to 0x0007: zeros"));
}

void TestWindowMap::largeImage_isCountedInTurns() {
    WindowFixture velm;
    showMebibytes(velm, 20);
    QCOMPARE(velm.state().output_data->size(), 20 * kibibyte * kibibyte);
    QVERIFY(!words(velm, 1).endsWith(u"blank"));
    QTRY_VERIFY(words(velm, 0.1).endsWith(u": blank"));
    QTRY_VERIFY(words(velm, 1).endsWith(u": blank"));
}

// What nobody said has changed is not looked at.
void TestWindowMap::editOfALargeImage_countsItsBlockAlone() {
    WindowFixture velm;
    showMebibytes(velm, 20);
    QTRY_VERIFY(words(velm, 1).endsWith(u": blank"));
    QTRY_VERIFY(words(velm, 0).endsWith(u": code or data"));
    enter(velm, 0, 1, QStringLiteral("41"));
    velm.state().output_data->back() = 'x';
    enter(velm, 65536 * 10, 1, QStringLiteral("41"));
    QTRY_VERIFY(words(velm, 0.5).endsWith(u": code or data"));
    velm.settle();
    QVERIFY(words(velm, 1).endsWith(u": blank"));
}

void TestWindowMap::differingBlocks_areTold() {
    WindowFixture velm;
    showFourParts(velm);
    map(velm)->setDiffering({32 * kibibyte, {true, false}});
    QVERIFY(words(velm, 0.4).endsWith(u": zeros, differs"));
    QVERIFY(words(velm, 0.6).endsWith(u": text"));
    QVERIFY(map(velm)->valueWords().endsWith(u", blank, differs"));
    map(velm)->setDiffering({});
    QVERIFY(words(velm, 0.4).endsWith(u": zeros"));
}

void TestWindowMap::mirroredWindow_readsTheSame() {
    WindowFixture velm;
    showFourParts(velm);
    velm.velm().window().setLayoutDirection(Qt::RightToLeft);
    QTRY_VERIFY(map(velm)->x() < velm.controls().tableview->x());
    QTest::mouseClick(map(velm), Qt::LeftButton, {}, placeOf(velm, 0.5));
    QVERIFY(isInView(velm, 32 * kibibyte));
    const qint64 before = firstInView(velm);
    QTest::keyClick(map(velm), Qt::Key_Down);
    QVERIFY(firstInView(velm) > before);
}

void TestWindowMap::tab_reachesTheMap() {
    WindowFixture velm;
    showFourParts(velm);
    velm.velm().window().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&velm.velm().window()));
    velm.controls().tableview->setFocus();
    const QImage without = map(velm)->grab().toImage();
    QTest::keyClick(velm.controls().tableview, Qt::Key_Tab);
    QVERIFY(map(velm)->hasFocus());
    QVERIFY(map(velm)->grab().toImage() != without);
    QTest::keyClick(map(velm), Qt::Key_Backtab);
    QVERIFY(velm.controls().tableview->hasFocus());
}

void TestWindowMap::assistiveTechnology_hasASlider() {
    WindowFixture velm;
    showFourParts(velm);
    QAccessibleInterface *slider = accessible(velm);
    QCOMPARE(slider->role(), QAccessible::Slider);
    QCOMPARE(slider->text(QAccessible::Name), QStringLiteral("Map"));
    QVERIFY(slider->state().focusable);
    QCOMPARE(slider->text(QAccessible::Value), QStringLiteral("0x0000 of 0x10000, blank"));
    velm.controls().tableview->verticalScrollBar()->setValue(0x8000 / bytesInRow);
    QCOMPARE(slider->text(QAccessible::Value), QStringLiteral("0x8000 of 0x10000, text"));
    QCOMPARE(slider->text(QAccessible::Description), slider->text(QAccessible::Value));
    QVERIFY(slider->valueInterface());
    QCOMPARE(slider->valueInterface()->currentValue().toInt(), 0x8000);
    QCOMPARE(slider->valueInterface()->minimumValue().toInt(), 0);
    QCOMPARE(slider->valueInterface()->maximumValue().toInt(), bar(velm)->maximum() * bytesInRow);
}

void TestWindowMap::assistiveTechnology_setsTheValue() {
    WindowFixture velm;
    showFourParts(velm);
    QAccessibleValueInterface *value = accessible(velm)->valueInterface();
    value->setCurrentValue(0x4008);
    QCOMPARE(firstInView(velm), 0x4000);
    QCOMPARE(value->currentValue().toInt(), 0x4000);
    QCOMPARE(velm.controls().tableview->currentIndex().row(), 0x400);
    value->setCurrentValue(0x7fffffff);
    QCOMPARE(bar(velm)->value(), bar(velm)->maximum());
}

void TestWindowMap::toolTip_saysWhatIsThere() {
    WindowFixture velm;
    showFourParts(velm);
    const QPoint place = placeOf(velm, 0.4);
    QHelpEvent asked(QEvent::ToolTip, place, map(velm)->mapToGlobal(place));
    QCoreApplication::sendEvent(map(velm), &asked);
    QCOMPARE(QToolTip::text(), words(velm, 0.4));
    QToolTip::hideText();
}

QTEST_MAIN(TestWindowMap)
#include "tst_window_map.moc"

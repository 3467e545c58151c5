// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/ResultsColumn.h"

#include "settings/SettingsKeys.h"

#include <QFile>
#include <QImage>

/// The chip that is drawn beside the table of a logic test.
class TestWindowPins : public QObject {
    Q_OBJECT

private slots:
    void init() { qunsetenv("MINIPRO_SIM_FAULT"); }
    void failedPins_areNamedAndMarked();
    void goodChip_hasNoFailedPin();
    void chosenVector_isShown();
    void largestChip_isShownWhole();
    void anotherTab_hidesIt();
    void otherReports_areNotDrawn_data();
    void otherReports_areNotDrawn();
    void keyboard_reachesItBehindTheTable();
    void smallestWindow_hasRoomForIt();
    void picture_isSaved();
    void text_isSaved();
    void cancelledPanel_savesNothing();
};

namespace {

void test(WindowFixture &velm, const QString &device) {
    velm.settings().setValue(settingsKeys::device, device);
    velm.click(velm.controls().btn_logic);
    velm.settle();
}

/// A 7400 whose first output is stuck.
void testBad7400(WindowFixture &velm) {
    qputenv("MINIPRO_SIM_FAULT", "bad-logic-pins");
    test(velm, QStringLiteral("7400"));
}

void choose(WindowFixture &velm, int row) {
    GridView *grid = velm.controls().tableview;
    grid->moveTo(grid->model()->index(row, 0));
}

const QString worstOfBad7400 = QStringLiteral("1 2 3- 4 5 6+ 7G 8+ 9 10 11+ 12 13 14V");

} // namespace

void TestWindowPins::failedPins_areNamedAndMarked() {
    WindowFixture velm;
    velm.start();
    const ResultsColumn column(velm);
    QVERIFY(!column.pins->isVisible());
    testBad7400(velm);
    QVERIFY(column.pins->isVisible());
    QVERIFY(column.text->isVisible());
    QCOMPARE(column.picture(), worstOfBad7400);
    QCOMPARE(column.description(),
             QStringLiteral("7400, all vectors. Pin 3, vector 3: low expected."));
    const QString text = column.text->toPlainText();
    QVERIFY2(text.startsWith(u"Pin 3, vector 3: low expected\n"), qPrintable(text));
    QVERIFY2(text.contains(u"\nG: ground\n"), qPrintable(text));
}

void TestWindowPins::goodChip_hasNoFailedPin() {
    WindowFixture velm;
    velm.start();
    const ResultsColumn column(velm);
    testBad7400(velm);
    qunsetenv("MINIPRO_SIM_FAULT");
    test(velm, QStringLiteral("7400"));
    QCOMPARE(column.picture(), QStringLiteral("1 2 3+ 4 5 6+ 7G 8+ 9 10 11+ 12 13 14V"));
    QCOMPARE(column.description(), QStringLiteral("7400, all vectors. No pin failed."));
    QVERIFY(column.text->toPlainText().startsWith(u"No pin failed\n"));
}

void TestWindowPins::chosenVector_isShown() {
    WindowFixture velm;
    velm.start();
    const ResultsColumn column(velm);
    testBad7400(velm);
    choose(velm, 4);
    QCOMPARE(column.picture(),
             QStringLiteral("11 21 3L- 41 51 6L+ 7G 8L+ 91 101 11L+ 121 131 14V"));
    QCOMPARE(column.description(),
             QStringLiteral("7400, vector 3. Pin 3, vector 3: low expected."));
    choose(velm, 1);
    QCOMPARE(column.picture(),
             QStringLiteral("10 20 3H+ 40 50 6H+ 7G 8H+ 90 100 11H+ 120 130 14V"));
    QCOMPARE(column.description(), QStringLiteral("7400, vector 0. No pin failed."));
    QVERIFY(column.text->toPlainText().startsWith(u"Pin 3, vector 3"));
    choose(velm, 0);
    QCOMPARE(column.picture(), worstOfBad7400);
    choose(velm, 2);
    velm.controls().tableview->clearSelection();
    QCOMPARE(column.picture(), worstOfBad7400);
    velm.controls().tableview->selectAll();
    QCOMPARE(column.picture(), worstOfBad7400);
}

void TestWindowPins::largestChip_isShownWhole() {
    WindowFixture velm;
    velm.start();
    const ResultsColumn column(velm);
    test(velm, QStringLiteral("6821"));
    QVERIFY(column.pins->isVisible());
    QCOMPARE(column.pins->picture().pins.size(), 40);
    QVERIFY(column.pins->height() >= 20 * column.pins->fontMetrics().height());
}

void TestWindowPins::anotherTab_hidesIt() {
    WindowFixture velm;
    velm.start();
    const ResultsColumn column(velm);
    testBad7400(velm);
    velm.controls().tabview->selectTabViewItem(burnTabIdentifier());
    QVERIFY(!column.pins->isVisible());
    choose(velm, 0);
    QVERIFY(!column.pins->isVisible());
    // Leaving the results throws them away.
    velm.controls().tabview->selectTabViewItem(logicTabIdentifier());
    QVERIFY(!column.pins->isVisible());
    testBad7400(velm);
    QVERIFY(column.pins->isVisible());
}

void TestWindowPins::otherReports_areNotDrawn_data() {
    QTest::addColumn<QByteArray>("report");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("no package") << QByteArray("      1 2 3\n0000: 0 H L-\n");
    QTest::newRow("no vector") << QByteArray("      1 2 3 4 5 6 7 8\n");
    QTest::newRow("too many pins")
        << QByteArray("      ") + QByteArray("1 ").repeated(5000) + "\n0000: 0 H L-\n";
}

void TestWindowPins::otherReports_areNotDrawn() {
    QFETCH(QByteArray, report);
    WindowFixture velm;
    velm.start();
    const ResultsColumn column(velm);
    testBad7400(velm);
    velm.useTool("cat '" + QFile::encodeName(velm.write(QStringLiteral("report"), report)) + "'\n");
    velm.click(velm.controls().btn_logic);
    velm.settle();
    QVERIFY(!column.pins->isVisible());
    QVERIFY(!column.text->isVisible());
}

void TestWindowPins::keyboard_reachesItBehindTheTable() {
    WindowFixture velm;
    velm.start();
    const ResultsColumn column(velm);
    testBad7400(velm);
    velm.controls().tableview->setFocus();
    QTest::keyClick(velm.controls().tableview, Qt::Key_Tab);
    QVERIFY(column.pins->hasFocus());
    QTest::keyClick(column.pins, Qt::Key_Tab);
    QVERIFY(column.text->hasFocus());
    QTest::keyClick(column.text, Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(column.text->textCursor().selectedText().size(), column.text->toPlainText().size());
    QTest::keyClick(column.text, Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget()->accessibleName(), QStringLiteral("Run 10 times"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget()->accessibleName(), QStringLiteral("How many times"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QVERIFY(velm.controls().textView->hasFocus());
}

void TestWindowPins::smallestWindow_hasRoomForIt() {
    WindowFixture velm;
    velm.start();
    const ResultsColumn column(velm);
    MainWindow &window = velm.velm().window();
    window.resize(1024, 700);
    testBad7400(velm);
    QCOMPARE(window.size(), QSize(1024, 700));
    const QWidget *area = column.pins->parentWidget();
    QVERIFY(area->rect().contains(column.pins->geometry()));
    const QRect whole(QPoint(), window.size());
    QVERIFY(whole.contains(QRect(column.text->mapTo(&window, QPoint()), column.text->size())));
    QVERIFY(column.text->height() > 3 * column.text->fontMetrics().height());
}

void TestWindowPins::picture_isSaved() {
    WindowFixture velm;
    velm.start();
    const ResultsColumn column(velm);
    testBad7400(velm);
    velm.panels.answer = velm.path(QStringLiteral("chip.png"));
    velm.settings().setValue(settingsKeys::device, QStringLiteral("not what was tested"));
    column.choose(QStringLiteral("Save as picture…"));
    const FilePanelRequest request = velm.panels.requests.last();
    QCOMPARE(request.kind, FilePanelRequest::Kind::Save);
    QCOMPARE(request.suggestedName, QStringLiteral("7400.png"));
    QCOMPARE(request.extensions, QStringList(QStringLiteral("png")));
    QCOMPARE(velm.panels.lastParent, &velm.velm().window());
    QCOMPARE(QImage(velm.panels.answer, "PNG"), QImage::fromData(column.pins->png()));
    QVERIFY2(velm.message().contains(velm.panels.answer), qPrintable(velm.message()));
}

void TestWindowPins::text_isSaved() {
    WindowFixture velm;
    velm.start();
    const ResultsColumn column(velm);
    testBad7400(velm);
    velm.panels.answer = velm.path(QStringLiteral("chip.txt"));
    column.choose(QStringLiteral("Save as text…"));
    QCOMPARE(velm.panels.requests.last().suggestedName, QStringLiteral("7400.txt"));
    const QString text = QString::fromUtf8(WindowFixture::bytesOf(velm.panels.answer));
    QVERIFY2(text.startsWith(u"7400\n      1  2  3"), qPrintable(text));
    QVERIFY2(text.contains(u"\n0003: 1  1  L- 1  1  L  G"), qPrintable(text));
    QVERIFY2(text.contains(u"\nPin 3, vector 3: low expected\n"), qPrintable(text));
    QVERIFY2(text.endsWith(u"\nV: supply\n"), qPrintable(text));
}

void TestWindowPins::cancelledPanel_savesNothing() {
    WindowFixture velm;
    velm.start();
    const ResultsColumn column(velm);
    testBad7400(velm);
    const QString before = velm.message();
    column.choose(QStringLiteral("Save as picture…"));
    column.choose(QStringLiteral("Save as text…"));
    QCOMPARE(velm.panels.requests.size(), 2);
    QCOMPARE(velm.message(), before);
}

QTEST_MAIN(TestWindowPins)
#include "tst_window_pins.moc"

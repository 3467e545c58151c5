// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "grid/GridRows.h"

#include <QTest>

#include <limits>

class TestGridRows : public QObject {
    Q_OBJECT

private slots:
    void rows_areWhereTheyAreDrawn();
    void rows_farAwayAreAsFarAsAnIntTells();
    void page_isMadeOfWholeRows();
    void area_isWhatCanBeSeen();
    void scrolling_showsTheRow_data();
    void scrolling_showsTheRow();
};

namespace {

constexpr int lastRow = 1 << 26; // of the largest image

/// Row 100 at the upper edge, and three rows and a half.
constexpr GridRows rows = {.top = 100, .rowHeight = 20, .viewHeight = 70};

} // namespace

void TestGridRows::rows_areWhereTheyAreDrawn() {
    for (const qint64 row : {0, 99, 100, 101, 103, 1000}) {
        QCOMPARE(rows.at(rows.edgeOf(row)), row);
        QCOMPARE(rows.at(rows.edgeOf(row) + 19), row);
    }
    QCOMPARE(rows.edgeOf(100), 0);
    QCOMPARE(rows.edgeOf(99), -20);
    QCOMPARE(rows.offset(), 2000);
}

void TestGridRows::rows_farAwayAreAsFarAsAnIntTells() {
    const GridRows atTheEnd = {.top = lastRow, .rowHeight = 40, .viewHeight = 400};
    const int screen = 10000;
    QVERIFY(atTheEnd.offset() > std::numeric_limits<int>::max() / 2);
    QVERIFY(atTheEnd.offset() < std::numeric_limits<int>::max() - screen);
    QCOMPARE(atTheEnd.edgeOf(0), -atTheEnd.offset());
    const GridRows atTheStart = {.top = 0, .rowHeight = 40, .viewHeight = 400};
    QCOMPARE(atTheStart.edgeOf(lastRow), atTheEnd.offset());
}

void TestGridRows::page_isMadeOfWholeRows() {
    QCOMPARE(rows.inPage(), 3);
    QCOMPARE((GridRows{.top = 0, .rowHeight = 20, .viewHeight = 60}.inPage()), 3);
    QCOMPARE((GridRows{.top = 0, .rowHeight = 20, .viewHeight = 5}.inPage()), 1);
}

void TestGridRows::area_isWhatCanBeSeen() {
    QCOMPARE(rows.areaOf(101, 102, 300), QRect(0, 20, 300, 40));
    QCOMPARE(rows.areaOf(0, 100, 300), QRect(0, 0, 300, 20));
    QCOMPARE(rows.areaOf(0, lastRow, 300), QRect(0, 0, 300, 80)); // the half row as a whole
    QVERIFY(rows.areaOf(0, 99, 300).isEmpty());
    QVERIFY(rows.areaOf(104, lastRow, 300).isEmpty());
}

void TestGridRows::scrolling_showsTheRow_data() {
    QTest::addColumn<int>("row");
    QTest::addColumn<QAbstractItemView::ScrollHint>("hint");
    QTest::addColumn<int>("top");
    QTest::newRow("visible") << 101 << QAbstractItemView::EnsureVisible << 100;
    QTest::newRow("above") << 50 << QAbstractItemView::EnsureVisible << 50;
    QTest::newRow("half visible") << 103 << QAbstractItemView::EnsureVisible << 101;
    QTest::newRow("below") << 150 << QAbstractItemView::EnsureVisible << 148;
    QTest::newRow("at the top") << 102 << QAbstractItemView::PositionAtTop << 102;
    QTest::newRow("at the bottom") << 102 << QAbstractItemView::PositionAtBottom << 100;
    QTest::newRow("in the middle") << 102 << QAbstractItemView::PositionAtCenter << 101;
    QTest::newRow("near the start") << 0 << QAbstractItemView::PositionAtCenter << -1;
}

void TestGridRows::scrolling_showsTheRow() {
    QFETCH(const int, row);
    QFETCH(const QAbstractItemView::ScrollHint, hint);
    QTEST(rows.topFor(row, hint), "top");
}

QTEST_APPLESS_MAIN(TestGridRows)
#include "tst_gridrows.moc"

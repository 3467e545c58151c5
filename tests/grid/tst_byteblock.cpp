// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "grid/ByteBlock.h"

#include <QTest>

class TestByteBlock : public QObject {
    Q_OBJECT

private slots:
    void bytes_areFromTheFirstToTheLast();
    void clipping_keepsWhatIsThere();
    void steps_data();
    void steps();
};

void TestByteBlock::bytes_areFromTheFirstToTheLast() {
    QCOMPARE(ByteBlock({5, 9}).bytes().offset, 5);
    QCOMPARE(ByteBlock({5, 9}).bytes().end(), 10);
    QCOMPARE(ByteBlock({9, 5}).bytes().offset, 5);
    QCOMPARE(ByteBlock({9, 5}).bytes().end(), 10);
    QCOMPARE(ByteBlock({7, 7}).bytes().length, 1);
    QVERIFY(ByteBlock({7, 7}).isOneByte());
}

void TestByteBlock::clipping_keepsWhatIsThere() {
    QCOMPARE(clipped({5, 9}, 10), ByteBlock({5, 9}));
    QCOMPARE(clipped({5, 9}, 9), ByteBlock({5, 8}));
    QCOMPARE(clipped({9, 5}, 7), ByteBlock({6, 5}));
    QCOMPARE(clipped({9, 5}, 6), ByteBlock({5, 5}));
    QCOMPARE(clipped({9, 5}, 5), std::nullopt);
    QCOMPARE(clipped({0, 0}, 0), std::nullopt);
}

// Among 100 bytes, 4 rows of 16 in a page.
void TestByteBlock::steps_data() {
    QTest::addColumn<GridStep>("step");
    QTest::addColumn<qint64>("from");
    QTest::addColumn<qint64>("to");
    const auto row = [](const char *name, GridStep step, qint64 from, qint64 to) {
        QTest::newRow(name) << step << from << to;
    };
    row("back", GridStep::Back, 16, 15);
    row("back from the first", GridStep::Back, 0, 0);
    row("on", GridStep::On, 15, 16);
    row("on from the last", GridStep::On, 99, 99);
    row("a row up", GridStep::RowUp, 37, 21);
    row("a row up from the first one", GridStep::RowUp, 5, 0);
    row("a row down", GridStep::RowDown, 37, 53);
    row("a row down to one that is not full", GridStep::RowDown, 90, 99);
    row("a page up", GridStep::PageUp, 90, 26);
    row("a page down", GridStep::PageDown, 3, 67);
    row("a page down beyond the last", GridStep::PageDown, 67, 99);
    row("start of the row", GridStep::RowStart, 37, 32);
    row("end of the row", GridStep::RowEnd, 37, 47);
    row("end of the last row", GridStep::RowEnd, 96, 99);
    row("first", GridStep::First, 37, 0);
    row("last", GridStep::Last, 37, 99);
}

void TestByteBlock::steps() {
    QFETCH(GridStep, step);
    QFETCH(qint64, from);
    QFETCH(qint64, to);
    QCOMPARE(byteAfter(step, from, 4, 100), to);
}

QTEST_APPLESS_MAIN(TestByteBlock)
#include "tst_byteblock.moc"

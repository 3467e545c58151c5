// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "grid/GridSteps.h"
#include "support/GridSourceDouble.h"

#include <QTest>

class TestGridSteps : public QObject {
    Q_OBJECT

private slots:
    void nearestCell_staysAmongTheCells();
    void cellOfByte_isWhereTheByteIsShown();
    void byteOfCell_leadsBack();
    void ends_ofARowAreItsBytes_data();
    void ends_ofARowAreItsBytes();
    void ends_ofAResultAreItsFields();
    void byteCells_followOneAnother();
};

namespace {

using Cell = QPair<int, int>;

Cell placeOf(const QModelIndex &index) {
    return {index.row(), index.column()};
}

/// A model of \a length bytes.
struct Bytes {
    explicit Bytes(int length) : source(QByteArray(length, 'A')) { model.reloadData(); }
    GridSourceDouble source;
    GridModel model{source, nullptr};
};

} // namespace

void TestGridSteps::nearestCell_staysAmongTheCells() {
    const Bytes bytes(20); // two rows
    QCOMPARE(placeOf(nearestCell(bytes.model, 1, 17)), Cell(1, 17));
    QCOMPARE(placeOf(nearestCell(bytes.model, -1, -1)), Cell(0, 0));
    QCOMPARE(placeOf(nearestCell(bytes.model, qint64(1) << 40, 18)), Cell(1, 17));
    GridSourceDouble source;
    const GridModel empty(source, nullptr);
    QVERIFY(!nearestCell(empty, 0, 0).isValid());
}

void TestGridSteps::cellOfByte_isWhereTheByteIsShown() {
    const Bytes bytes(20);
    QCOMPARE(placeOf(cellOfByte(bytes.model, 0)), Cell(0, 1));
    QCOMPARE(placeOf(cellOfByte(bytes.model, 15)), Cell(0, 16));
    QCOMPARE(placeOf(cellOfByte(bytes.model, 16)), Cell(1, 1));
    QCOMPARE(placeOf(cellOfByte(bytes.model, 31)), Cell(1, 16));
    QVERIFY(!cellOfByte(bytes.model, 32).isValid());
    QVERIFY(!cellOfByte(bytes.model, qint64(1) << 40).isValid());
    QVERIFY(!cellOfByte(bytes.model, -1).isValid());
}

void TestGridSteps::byteOfCell_leadsBack() {
    const Bytes bytes(20);
    for (const qint64 offset : {0, 1, 15, 16, 31})
        QCOMPARE(byteOfCell(cellOfByte(bytes.model, offset)), std::optional(offset));
    QVERIFY(!byteOfCell(bytes.model.index(1, addressColumn)));
    QVERIFY(!byteOfCell(bytes.model.index(0, charactersColumn)));
    QVERIFY(!byteOfCell(QModelIndex()));
}

void TestGridSteps::ends_ofARowAreItsBytes_data() {
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("endOfRow");
    QTest::addColumn<Cell>("last");
    QTest::newRow("no bytes") << 0 << 0 << 16 << Cell(0, 1);
    QTest::newRow("one byte") << 1 << 0 << 1 << Cell(0, 1);
    QTest::newRow("a full row") << 16 << 0 << 16 << Cell(0, 16);
    QTest::newRow("the row behind a full one") << 16 << 1 << 16 << Cell(0, 16);
    QTest::newRow("a row before the last") << 20 << 0 << 16 << Cell(1, 4);
    QTest::newRow("a last row") << 20 << 1 << 4 << Cell(1, 4);
}

void TestGridSteps::ends_ofARowAreItsBytes() {
    QFETCH(const int, length);
    QFETCH(const int, row);
    QFETCH(const int, endOfRow);
    const Bytes bytes(length);
    QCOMPARE(placeOf(firstCellOf(bytes.model, row)), Cell(row, 1));
    QCOMPARE(placeOf(lastCellOf(bytes.model, row)), Cell(row, endOfRow));
    QTEST(placeOf(lastCell(bytes.model)), "last");
}

void TestGridSteps::ends_ofAResultAreItsFields() {
    Bytes results(0);
    results.source.report = {{}, {}, {}};
    results.model.setHeading(GridHeading::Pins);
    results.model.reloadData();
    QCOMPARE(placeOf(firstCellOf(results.model, 1)), Cell(1, 0));
    QCOMPARE(placeOf(lastCellOf(results.model, 1)), Cell(1, 17));
    QCOMPARE(placeOf(lastCell(results.model)), Cell(2, 17));
}

void TestGridSteps::byteCells_followOneAnother() {
    const Bytes bytes(20);
    const auto after = [&](int row, int column) {
        return placeOf(nextByteCell(bytes.model.index(row, column)));
    };
    const auto before = [&](int row, int column) {
        return placeOf(previousByteCell(bytes.model.index(row, column)));
    };
    const Cell none(-1, -1);
    QCOMPARE(after(0, 0), Cell(0, 1));
    QCOMPARE(after(0, 15), Cell(0, 16));
    QCOMPARE(after(0, 16), Cell(1, 1));
    QCOMPARE(after(0, 17), Cell(1, 1));
    QCOMPARE(after(1, 16), none);
    QCOMPARE(before(1, 17), Cell(1, 16));
    QCOMPARE(before(1, 2), Cell(1, 1));
    QCOMPARE(before(1, 1), Cell(0, 16));
    QCOMPARE(before(1, 0), Cell(0, 16));
    QCOMPARE(before(0, 1), none);
}

QTEST_GUILESS_MAIN(TestGridSteps)
#include "tst_gridsteps.moc"

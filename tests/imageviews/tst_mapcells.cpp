// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "imageviews/MapCells.h"
#include "imageviews/MapWords.h"

#include <QTest>

/// Which pieces the map of an image has, and what is said of them.
class TestMapCells : public QObject {
    Q_OBJECT

private slots:
    void cells_coverTheImageAndTheStrip_data();
    void cells_coverTheImageAndTheStrip();
    void cells_areNeverTooFlat_data();
    void cells_areNeverTooFlat();
    void cells_tellWhatTheirBlocksLookLike();
    void cells_ofAnUnknownImage_tellNothing();
    void heights_leadBackToTheirBytes_data();
    void heights_leadBackToTheirBytes();
    void heightsBeyondTheStrip_areItsEnds();
    void differingBlocks_haveASizeOfTheirOwn_data();
    void differingBlocks_haveASizeOfTheirOwn();
    void differingBlocks_areSeenHoweverFewTheyAre();
    void blockAt_isFinerThanAPiece();
    void words_sayWhereAndWhat();
    void words_ofWhatIsNotKnown_areThePlaceAlone();
};

namespace {

BlockMap mapOf(const QByteArray &image) {
    BlockMap map;
    map.begin(image.size());
    map.advance(image, image.size());
    return map;
}

void addSizes() {
    QTest::addColumn<qint64>("size");
    QTest::addColumn<int>("height");
    const auto row = [](const char *name, qint64 size, int height) {
        QTest::newRow(name) << size << height;
    };
    row("one byte", 1, 300);
    row("a byte more than a block", 17, 300);
    row("as many blocks as there is room for", 1600, 300);
    row("64 KiB", 65536, 300);
    row("64 KiB and a byte", 65537, 300);
    row("an odd size in an odd height", 99991, 277);
    row("1 GiB", qint64(1) << 30, 900);
    row("hardly a strip", 65536, 4);
    row("one line", 65536, 1);
}

} // namespace

void TestMapCells::cells_coverTheImageAndTheStrip_data() {
    addSizes();
}

void TestMapCells::cells_coverTheImageAndTheStrip() {
    QFETCH(qint64, size);
    QFETCH(int, height);
    BlockMap map;
    map.begin(size);
    qint64 offset = 0;
    int y = 0;
    for (const MapCell &cell : mapCells(map, {}, height)) {
        QCOMPARE(cell.first, offset);
        QCOMPARE(cell.top, y);
        offset = cell.end;
        y += cell.height;
    }
    QCOMPARE(offset, size);
    QCOMPARE(y, height);
}

void TestMapCells::cells_areNeverTooFlat_data() {
    addSizes();
}

void TestMapCells::cells_areNeverTooFlat() {
    QFETCH(qint64, size);
    QFETCH(int, height);
    BlockMap map;
    map.begin(size);
    const QList<MapCell> cells = mapCells(map, {}, height);
    QVERIFY(!cells.isEmpty());
    for (const MapCell &cell : cells)
        QVERIFY2(cell.height >= minCellHeight || cells.size() == 1,
                 qPrintable(QString::number(cell.top)));
}

void TestMapCells::cells_tellWhatTheirBlocksLookLike() {
    const QByteArray image =
        QByteArray(64, '\xFF') + QByteArray(64, '\0') + QByteArray(64, 'x') + QByteArray(64, '\1');
    QStringList pictures;
    for (const MapCell &cell : mapCells(mapOf(image), {}, 12))
        pictures.append(cellWords(cell));
    QCOMPARE(pictures, QStringList({QStringLiteral("0x0000 to 0x003F: blank"),
                                    QStringLiteral("0x0040 to 0x007F: zeros"),
                                    QStringLiteral("0x0080 to 0x00BF: text"),
                                    QStringLiteral("0x00C0 to 0x00FF: code or data")}));
    QVERIFY(mapCells(mapOf({}), {}, 12).isEmpty());
}

void TestMapCells::cells_ofAnUnknownImage_tellNothing() {
    BlockMap map;
    map.begin(32);
    const QList<MapCell> cells = mapCells(map, {}, 100);
    QCOMPARE(cells.size(), 2);
    QVERIFY(!cells.first().looks);
}

void TestMapCells::heights_leadBackToTheirBytes_data() {
    addSizes();
}

void TestMapCells::heights_leadBackToTheirBytes() {
    QFETCH(qint64, size);
    QFETCH(int, height);
    int before = 0;
    for (int y = 0; y < height; ++y) {
        const qint64 offset = offsetAt(y, size, height);
        QVERIFY(offset >= 0 && offset < size);
        const int found = heightOf(offset, size, height);
        QVERIFY2(size < height ? found <= y : found == y, qPrintable(QString::number(y)));
        QVERIFY(found >= before);
        before = found;
    }
    QCOMPARE(heightOf(size, size, height), height);
}

void TestMapCells::heightsBeyondTheStrip_areItsEnds() {
    QCOMPARE(offsetAt(-5, 1000, 100), 0);
    QCOMPARE(offsetAt(100, 1000, 100), 999);
    QCOMPARE(offsetAt(5000, 1000, 100), 999);
}

void TestMapCells::differingBlocks_haveASizeOfTheirOwn_data() {
    QTest::addColumn<qint64>("first");
    QTest::addColumn<qint64>("end");
    QTest::addColumn<bool>("differs");
    const auto row = [](const char *name, qint64 first, qint64 end, bool differs) {
        QTest::newRow(name) << first << end << differs;
    };
    row("before it", 0, 32, false);
    row("up to its first byte", 0, 33, true);
    row("in it", 40, 41, true);
    row("from its last byte on", 63, 200, true);
    row("behind it", 64, 96, false);
    row("beyond all blocks", 500, 600, false);
    row("no bytes", 40, 40, false);
}

void TestMapCells::differingBlocks_haveASizeOfTheirOwn() {
    QFETCH(qint64, first);
    QFETCH(qint64, end);
    const DifferingBlocks differing{32, {false, true, false}};
    QTEST(differing.anyIn(first, end), "differs");
    QVERIFY(!DifferingBlocks().anyIn(first, end));
}

void TestMapCells::differingBlocks_areSeenHoweverFewTheyAre() {
    DifferingBlocks differing{16, std::vector<bool>(4096)};
    differing.blocks.back() = true;
    BlockMap map;
    map.begin(65536);
    const QList<MapCell> cells = mapCells(map, differing, 200);
    QVERIFY(cells.last().differs);
    QCOMPARE(
        std::count_if(cells.begin(), cells.end(), [](const MapCell &cell) { return cell.differs; }),
        1);
}

void TestMapCells::blockAt_isFinerThanAPiece() {
    const BlockMap map = mapOf(QByteArray(16, '\xFF') + QByteArray(16, '\0') + "xyz");
    QCOMPARE(mapCells(map, {}, 1).size(), 1);
    QCOMPARE(cellWords(blockAt(map, {}, 15)), QStringLiteral("0x0000 to 0x000F: blank"));
    QCOMPARE(cellWords(blockAt(map, {16, {false, true}}, 16)),
             QStringLiteral("0x0010 to 0x001F: zeros, differs"));
    QCOMPARE(cellWords(blockAt(map, {}, 34)), QStringLiteral("0x0020 to 0x0022: text"));
}

void TestMapCells::words_sayWhereAndWhat() {
    const MapCell cell{0, 3, 0x4000, 0x4200, BlockClass::Text, false};
    QCOMPARE(positionWords(0x4010, 0x10000, cell), QStringLiteral("0x4010 of 0x10000, text"));
    const MapCell other{0, 3, 0, 0x200, BlockClass::Zero, true};
    QCOMPARE(positionWords(0, 0x10000, other), QStringLiteral("0x0000 of 0x10000, zeros, differs"));
    QCOMPARE(cellWords(other), QStringLiteral("0x0000 to 0x01FF: zeros, differs"));
}

void TestMapCells::words_ofWhatIsNotKnown_areThePlaceAlone() {
    const MapCell cell{0, 3, 0x4000, 0x4200, std::nullopt, false};
    QCOMPARE(positionWords(0x4000, 0x10000, cell), QStringLiteral("0x4000 of 0x10000"));
    QCOMPARE(cellWords(cell), QStringLiteral("0x4000 to 0x41FF"));
}

QTEST_GUILESS_MAIN(TestMapCells)
#include "tst_mapcells.moc"

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "inspect/BlockMap.h"

#include <QTest>

/// What the parts of an image look like, counted whole, in turns and after changes.
class TestBlockMap : public QObject {
    Q_OBJECT

private slots:
    void kinds_ofEveryByteValue();
    void kinds_areTheSameHoweverTheBytesAreCut();
    void parts_haveOneClass_data();
    void parts_haveOneClass();
    void blocks_followTheSize_data();
    void blocks_followTheSize();
    void map_saysWhatEachBlockLooksLike();
    void blocksTogether_areOnePart_data();
    void blocksTogether_areOnePart();
    void turn_countsNoMoreThanItMay();
    void turn_countsAtLeastABlock();
    void unknownBlocks_haveNoClass();
    void change_countsItsBlocksAlone();
    void change_leavesWhatIsKnownUntilItIsCounted();
    void change_ofTheSize_data();
    void change_ofTheSize();
    void change_beyondTheImage_isNone();
};

namespace {

constexpr qsizetype everything = qsizetype(1) << 40;

QByteArray fill(qsizetype size, int value) {
    return QByteArray(size, char(value));
}

/// Bytes of every value in turn.
QByteArray mixture(qsizetype size) {
    QByteArray bytes(size, Qt::Uninitialized);
    for (qsizetype i = 0; i < size; ++i)
        bytes[i] = char(i * 7);
    return bytes;
}

BlockMap mapOf(const QByteArray &image) {
    BlockMap map;
    map.begin(image.size());
    map.advance(image, everything);
    return map;
}

/// A letter for each block: blank, zero, text, code, or "?" where it is not known.
QString pictureOf(const BlockMap &map) {
    QString picture;
    for (qint64 block = 0; block < map.blockCount(); ++block) {
        const std::optional<BlockClass> found = map.classOfBlocks(block, block + 1);
        picture += found ? QStringLiteral("bztc").at(qsizetype(*found)) : QChar(u'?');
    }
    return picture;
}

} // namespace

void TestBlockMap::kinds_ofEveryByteValue() {
    for (int value = 0; value < 256; ++value) {
        const bool isText = (value >= ' ' && value <= '~') || (value >= '\t' && value <= '\r');
        const ByteKinds one{1, value == 0xFF, value == 0, isText};
        QVERIFY2(kindsOf(fill(1, value)) == one, qPrintable(QString::number(value)));
        const ByteKinds many{9000, 9000 * one.blank, 9000 * one.zero, 9000 * one.text};
        QVERIFY2(kindsOf(fill(9000, value)) == many, qPrintable(QString::number(value)));
    }
}

void TestBlockMap::kinds_areTheSameHoweverTheBytesAreCut() {
    const QByteArray bytes = mixture(20000);
    for (const qsizetype cut : {0, 1, 15, 16, 17, 255 * 16, 255 * 16 + 1, 19999, 20000}) {
        ByteKinds kinds = kindsOf(QByteArrayView(bytes).first(cut));
        kinds += kindsOf(QByteArrayView(bytes).sliced(cut));
        QVERIFY2(kinds == kindsOf(bytes), qPrintable(QString::number(cut)));
    }
}

void TestBlockMap::parts_haveOneClass_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("picture");
    const auto row = [](const char *name, const QByteArray &bytes, char letter) {
        QTest::newRow(name) << bytes << QString(QLatin1Char(letter));
    };
    row("one FF", fill(1, 0xFF), 'b');
    row("all FF", fill(16, 0xFF), 'b');
    row("all 00", fill(16, 0), 'z');
    row("FF and 00", fill(8, 0xFF) + fill(8, 0), 'c');
    row("FF but one", fill(15, 0xFF) + fill(1, 0xFE), 'c');
    row("00 but one", fill(1, 1) + fill(15, 0), 'c');
    row("text", "Press any key.\r\n", 't');
    row("one letter", "x", 't');
    row("text with its ends", QByteArray("Yes\0No\0\0Cancel\0", 16), 't');
    row("text, then blank", "text" + fill(12, 0xFF), 't');
    row("a letter less", "tex" + fill(13, 0xFF), 'c');
    row("one of eight is no text",
        "abcdefg\x1b"
        "abcdefg\x1b",
        't');
    row("two of eight are none",
        "abcdef\x1b\x1b"
        "abcdefg\x1b",
        'c');
    row("every value", mixture(16), 'c');
    row("one value that is no filling", fill(16, 0xEA), 'c');
}

void TestBlockMap::parts_haveOneClass() {
    QFETCH(QByteArray, bytes);
    QTEST(pictureOf(mapOf(bytes)), "picture");
}

void TestBlockMap::blocks_followTheSize_data() {
    QTest::addColumn<qint64>("size");
    QTest::addColumn<qint64>("blockSize");
    QTest::addColumn<qint64>("count");
    const auto row = [](const char *name, qint64 size, qint64 blockSize, qint64 count) {
        QTest::newRow(name) << size << blockSize << count;
    };
    row("no bytes", 0, 16, 0);
    row("one byte", 1, 16, 1);
    row("a block and a byte", 17, 16, 2);
    row("16 KiB", 16384, 16, 1024);
    row("a byte more", 16385, 32, 513);
    row("64 KiB", 65536, 64, 1024);
    row("1 GiB", qint64(1) << 30, 1 << 20, 1024);
}

void TestBlockMap::blocks_followTheSize() {
    QFETCH(qint64, size);
    BlockMap map;
    map.begin(size);
    QCOMPARE(map.size(), size);
    QTEST(map.blockSize(), "blockSize");
    QTEST(map.blockCount(), "count");
}

void TestBlockMap::map_saysWhatEachBlockLooksLike() {
    const QByteArray image = fill(32, 0xFF) + fill(16, 0) + "A line of text.\n" + mixture(20);
    QCOMPARE(pictureOf(mapOf(image)), QStringLiteral("bbztcc"));
    QCOMPARE(pictureOf(mapOf(QByteArray())), QString());
}

void TestBlockMap::blocksTogether_areOnePart_data() {
    QTest::addColumn<QByteArray>("image");
    QTest::addColumn<BlockClass>("looks");
    QTest::newRow("blank") << fill(48, 0xFF) << BlockClass::Blank;
    QTest::newRow("more blank than zero") << fill(32, 0xFF) + fill(16, 0) << BlockClass::Blank;
    QTest::newRow("more zero than blank") << fill(16, 0xFF) + fill(32, 0) << BlockClass::Zero;
    QTest::newRow("both in one block") << fill(24, 0xFF) + fill(24, 0) << BlockClass::Code;
    QTest::newRow("one other byte") << fill(33, 0xFF) + "x" + fill(14, 0xFF) << BlockClass::Code;
    QTest::newRow("text among filling") << fill(16, 0xFF) + fill(16, 0) + "A line of text.\n"
                                        << BlockClass::Text;
    QTest::newRow("text and code") << "A line of text.\n" + mixture(16) << BlockClass::Code;
}

void TestBlockMap::blocksTogether_areOnePart() {
    QFETCH(QByteArray, image);
    QFETCH(BlockClass, looks);
    const BlockMap map = mapOf(image);
    QVERIFY(map.classOfBlocks(0, map.blockCount()) == looks);
}

void TestBlockMap::turn_countsNoMoreThanItMay() {
    BlockMap map;
    const QByteArray image = fill(100, 0xFF);
    map.begin(image.size());
    QVERIFY(!map.advance(image, 47));
    QCOMPARE(pictureOf(map), QStringLiteral("bb?????"));
    QVERIFY(!map.advance(image, 48));
    QCOMPARE(pictureOf(map), QStringLiteral("bbbbb??"));
    // The last block is of four bytes.
    QVERIFY(map.advance(image, 20));
    QCOMPARE(pictureOf(map), QStringLiteral("bbbbbbb"));
    QVERIFY(map.advance(image, 20));
}

void TestBlockMap::turn_countsAtLeastABlock() {
    BlockMap map;
    const QByteArray image = fill(48, 0);
    map.begin(image.size());
    QVERIFY(!map.advance(image, 1));
    QCOMPARE(pictureOf(map), QStringLiteral("z??"));
}

void TestBlockMap::unknownBlocks_haveNoClass() {
    BlockMap map;
    const QByteArray image = fill(48, 0);
    map.begin(image.size());
    map.advance(image, 16);
    QVERIFY(!map.classOfBlocks(0, 2));
    map.begin(image.size());
    QCOMPARE(pictureOf(map), QStringLiteral("???"));
}

// Whatever the other blocks hold now is not looked at.
void TestBlockMap::change_countsItsBlocksAlone() {
    BlockMap map = mapOf(fill(96, 0xFF));
    map.change(31, 2, 96);
    QVERIFY(!map.advance(fill(96, 0), 16));
    QCOMPARE(pictureOf(map), QStringLiteral("bzbbbb"));
    QVERIFY(map.advance(fill(96, 0), 16));
    QCOMPARE(pictureOf(map), QStringLiteral("bzzbbb"));
}

void TestBlockMap::change_leavesWhatIsKnownUntilItIsCounted() {
    BlockMap map = mapOf(fill(32, 0xFF));
    map.change(0, 32, 32);
    QCOMPARE(pictureOf(map), QStringLiteral("bb"));
    map.advance(fill(32, 0), everything);
    QCOMPARE(pictureOf(map), QStringLiteral("zz"));
}

void TestBlockMap::change_ofTheSize_data() {
    QTest::addColumn<qint64>("before");
    QTest::addColumn<qint64>("after");
    QTest::addColumn<QString>("picture");
    const auto row = [](const char *name, qint64 before, qint64 after, const char *picture) {
        QTest::newRow(name) << before << after << QString::fromLatin1(picture);
    };
    // All that was there stays FF in the blocks that need no counting.
    row("into the last block", 20, 24, "bz");
    row("into new blocks", 20, 40, "bzz");
    row("shorter in a block", 40, 36, "bbz");
    row("shorter at its edge", 40, 32, "bb");
    row("to nothing", 40, 0, "");
    row("from nothing", 0, 20, "zz");
}

void TestBlockMap::change_ofTheSize() {
    QFETCH(qint64, before);
    QFETCH(qint64, after);
    BlockMap map = mapOf(fill(before, 0xFF));
    map.change(after, 0, after);
    QVERIFY(map.advance(fill(after, 0), everything));
    QCOMPARE(map.size(), after);
    QTEST(pictureOf(map), "picture");
    map.change(0, 0, 16 * 1024 + 1);
    QCOMPARE(map.blockSize(), 32);
    QVERIFY(!map.classOfBlocks(0, 1));
}

void TestBlockMap::change_beyondTheImage_isNone() {
    BlockMap map = mapOf(fill(32, 0xFF));
    map.change(32, 100, 32);
    map.change(5, 0, 32);
    QVERIFY(map.advance(fill(32, 0), everything));
    QCOMPARE(pictureOf(map), QStringLiteral("bb"));
}

QTEST_GUILESS_MAIN(TestBlockMap)
#include "tst_blockmap.moc"

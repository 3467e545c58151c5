// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "inspect/ImageDifferences.h"

#include <QRandomGenerator>
#include <QTest>

/// How two images differ, compared whole or in pieces, and where the next place is.
class TestImageDifferences : public QObject {
    Q_OBJECT

private slots:
    void differences_data();
    void differences();
    void differences_agreeWithACountByHand_data();
    void differences_agreeWithACountByHand();
    void aTurn_comparesNoMoreThanItMay();
    void blocks_tellWhere_data();
    void blocks_tellWhere();
    void steps_goFromPlaceToPlace_data();
    void steps_goFromPlaceToPlace();
    void steps_agreeWithALookAtEveryByte();
    void stepsOfAReader_agreeWithThem();
    void stepsOfAReader_passOverWhatIsTheSame();
};

namespace {

constexpr qsizetype large = 100 * 1000 + 7; // several strides, and no round number

QByteArray noise(qsizetype size, quint32 state) {
    QByteArray bytes(size, Qt::Uninitialized);
    for (char &byte : bytes) {
        state = state * 1664525 + 1013904223;
        byte = char(state >> 24);
    }
    return bytes;
}

/// The same, looked at byte by byte.
ImageDifferences countByHand(const QByteArray &one, const QByteArray &other) {
    ImageDifferences found;
    found.compared = std::min(one.size(), other.size());
    for (qint64 offset = 0; offset < found.compared; ++offset) {
        found.bytes += one[offset] != other[offset];
        for (int bit = 0; bit < 8; ++bit)
            found.bitsToErase +=
                !((quint8(one[offset]) >> bit) & 1) && ((quint8(other[offset]) >> bit) & 1);
    }
    return found;
}

/// Where places begin, looked at byte by byte.
QList<qint64> placesByHand(const QByteArray &one, const QByteArray &other) {
    QList<qint64> places;
    bool before = false;
    for (qint64 offset = 0; offset < std::min(one.size(), other.size()); ++offset) {
        const bool differs = one[offset] != other[offset];
        if (differs && !before)
            places << offset;
        before = differs;
    }
    return places;
}

/// \a image with other bytes at \a offsets.
QByteArray changed(QByteArray image, const QList<qint64> &offsets) {
    for (const qint64 offset : offsets)
        image[offset] = char(~image[offset]);
    return image;
}

/// Compared in one turn.
ImageDifferences differencesOf(QByteArrayView one, QByteArrayView other) {
    ImageDifferencesReader reader;
    reader.advance(one, other, std::max(one.size(), other.size()));
    return reader.differences();
}

} // namespace

void TestImageDifferences::differences_data() {
    QTest::addColumn<QByteArray>("one");
    QTest::addColumn<QByteArray>("other");
    QTest::addColumn<qint64>("compared");
    QTest::addColumn<qint64>("bytes");
    QTest::addColumn<qint64>("bitsToErase");
    const auto row = [](const char *name, const QByteArray &one, const QByteArray &other,
                        qint64 compared, qint64 bytes, qint64 bits) {
        QTest::newRow(name) << one << other << compared << bytes << bits;
    };
    row("nothing", "", "", 0, 0, 0);
    row("nothing beside something", "", "abc", 0, 0, 0);
    row("equal", "abc", "abc", 3, 0, 0);
    row("one byte", "abc", "abd", 3, 1, 1); // 63, 64: bit 2 rises
    row("bits that only fall need no erasing", "\xff\xff", "\x0f\xfe", 2, 2, 0);
    row("bits that rise need it", QByteArray("\x00\x0f", 2), "\x81\xff", 2, 2, 6);
    row("what one has more is none", "abcdef", "abx", 3, 1, 2); // 63, 78: bits 3 and 4 rise
}

void TestImageDifferences::differences() {
    QFETCH(QByteArray, one);
    QFETCH(QByteArray, other);
    const ImageDifferences found = differencesOf(one, other);
    QTEST(found.compared, "compared");
    QTEST(found.bytes, "bytes");
    QTEST(found.bitsToErase, "bitsToErase");
}

void TestImageDifferences::differences_agreeWithACountByHand_data() {
    QTest::addColumn<QByteArray>("one");
    QTest::addColumn<QByteArray>("other");
    const QByteArray image = noise(large, 1);
    QTest::newRow("all others") << image << noise(large, 2);
    QTest::newRow("shorter") << image << noise(large - 100, 3);
    QTest::newRow("few") << image << changed(image, {0, 4095, 4096, 50000, large - 1});
    QTest::newRow("a high bit beside a zero byte")
        << QByteArray("\x80\x00\x00\x80\x00\x00\x00\x01", 8) << QByteArray(8, '\0');
}

void TestImageDifferences::differences_agreeWithACountByHand() {
    QFETCH(QByteArray, one);
    QFETCH(QByteArray, other);
    const ImageDifferences byHand = countByHand(one, other);
    QCOMPARE(differencesOf(one, other), byHand);
    for (const qsizetype max : {qsizetype(1), qsizetype(1000), qsizetype(1) << 20}) {
        ImageDifferencesReader reader;
        while (!reader.advance(one, other, max)) {
        }
        QCOMPARE(reader.differences(), byHand);
    }
}

void TestImageDifferences::aTurn_comparesNoMoreThanItMay() {
    const QByteArray image(100, 'a');
    ImageDifferencesReader reader;
    QVERIFY(!reader.advance(image, image, 60));
    QCOMPARE(reader.differences().compared, 60);
    QVERIFY(reader.advance(image, image, 60));
    QCOMPARE(reader.differences().compared, 100);
}

void TestImageDifferences::blocks_tellWhere_data() {
    QTest::addColumn<qint64>("size");
    QTest::addColumn<qint64>("blockSize");
    QTest::newRow("small") << qint64(100) << qint64(16);
    QTest::newRow("64 KiB less one") << qint64(65535) << qint64(16);
    QTest::newRow("64 KiB") << qint64(65536) << qint64(32);
    QTest::newRow("16 MiB") << (qint64(16) << 20) << qint64(8192);
}

void TestImageDifferences::blocks_tellWhere() {
    QFETCH(qint64, size);
    QFETCH(qint64, blockSize);
    const QByteArray image(size, 'a');
    const QByteArray other = changed(image, {blockSize, size - 1});
    ImageDifferencesReader reader;
    QVERIFY(reader.advance(image, other, size));
    QCOMPARE(reader.blockSize(), blockSize);
    std::vector<bool> expected(size_t((size + blockSize - 1) / blockSize));
    QVERIFY(qint64(expected.size()) <= ImageDifferencesReader::maxBlocks);
    expected[1] = true;
    expected.back() = true;
    QVERIFY(reader.differing() == expected);
}

void TestImageDifferences::steps_goFromPlaceToPlace_data() {
    QTest::addColumn<QByteArray>("one");
    QTest::addColumn<QByteArray>("other");
    QTest::addColumn<qint64>("offset");
    QTest::addColumn<qint64>("next"); // -1: none
    QTest::addColumn<qint64>("previous");
    const auto row = [](const char *name, const char *one, const char *other, qint64 offset,
                        qint64 next, qint64 previous) {
        QTest::newRow(name) << QByteArray(one) << QByteArray(other) << offset << next << previous;
    };
    row("nothing", "", "", -1, -1, -1);
    row("equal", "aaaa", "aaaa", 1, -1, -1);
    row("before the first byte", "xaaa", "aaaa", -1, 0, -1);
    row("on a place", "axxa", "aaaa", 1, -1, -1);
    row("in a place", "axxxa", "aaaaa", 2, -1, 1);
    row("between two", "xxaxx", "aaaaa", 2, 3, 0);
    row("behind the last byte", "axaxa", "aaaaa", 9, -1, 3);
    row("on the second of two", "xaxa", "aaaa", 2, -1, 0);
    row("on the first of two", "xaxa", "aaaa", 0, 2, -1);
    row("in what one has more", "xaaaaaa", "aa", 5, -1, 0);
}

void TestImageDifferences::steps_goFromPlaceToPlace() {
    QFETCH(QByteArray, one);
    QFETCH(QByteArray, other);
    QFETCH(qint64, offset);
    QTEST(nextDifference(one, other, offset).value_or(-1), "next");
    QTEST(previousDifference(one, other, offset).value_or(-1), "previous");
}

void TestImageDifferences::steps_agreeWithALookAtEveryByte() {
    const QByteArray image = noise(large, 1);
    QByteArray other = changed(image, {0, 1, 9, 4095, 4096, 4097, 8192, large - 1});
    std::fill(other.begin() + 30000, other.begin() + 41003, '\x55');
    const QList<qint64> places = placesByHand(image, other);
    QList<qint64> forward;
    for (auto at = nextDifference(image, other, -1); at; at = nextDifference(image, other, *at))
        forward << *at;
    QCOMPARE(forward, places);
    QList<qint64> backward;
    for (auto at = previousDifference(image, other, large); at;
         at = previousDifference(image, other, *at))
        backward.prepend(*at);
    QCOMPARE(backward, places);
}

void TestImageDifferences::stepsOfAReader_agreeWithThem() {
    QRandomGenerator random(7);
    for (int round = 0; round < 200; ++round) {
        const QByteArray image = noise(random.bounded(1, int(large)), quint32(round));
        QByteArray other = image;
        for (int place = random.bounded(0, 4); place > 0; --place) {
            const int begin = random.bounded(int(other.size()));
            const int length = std::min(random.bounded(1, 20000), int(other.size()) - begin);
            for (int at = begin; at < begin + length; ++at)
                other[at] = char(~other[at]);
        }
        ImageDifferencesReader reader;
        while (!reader.advance(image, other, 5000)) {
        }
        for (int step = 0; step < 50; ++step) {
            const qint64 from = random.bounded(-1, int(large) + 2);
            QCOMPARE(reader.next(image, other, from), nextDifference(image, other, from));
            QCOMPARE(reader.previous(image, other, from), previousDifference(image, other, from));
        }
    }
}

void TestImageDifferences::stepsOfAReader_passOverWhatIsTheSame() {
    const QByteArray image(16 << 20, 'a');
    QByteArray other = image;
    constexpr qint64 known = (12 << 20) + 5;
    other[known] = 'b';
    ImageDifferencesReader reader;
    while (!reader.advance(image, other, other.size())) {
    }
    other[1 << 20] = 'b'; // which nobody has told
    other[14 << 20] = 'b';
    QCOMPARE(reader.next(image, other, -1), std::optional(known));
    QCOMPARE(reader.next(image, other, known), std::nullopt);
    QCOMPARE(reader.previous(image, other, other.size()), std::optional(known));
    QCOMPARE(reader.previous(image, other, known), std::nullopt);
    QCOMPARE(reader.next({}, other, -1), std::nullopt);
    QCOMPARE(reader.previous(image, {}, other.size()), std::nullopt);
}

QTEST_GUILESS_MAIN(TestImageDifferences)
#include "tst_imagedifferences.moc"

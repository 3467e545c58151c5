// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "orders/Rearranging.h"

#include <QRandomGenerator>
#include <QTest>

/// Bytes get where they belong, and back again.
class TestRearranging : public QObject {
    Q_OBJECT

private slots:
    void examples_data();
    void examples();
    void everyStep_isAsByHand_data() { lengths(); }
    void everyStep_isAsByHand();
    void everyStep_hasAnInverse_data() { lengths(); }
    void everyStep_hasAnInverse();
    void turns_giveTheSame();
    void manyTurns_areShort();

private:
    static void lengths();
};

using Parts = QList<QByteArray>;
Q_DECLARE_METATYPE(Arrangement)

namespace {

constexpr Lanes whole{};
constexpr Lanes halves{2, 1};
constexpr Lanes quarters{4, 1};
constexpr Lanes wideHalves{2, 2};
constexpr Lanes wideQuarters{4, 2};

QList<QByteArrayView> viewsOf(const Parts &parts) {
    return {parts.begin(), parts.end()};
}

QByteArray randomBytes(qsizetype length) {
    QRandomGenerator random(quint32(length) + 1);
    QByteArray bytes;
    while (bytes.size() < length)
        bytes.append(char(random.generate()));
    return bytes;
}

// What the rules say, byte by byte.

Parts splitByHand(const QByteArray &bytes, const Lanes &lanes) {
    Parts parts(lanes.parts);
    for (qsizetype i = 0; i < bytes.size(); ++i)
        parts[i / lanes.unit % lanes.parts].append(bytes[i]);
    return parts;
}

QByteArray swappedByHand(const QByteArray &bytes, int group) {
    QByteArray swapped;
    for (qsizetype at = 0; at < bytes.size(); at += group)
        for (int i = group - 1; i >= 0; --i)
            swapped.append(bytes[at + i]);
    return swapped;
}

QByteArray bitsReversedByHand(QByteArray bytes) {
    for (char &byte : bytes) {
        uint reversed = 0;
        for (int bit = 0; bit < 8; ++bit)
            if (uint(byte) >> bit & 1)
                reversed |= 0x80U >> bit;
        byte = char(reversed);
    }
    return bytes;
}

Parts arrangedByHand(const Arrangement &arrangement, QByteArray bytes) {
    bytes = swappedByHand(bytes, arrangement.swapped);
    if (arrangement.bitsReversed)
        bytes = bitsReversedByHand(bytes);
    Parts parts = splitByHand(bytes, arrangement.split);
    if (arrangement.filled > 0)
        for (QByteArray &part : parts)
            part = part.repeated(arrangement.filled / part.size());
    return parts;
}

/// All arrangements but for joining and repeating.
QList<Arrangement> allArrangements() {
    QList<Arrangement> all;
    for (const int swapped : {1, 2, 4})
        for (const bool bitsReversed : {false, true})
            for (const Lanes &split : {whole, halves, quarters, wideHalves, wideQuarters})
                all.append({whole, swapped, bitsReversed, split});
    return all;
}

bool isPossible(const Arrangement &arrangement, const Parts &parts) {
    return bool(canBeArranged(arrangement, lengthsOf(viewsOf(parts))));
}

} // namespace

void TestRearranging::examples_data() {
    QTest::addColumn<Arrangement>("arrangement");
    QTest::addColumn<Parts>("from");
    QTest::addColumn<Parts>("to");
    const auto row = [](const char *name, const Arrangement &arrangement, const Parts &from,
                        const Parts &to) { QTest::newRow(name) << arrangement << from << to; };
    row("as it is", {}, {"abcdefg"}, {"abcdefg"});
    row("even and odd", {whole, 1, false, halves}, {"abcdefgh"}, {"aceg", "bdfh"});
    row("four", {whole, 1, false, quarters}, {"abcdefgh"}, {"ae", "bf", "cg", "dh"});
    row("two of 16 bits", {whole, 1, false, wideHalves}, {"abcdefgh"}, {"abef", "cdgh"});
    row("joined of two", {halves}, {"ace", "bdf"}, {"abcdef"});
    row("joined of four", {quarters}, {"ae", "bf", "cg", "dh"}, {"abcdefgh"});
    row("joined of two of 16 bits", {wideHalves}, {"abef", "cdgh"}, {"abcdefgh"});
    row("swapped in 16 bits", {whole, 2}, {"abcdefghij"}, {"badcfehgji"});
    row("swapped in 32 bits", {whole, 4}, {"abcdefghijkl"}, {"dcbahgfelkji"});
    row("bits", {whole, 1, true}, {"\x01\x80\x0F\xC4"}, {"\x80\x01\xF0\x23"});
    row("repeated", {whole, 1, false, whole, 9}, {"abc"}, {"abcabcabc"});
    row("split and repeated", {whole, 1, false, halves, 4}, {"abcd"}, {"acac", "bdbd"});
    row("joined, swapped and repeated", {halves, 2, false, whole, 8}, {"ac", "bd"}, {"badcbadc"});
    row("four chips become two", {quarters, 1, false, halves}, {"ae", "bf", "cg", "dh"},
        {"aceg", "bdfh"});
}

void TestRearranging::examples() {
    QFETCH(Arrangement, arrangement);
    QFETCH(Parts, from);
    QTEST(rearranged(arrangement, viewsOf(from)), "to");
}

void TestRearranging::lengths() {
    QTest::addColumn<QByteArray>("bytes");
    const auto row = [](int length) { QTest::addRow("%d bytes", length) << randomBytes(length); };
    for (int length = 0; length < 10; ++length)
        row(length);
    for (const int length : {255, 256, 257, 32'768, 32'776, 65'539})
        row(length);
    QRandomGenerator random(20);
    for (int i = 0; i < 20; ++i)
        row(random.bounded(100'000));
}

void TestRearranging::everyStep_isAsByHand() {
    QFETCH(QByteArray, bytes);
    int done = 0;
    for (Arrangement arrangement : allArrangements()) {
        if (!isPossible(arrangement, {bytes}))
            continue;
        ++done;
        QCOMPARE(rearranged(arrangement, {bytes}), arrangedByHand(arrangement, bytes));
        arrangement.filled = 3 * splitLength(arrangement, {bytes.size()});
        QCOMPARE(rearranged(arrangement, {bytes}), arrangedByHand(arrangement, bytes));
    }
    QVERIFY(done >= 2); // the bits can always be reversed
}

void TestRearranging::everyStep_hasAnInverse() {
    QFETCH(QByteArray, bytes);
    for (const Arrangement &arrangement : allArrangements()) {
        if (!isPossible(arrangement, {bytes}))
            continue;
        const Parts parts = rearranged(arrangement, {bytes});
        const Arrangement inverse = {arrangement.split, arrangement.swapped,
                                     arrangement.bitsReversed};
        QVERIFY(isPossible(inverse, parts));
        QCOMPARE(rearranged(inverse, viewsOf(parts)), Parts{bytes});
    }
}

void TestRearranging::turns_giveTheSame() {
    const QByteArray bytes = randomBytes(200'000);
    const Arrangement arrangement{whole, 4, true, halves, 300'000};
    const Parts expected = arrangedByHand(arrangement, bytes);
    for (const qsizetype step : {1, 1000, 32 * 1024, 100'000, 1'000'000}) {
        Rearranging work(arrangement, {bytes.size()});
        while (!work.advance({bytes}, step)) {
        }
        QCOMPARE(work.takeParts(), expected);
    }
}

void TestRearranging::manyTurns_areShort() {
    const QByteArray bytes(1 << 20, 'x');
    Rearranging work({whole, 1, false, halves, 1 << 22}, {bytes.size()});
    int turns = 1;
    while (!work.advance({bytes}, 1 << 16))
        ++turns;
    // A MiB is split, and another seven are made of it.
    QVERIFY2(turns >= 8 * 16 - 16 && turns <= 8 * 16, qPrintable(QString::number(turns)));
}

QTEST_GUILESS_MAIN(TestRearranging)
#include "tst_rearranging.moc"

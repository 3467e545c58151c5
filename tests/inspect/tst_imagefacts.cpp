// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "inspect/ImageFacts.h"
#include "inspect/Sha256.h"

#include "support/FactsAtOnce.h"

#include <QTest>

/// What tells one image from another, read whole or in pieces.
class TestImageFacts : public QObject {
    Q_OBJECT

private slots:
    void facts_data();
    void facts();
    void facts_areTheSameHoweverTheBytesAreCut_data();
    void facts_areTheSameHoweverTheBytesAreCut();
    void facts_changeWithEachByte_data();
    void facts_changeWithEachByte();
    void aTurn_readsNoMoreThanItMay();
    void sha256_data();
    void sha256();
    void sha256_isTheSameHoweverTheBytesAreCut();
};

namespace {

constexpr qsizetype large = 100 * 1000 + 7; // several pieces, and no round number

/// Bytes without a pattern that a cut could meet.
QByteArray noise(qsizetype size) {
    QByteArray bytes(size, Qt::Uninitialized);
    quint32 state = 1;
    for (char &byte : bytes) {
        state = state * 1664525 + 1013904223;
        byte = char(state >> 24);
    }
    return bytes;
}

ImageFacts inTurns(const QByteArray &image, qsizetype max) {
    ImageFactsReader reader;
    while (!reader.advance(image, max)) {
    }
    return reader.facts();
}

} // namespace

void TestImageFacts::facts_data() {
    QTest::addColumn<QByteArray>("image");
    QTest::addColumn<quint32>("crc32");
    QTest::addColumn<quint16>("sum");
    QTest::addColumn<int>("onlyByte"); // -1: none
    const auto row = [](const char *name, const QByteArray &image, quint32 crc32, quint16 sum,
                        int onlyByte) { QTest::newRow(name) << image << crc32 << sum << onlyByte; };
    row("no bytes", QByteArray(), 0, 0, -1);
    row("one byte", QByteArray("a"), 0xE8B7BE43, 0x61, 'a');
    row("the digits", QByteArray("123456789"), 0xCBF43926, 0x01DD, -1);
    row("32 times 00", QByteArray(32, '\0'), 0x190A55AD, 0, 0);
    row("32 times FF", QByteArray(32, '\xFF'), 0xFF6CAB0B, 0x1FE0, 0xFF);
    row("a sum beyond 16 bits", QByteArray(65537, '\1'), 0x12DF6F08, 1, 1);
}

void TestImageFacts::facts() {
    QFETCH(QByteArray, image);
    QFETCH(quint32, crc32);
    QFETCH(quint16, sum);
    QFETCH(int, onlyByte);
    const ImageFacts facts = factsOf(image);
    QCOMPARE(facts.size, image.size());
    QCOMPARE(facts.crc32, crc32);
    QCOMPARE(facts.sum, sum);
    QCOMPARE(facts.onlyByte ? int(*facts.onlyByte) : -1, onlyByte);
}

void TestImageFacts::facts_areTheSameHoweverTheBytesAreCut_data() {
    QTest::addColumn<QByteArray>("image");
    QTest::newRow("no bytes") << QByteArray();
    QTest::newRow("one byte") << QByteArray("x");
    QTest::newRow("all the same") << QByteArray(large, '\xFF');
    QTest::newRow("noise") << noise(large);
}

void TestImageFacts::facts_areTheSameHoweverTheBytesAreCut() {
    QFETCH(QByteArray, image);
    const ImageFacts whole = factsOf(image);
    for (qsizetype max : {1, 2, 63, 64, 65, 4096, 16384, 16385, 99999, 100007, 1000000})
        QVERIFY2(inTurns(image, max) == whole, qPrintable(QString::number(max)));
}

void TestImageFacts::facts_changeWithEachByte_data() {
    QTest::addColumn<qsizetype>("offset");
    for (const qsizetype offset : {qsizetype(0), qsizetype(1), qsizetype(16383), qsizetype(16384),
                                   qsizetype(65536), large - 1})
        QTest::addRow("%lld", qlonglong(offset)) << offset;
}

void TestImageFacts::facts_changeWithEachByte() {
    QFETCH(qsizetype, offset);
    QByteArray image(large, '\xFF');
    const ImageFacts before = factsOf(image);
    image[offset] = '\xFE';
    const ImageFacts after = factsOf(image);
    QVERIFY(after.crc32 != before.crc32);
    QCOMPARE(after.sum, quint16(before.sum - 1));
    QVERIFY(!after.onlyByte);
}

void TestImageFacts::aTurn_readsNoMoreThanItMay() {
    const QByteArray image = noise(large);
    ImageFactsReader reader;
    QVERIFY(!reader.advance(image, 1000));
    QVERIFY(reader.facts() == factsOf(QByteArrayView(image).first(1000)));
    QVERIFY(!reader.advance(image, large - 1001));
    QVERIFY(reader.advance(image, 1));
    QVERIFY(reader.advance(image, 1));
    QVERIFY(reader.facts() == factsOf(image));
}

void TestImageFacts::sha256_data() {
    QTest::addColumn<QByteArray>("image");
    QTest::addColumn<QByteArray>("digest");
    QTest::newRow("no bytes")
        << QByteArray()
        << QByteArray("e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    QTest::newRow("abc") << QByteArray("abc")
                         << QByteArray(
                                "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
}

void TestImageFacts::sha256() {
    QFETCH(QByteArray, image);
    QFETCH(QByteArray, digest);
    Sha256Reader reader;
    QVERIFY(reader.advance(image, image.size()));
    QCOMPARE(reader.digest().toHex(), digest);
}

void TestImageFacts::sha256_isTheSameHoweverTheBytesAreCut() {
    const QByteArray image = noise(large);
    for (qsizetype max : {1, 63, 64, 4096, 99999, 1000000}) {
        Sha256Reader reader;
        while (!reader.advance(image, max)) {
        }
        QCOMPARE(reader.digest(), QCryptographicHash::hash(image, QCryptographicHash::Sha256));
    }
}

QTEST_GUILESS_MAIN(TestImageFacts)
#include "tst_imagefacts.moc"

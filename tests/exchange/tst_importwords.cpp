// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "exchange/ImportWords.h"

#include <QSet>
#include <QTest>

/// What is said of a file of records.
class TestImportWords : public QObject {
    Q_OBJECT

private slots:
    void found_isALineForEach_data();
    void found_isALineForEach();
    void manyRanges_areCounted();
    void manyTroubles_areCounted();
    void everyTrouble_hasASentenceOfItsOwn();
    void image_isMeasured_data();
    void image_isMeasured();
};

namespace {

constexpr auto intelHex = RecordFormat::IntelHex;

} // namespace

void TestImportWords::found_isALineForEach_data() {
    QTest::addColumn<DecodedRecords>("decoded");
    QTest::addColumn<QString>("words");
    const auto row = [](const char *name, const DecodedRecords &decoded, const char *words) {
        QTest::newRow(name) << decoded << QString::fromLatin1(words);
    };
    DecodedRecords decoded;
    row("nothing", decoded, "Format: Motorola S-record|Bytes: no bytes|Entry point: none");
    decoded.bytes.put(0x8000, QByteArray(0x8000, 'x'));
    decoded.entry = 0x8010;
    decoded.header = "a\nrom\x07";
    row("one piece", decoded,
        "Format: Motorola S-record|Bytes: 32,768 bytes|Header: a rom|"
        "Range: 0x8000 to 0xFFFF, 32,768 bytes|Gaps: none|Entry point: 0x8010");
    decoded.header.clear();
    decoded.bytes.put(0x10001, "x");
    row("two pieces", decoded,
        "Format: Motorola S-record|Bytes: 32,769 bytes in 2 ranges|"
        "Range: 0x8000 to 0xFFFF, 32,768 bytes|Range: 0x10001 to 0x10001, 1 byte|"
        "Gaps: 1, with 1 byte to fill|Entry point: 0x8010");
}

void TestImportWords::found_isALineForEach() {
    QFETCH(DecodedRecords, decoded);
    QTEST(foundWords(RecordFormat::SRecord, decoded).join(u'|'), "words");
}

void TestImportWords::manyRanges_areCounted() {
    DecodedRecords decoded;
    for (int i = 0; i < 1020; ++i)
        decoded.bytes.put(2 * i, "x");
    const QStringList lines = foundWords(intelHex, decoded);
    QCOMPARE(lines.filter(QStringLiteral("Range: ")).size(), 20);
    QVERIFY(lines.contains(u"Further ranges: 1,000"));
}

void TestImportWords::manyTroubles_areCounted() {
    DecodedRecords decoded;
    for (int i = 1; i <= 1100; ++i)
        decoded.troubles.add(TroubleKind::OddDigit, i);
    const QStringList lines = foundWords(intelHex, decoded);
    QCOMPARE(lines.filter(QStringLiteral("Line ")).size(), 100);
    QVERIFY(lines.contains(u"Further troubles: 1,000"));
}

void TestImportWords::everyTrouble_hasASentenceOfItsOwn() {
    QSet<QString> sentences;
    for (std::size_t kind = 0; kind < troubleKinds; ++kind) {
        const QString sentence = troubleWords({TroubleKind(kind), 1234});
        QVERIFY2(sentence.startsWith(u"Line 1,234: "), qPrintable(sentence));
        QVERIFY2(sentence.endsWith(u'.'), qPrintable(sentence));
        sentences.insert(sentence);
    }
    QCOMPARE(std::size_t(sentences.size()), troubleKinds);
}

void TestImportWords::image_isMeasured_data() {
    QTest::addColumn<qint64>("address");
    QTest::addColumn<qint64>("base");
    QTest::addColumn<QString>("words");
    const auto row = [](const char *name, qint64 address, qint64 base, const char *words) {
        QTest::newRow(name) << address << base << QString::fromLatin1(words);
    };
    row("no bytes", -1, 0, "There are no bytes in it.");
    row("nothing to fill", 0, 0, "The binary will have 2 bytes.");
    row("filled", 0x10, 0, "The binary will have 18 bytes; 16 of them filled with 0x0F.");
    row("before the base", 0x10, 0x11, "Bytes lie before the base offset.");
    row("too large", 0xFFFFFFF0, 0,
        "The binary would have more than 1 GiB; a higher base offset may help.");
}

void TestImportWords::image_isMeasured() {
    QFETCH(qint64, address);
    QFETCH(qint64, base);
    DecodedRecords decoded;
    if (address >= 0)
        decoded.bytes.put(address, "xy");
    QTEST(imageWords(decoded, base, 0x0F), "words");
}

QTEST_GUILESS_MAIN(TestImportWords)
#include "tst_importwords.moc"

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "exchange/OrderWords.h"

#include <QTest>

/// What is said of parts and written on chips.
class TestOrderWords : public QObject {
    Q_OBJECT

private slots:
    void label_saysWhatToWrite_data();
    void label_saysWhatToWrite();
    void path_isThatOfThePart_data();
    void path_isThatOfThePart();
    void trouble_isSaidWithTheLengths_data();
    void trouble_isSaidWithTheLengths();
};

Q_DECLARE_METATYPE(LabelledPart)
Q_DECLARE_METATYPE(ChipSize)
Q_DECLARE_METATYPE(Lanes)
Q_DECLARE_METATYPE(Arrangement)

namespace {

constexpr Lanes halves{2, 1};
constexpr Lanes quarters{4, 1};
constexpr Lanes wideHalves{2, 2};

} // namespace

void TestOrderWords::label_saysWhatToWrite_data() {
    QTest::addColumn<LabelledPart>("part");
    QTest::addColumn<ChipSize>("chip");
    QTest::addColumn<QString>("label");
    const QString name = QStringLiteral("GAME");
    const auto row = [&name](const char *title, const LabelledPart &part, const ChipSize &chip,
                             const char *label) {
        QTest::newRow(title) << part << chip << QString::fromUtf8(label);
    };
    row("even", {name, halves, 0, false, 32'768, 0x1C291CA3}, {},
        "GAME even, low byte, CRC-32 1C291CA3, 27C256 32 KiB");
    row("odd", {name, halves, 1, false, 32'768, 0xA3}, {},
        "GAME odd, high byte, CRC-32 000000A3, 27C256 32 KiB");
    row("even, low byte last", {name, halves, 0, true, 65'536, 0xA3}, {},
        "GAME even, high byte, CRC-32 000000A3, 27C512 64 KiB");
    row("the second of four", {name, quarters, 1, false, 2048, 0xA3}, {},
        "GAME 1, D8 to D15, CRC-32 000000A3, 2716 2 KiB");
    row("the second of four, low byte last", {name, quarters, 1, true, 2048, 0xA3}, {},
        "GAME 1, D16 to D23, CRC-32 000000A3, 2716 2 KiB");
    row("16 bits", {name, wideHalves, 0, false, 131'072, 0xA3}, {},
        "GAME 0, D0 to D15, CRC-32 000000A3, 27C1024 128 KiB");
    row("16 bits, high", {name, wideHalves, 1, false, 131'072, 0xA3}, {},
        "GAME 1, D16 to D31, CRC-32 000000A3, 27C1024 128 KiB");
    row("the chip under Device", {name, halves, 0, false, 65'536, 0xA3},
        {QStringLiteral("W27C512@DIP28"), 65'536},
        "GAME even, low byte, CRC-32 000000A3, W27C512@DIP28 64 KiB");
    row("another chip under Device", {name, halves, 0, false, 65'536, 0xA3},
        {QStringLiteral("AT28C256"), 32'768},
        "GAME even, low byte, CRC-32 000000A3, 27C512 64 KiB");
    row("an unusual length", {name, halves, 0, false, 3072, 0xA3}, {},
        "GAME even, low byte, CRC-32 000000A3, 3 KiB");
    row("no whole KiB", {name, halves, 0, false, 10, 0xA3}, {},
        "GAME even, low byte, CRC-32 000000A3, 10 bytes");
    row("one part", {name, {}, 0, false, 8192, 0xA3}, {}, "GAME, CRC-32 000000A3, 27C64 8 KiB");
    const QString endless(2000, u'x');
    const QByteArray shown = QByteArray(1000, 'x') + "\xe2\x80\xa6";
    row("endless names", {endless, {}, 0, false, 8192, 0xA3}, {endless, 8192},
        shown + ", CRC-32 000000A3, " + shown + " 8 KiB");
}

void TestOrderWords::label_saysWhatToWrite() {
    QFETCH(LabelledPart, part);
    QFETCH(ChipSize, chip);
    QTEST(labelWords(part, chip), "label");
}

void TestOrderWords::path_isThatOfThePart_data() {
    QTest::addColumn<QString>("path");
    QTest::addColumn<Lanes>("lanes");
    QTest::addColumn<QString>("extension");
    QTest::addColumn<QStringList>("paths");
    const auto row = [](const char *path, const Lanes &lanes, const char *extension,
                        const char *paths) {
        QTest::newRow(path) << QString::fromLatin1(path) << lanes << QString::fromLatin1(extension)
                            << QString::fromLatin1(paths).split(u',');
    };
    row("/a/GAME", halves, "bin", "/a/GAME.even.bin,/a/GAME.odd.bin");
    row("/a/GAME.bin", halves, "hex", "/a/GAME.even.hex,/a/GAME.odd.hex");
    row("/a/GAME.HEX", quarters, "bin", "/a/GAME.0.bin,/a/GAME.1.bin,/a/GAME.2.bin,/a/GAME.3.bin");
    row("/a/GAME v1.2", wideHalves, "srec", "/a/GAME v1.2.0.srec,/a/GAME v1.2.1.srec");
    row("/a.bin/GAME", halves, "bin", "/a.bin/GAME.even.bin,/a.bin/GAME.odd.bin");
}

void TestOrderWords::path_isThatOfThePart() {
    QFETCH(QString, path);
    QFETCH(Lanes, lanes);
    QFETCH(QString, extension);
    QStringList paths;
    for (int part = 0; part < lanes.parts; ++part)
        paths << partPath(path, lanes, part, extension);
    QTEST(paths, "paths");
}

void TestOrderWords::trouble_isSaidWithTheLengths_data() {
    QTest::addColumn<Arrangement>("arrangement");
    QTest::addColumn<QList<qint64>>("lengths");
    QTest::addColumn<QString>("sentence");
    const auto row = [](const Arrangement &arrangement, const QList<qint64> &lengths,
                        const char *sentence) {
        QTest::newRow(sentence) << arrangement << lengths << QString::fromLatin1(sentence);
    };
    row({halves}, {8192}, "Parts: 1 of 2. Add the others.");
    row({halves}, {8192, 8192, 8192}, "Parts: 3 for 2. Remove some.");
    row({halves}, {8192, 8191},
        "The parts have different lengths (8,192, 8,191 bytes), so nothing can be joined.");
    row({wideHalves}, {8191, 8191}, "A part of 8,191 bytes makes no whole units of 16 bits.");
    row({{}, 2}, {8191}, "Bytes can be swapped in groups of 2 only; 8,191 make no whole groups.");
    row({{}, 1, false, quarters}, {8190},
        "8,190 bytes cannot be split into 4 parts of the same length.");
    row({{}, 1, false, {}, 65'536}, {3000}, "3,000 bytes cannot be repeated to fill just 64 KiB.");
    row({{}, 1, false, halves, 8192}, {6000}, "3,000 bytes cannot be repeated to fill just 8 KiB.");
    row({}, {qint64(1) << 31}, "It would be more than 1 GiB.");
}

void TestOrderWords::trouble_isSaidWithTheLengths() {
    QFETCH(Arrangement, arrangement);
    QFETCH(QList<qint64>, lengths);
    const auto arranged = canBeArranged(arrangement, lengths);
    const NoArrangement *why = arranged.failure();
    QVERIFY(why);
    QTEST(whyNotWords(*why, arrangement, lengths), "sentence");
}

QTEST_GUILESS_MAIN(TestOrderWords)
#include "tst_orderwords.moc"

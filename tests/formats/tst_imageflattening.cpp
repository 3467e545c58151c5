// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "formats/ImageFlattening.h"
#include "support/Bytes.h"

#include <QTest>

/// Bytes at addresses become an image.
class TestImageFlattening : public QObject {
    Q_OBJECT

private slots:
    void image_data();
    void image();
    void noImage_data();
    void noImage();
    void usualBase_isZeroWithinChips_data();
    void usualBase_isZeroWithinChips();
};

namespace {

AddressedBytes somePieces() {
    AddressedBytes bytes;
    bytes.put(0x12, "\x01\x02");
    bytes.put(0x16, "\x03");
    return bytes;
}

} // namespace

void TestImageFlattening::image_data() {
    QTest::addColumn<qint64>("base");
    QTest::addColumn<char>("fill");
    QTest::addColumn<QString>("picture");
    QTest::newRow("from the lowest address")
        << qint64(0x12) << '\xFF' << QStringLiteral("01 02 FF FF 03");
    QTest::newRow("from below it")
        << qint64(0x10) << '\xFF' << QStringLiteral("FF FF 01 02 FF FF 03");
    QTest::newRow("filled otherwise")
        << qint64(0x10) << '\0' << QStringLiteral("00 00 01 02 00 00 03");
    QTest::newRow("from zero") << qint64(0) << '\xFF' << QStringLiteral("FF*18 01 02 FF FF 03");
}

void TestImageFlattening::image() {
    QFETCH(qint64, base);
    QFETCH(char, fill);
    const AddressedBytes bytes = somePieces();
    QVERIFY(canBeFlattened(bytes, base));
    for (const qsizetype turn : {1, 2, 3, 1000}) {
        ImageFlattening flattening(bytes, base, fill);
        while (!flattening.advance(turn)) {
        }
        QTEST(pictureOf(flattening.image()), "picture");
    }
}

void TestImageFlattening::noImage_data() {
    QTest::addColumn<qint64>("address");
    QTest::addColumn<qint64>("base");
    QTest::addColumn<std::optional<NoImage>>("why");
    const auto row = [](const char *name, qint64 address, qint64 base, std::optional<NoImage> why) {
        QTest::newRow(name) << address << base << why;
    };
    row("no bytes", -1, 0, NoImage::NoBytes);
    row("at the base", 5, 5, std::nullopt);
    row("before the base", 5, 6, NoImage::BeforeBase);
    row("the largest", largestImage - 1, 0, std::nullopt);
    row("larger", largestImage, 0, NoImage::TooLarge);
    row("larger, but for the base", largestImage, 1, std::nullopt);
}

void TestImageFlattening::noImage() {
    QFETCH(qint64, address);
    QFETCH(qint64, base);
    AddressedBytes bytes;
    if (address >= 0)
        bytes.put(address, "x");
    const auto flattened = canBeFlattened(bytes, base);
    const NoImage *failure = flattened.failure();
    QTEST(failure ? std::optional(*failure) : std::nullopt, "why");
}

void TestImageFlattening::usualBase_isZeroWithinChips_data() {
    QTest::addColumn<qint64>("address");
    QTest::addColumn<qint64>("base");
    QTest::newRow("at zero") << qint64(0) << qint64(0);
    QTest::newRow("in the upper half of a chip") << qint64(0x8000) << qint64(0);
    QTest::newRow("the last byte of the largest chip") << qint64(0x3FFFFFF) << qint64(0);
    QTest::newRow("a microcontroller's flash") << qint64(0x8000000) << qint64(0x8000000);
}

void TestImageFlattening::usualBase_isZeroWithinChips() {
    QFETCH(qint64, address);
    AddressedBytes bytes;
    bytes.put(address, "x");
    QTEST(usualBase(bytes), "base");
}

QTEST_GUILESS_MAIN(TestImageFlattening)
#include "tst_imageflattening.moc"

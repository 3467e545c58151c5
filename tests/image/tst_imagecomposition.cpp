// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "image/ImageComposition.h"

#include "support/Bytes.h"

#include <QTest>

namespace {

constexpr auto binary = "01 02 03 04";
constexpr auto readData = "A0 A1 A2 A3 A4 A5 A6 A7";

CompositionInputs inputsWith(const QString &address, const QString &padTo, bool pad) {
    CompositionInputs inputs;
    inputs.opened_bin_data = bufferOf(binary);
    inputs.read_from_chip_data = bufferOf(readData);
    inputs.rom_start_address = address;
    inputs.pad_to = padTo;
    inputs.pad = pad;
    return inputs;
}

QStringList lines(const char *text) {
    return QString::fromLatin1(text).split(u'|');
}

} // namespace

class TestImageComposition : public QObject {
    Q_OBJECT

private slots:
    void fromTheOpenedBinary_data();
    void fromTheOpenedBinary();
    void fromTheReadData_data();
    void fromTheReadData();
    void sourceWithoutBytes_data();
    void sourceWithoutBytes();
    void defaultsGiveAnEmptyImage();
    void imageIsAlwaysANewObject();
    void inputsAreOnlyRead();
    void source_isWhoseBytesThereAre();
};

void TestImageComposition::fromTheOpenedBinary_data() {
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("padTo");
    QTest::addColumn<bool>("pad");
    QTest::addColumn<bool>("zero");
    QTest::addColumn<QString>("image");
    QTest::addColumn<QString>("log");
    const auto row = [](const char *name, const char *address, const char *padTo, bool pad,
                        bool zero, const char *image, const char *log) {
        QTest::newRow(name) << QString::fromLatin1(address) << QString::fromLatin1(padTo) << pad
                            << zero << QString::fromLatin1(image) << QString::fromLatin1(log);
    };
    row("at zero", "0000", "", false, false, "01 02 03 04",
        "have read pad_to and converted to 0|start_address is 0|"
        "filling output_data length:4 with 255|inserting opened binary:4 at 0");
    row("at 10, which is hexadecimal", "10", "", false, false, "FF*16 01 02 03 04",
        "have read pad_to and converted to 0|start_address is 16|"
        "filling output_data length:20 with 255|inserting opened binary:4 at 16");
    row("prefix, padded to a kibibyte", "0x10", "1", true, false, "FF*16 01 02 03 04 FF*1004",
        "have read pad_to and converted to 1024|start_address is 16|padding to 1024 bytes|"
        "filling output_data length:1024 with 255|inserting opened binary:4 at 16");
    row("gap and tail of zeros", "0x10", "1", true, true, "00*16 01 02 03 04 00*1004",
        "have read pad_to and converted to 1024|start_address is 16|padding to 1024 bytes|"
        "filling output_data length:1024 with 0|inserting opened binary:4 at 16");
    row("pad_to without pad", "0", "1", false, false, "01 02 03 04",
        "have read pad_to and converted to 1024|start_address is 0|"
        "filling output_data length:4 with 255|inserting opened binary:4 at 0");
    row("gap of zeros without pad", "2", "", false, true, "00 00 01 02 03 04",
        "have read pad_to and converted to 0|start_address is 2|"
        "filling output_data length:6 with 0|inserting opened binary:4 at 2");
    row("parser stops at the G", "1G", "", false, false, "FF 01 02 03 04",
        "have read pad_to and converted to 0|start_address is 1|"
        "filling output_data length:5 with 255|inserting opened binary:4 at 1");
    row("pad to 0", "0", "0", true, false, "01 02 03 04",
        "have read pad_to and converted to 0|start_address is 0|"
        "filling output_data length:4 with 255|inserting opened binary:4 at 0");
    row("pad_to smaller than the data", "0x1000", "1", true, false, "FF*4096 01 02 03 04",
        "have read pad_to and converted to 1024|start_address is 4096|"
        "filling output_data length:4100 with 255|inserting opened binary:4 at 4096");
    row("pad_to equal to the data", "0x3FC", "1", true, false, "FF*1020 01 02 03 04",
        "have read pad_to and converted to 1024|start_address is 1020|"
        "filling output_data length:1024 with 255|inserting opened binary:4 at 1020");
    row("no numbers at all", "zz", "abc", true, false, "01 02 03 04",
        "have read pad_to and converted to 0|start_address is 0|"
        "filling output_data length:4 with 255|inserting opened binary:4 at 0");
    row("negative pad_to without pad", "0", "-5", false, false, "01 02 03 04",
        "have read pad_to and converted to -5|start_address is 0|"
        "filling output_data length:4 with 255|inserting opened binary:4 at 0");
    row("pad_to that wraps round to nothing", "0", "4194304", true, false, "01 02 03 04",
        "have read pad_to and converted to 0|start_address is 0|"
        "filling output_data length:4 with 255|inserting opened binary:4 at 0");
    row("pad_to that wraps round to one kibibyte", "0", "4194305", true, false,
        "01 02 03 04 FF*1020",
        "have read pad_to and converted to 1024|start_address is 0|padding to 1024 bytes|"
        "filling output_data length:1024 with 255|inserting opened binary:4 at 0");
}

void TestImageComposition::fromTheOpenedBinary() {
    QFETCH(QString, address);
    QFETCH(QString, padTo);
    QFETCH(bool, pad);
    QFETCH(bool, zero);
    QFETCH(QString, image);
    QFETCH(QString, log);
    CompositionInputs inputs = inputsWith(address, padTo, pad);
    inputs.padWithZero = zero;
    const Composition composition = composeImage(inputs);
    QCOMPARE(pictureOf(*composition.image), image);
    QCOMPARE(composition.log, log.split(u'|'));
    QCOMPARE(composition.source, CompositionSource::OpenedBinary);
}

void TestImageComposition::fromTheReadData_data() {
    QTest::addColumn<QString>("padTo");
    QTest::addColumn<bool>("pad");
    QTest::addColumn<bool>("zero");
    QTest::addColumn<QString>("image");
    QTest::addColumn<QString>("log");
    const auto row = [](const char *name, const char *padTo, bool pad, bool zero, const char *image,
                        const char *log) {
        QTest::newRow(name) << QString::fromLatin1(padTo) << pad << zero
                            << QString::fromLatin1(image) << QString::fromLatin1(log);
    };
    row("without pad: exactly the read data, no fill line", "1", false, false,
        "A0 A1 A2 A3 A4 A5 A6 A7",
        "have read pad_to and converted to 1024|"
        "starting with read_from_chip_data which is 8 bytes");
    row("stretched: pad bytes behind the data", "1", true, false, "A0 A1 A2 A3 A4 A5 A6 A7 FF*1016",
        "have read pad_to and converted to 1024|padding to 1024 bytes|"
        "starting with read_from_chip_data which is 1024 bytes|"
        "filling output_data length:1024 with 255");
    row("stretched with zeros", "1", true, true, "A0 A1 A2 A3 A4 A5 A6 A7 00*1016",
        "have read pad_to and converted to 1024|padding to 1024 bytes|"
        "starting with read_from_chip_data which is 1024 bytes|"
        "filling output_data length:1024 with 0");
    row("pad to 0: fill line, no stretching", "0", true, false, "A0 A1 A2 A3 A4 A5 A6 A7",
        "have read pad_to and converted to 0|"
        "starting with read_from_chip_data which is 8 bytes|"
        "filling output_data length:8 with 255");
    row("no number in pad_to", "", true, true, "A0 A1 A2 A3 A4 A5 A6 A7",
        "have read pad_to and converted to 0|"
        "starting with read_from_chip_data which is 8 bytes|"
        "filling output_data length:8 with 0");
}

void TestImageComposition::fromTheReadData() {
    QFETCH(QString, padTo);
    QFETCH(bool, pad);
    QFETCH(bool, zero);
    QFETCH(QString, image);
    QFETCH(QString, log);
    // The start address must play no part, or the largest one would be refused.
    CompositionInputs inputs = inputsWith(QStringLiteral("FFFFFFFF"), padTo, pad);
    inputs.combineReadData = true;
    inputs.padWithZero = zero;
    const Composition composition = composeImage(inputs);
    QCOMPARE(pictureOf(*composition.image), image);
    QCOMPARE(composition.log, log.split(u'|'));
    QCOMPARE(composition.source, CompositionSource::ReadData);
}

void TestImageComposition::sourceWithoutBytes_data() {
    QTest::addColumn<bool>("combine");
    QTest::addColumn<QString>("read");
    QTest::addColumn<QString>("opened");
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("image");
    const QString absent = QStringLiteral("absent");
    const QString hundred = QStringLiteral("100");
    QTest::newRow("no binary") << false << absent << absent << hundred << QStringLiteral("FF*256");
    QTest::newRow("empty binary") << false << absent << QString() << hundred
                                  << QStringLiteral("FF*256");
    QTest::newRow("combining, but nothing read")
        << true << absent << QStringLiteral("01 02") << QStringLiteral("1")
        << QStringLiteral("FF 01 02");
    QTest::newRow("combining, but the read data is empty")
        << true << QString() << QStringLiteral("01 02") << QStringLiteral("1")
        << QStringLiteral("FF 01 02");
    QTest::newRow("read data, but not combining") << false << QStringLiteral("A0") << absent
                                                  << QStringLiteral("2") << QStringLiteral("FF FF");
}

void TestImageComposition::sourceWithoutBytes() {
    QFETCH(bool, combine);
    QFETCH(QString, read);
    QFETCH(QString, opened);
    QFETCH(QString, address);
    QFETCH(QString, image);
    const auto buffer = [](const QString &picture) {
        return picture == u"absent" ? ByteBuffer() : bufferOf(picture.toLatin1());
    };
    CompositionInputs inputs;
    inputs.combineReadData = combine;
    inputs.read_from_chip_data = buffer(read);
    inputs.opened_bin_data = buffer(opened);
    inputs.rom_start_address = address;
    const Composition composition = composeImage(inputs);
    QCOMPARE(pictureOf(*composition.image), image);
    QCOMPARE(composition.source, CompositionSource::OpenedBinary);
    QCOMPARE(composition.log.value(1),
             QStringLiteral("start_address is %1").arg(address.toInt(nullptr, 16)));
}

void TestImageComposition::defaultsGiveAnEmptyImage() {
    CompositionInputs inputs;
    inputs.rom_start_address = QStringLiteral("0000");
    inputs.pad_to = QStringLiteral("");
    const Composition composition = composeImage(inputs);
    QVERIFY(*composition.image);
    QCOMPARE(pictureOf(*composition.image), QString());
    QCOMPARE(composition.log,
             lines("have read pad_to and converted to 0|start_address is 0|"
                   "filling output_data length:0 with 255|inserting opened binary:0 at 0"));
}

void TestImageComposition::imageIsAlwaysANewObject() {
    CompositionInputs inputs = inputsWith(QStringLiteral("0"), QString(), false);
    inputs.combineReadData = true;
    const ByteBuffer first = *composeImage(inputs).image;
    const ByteBuffer second = *composeImage(inputs).image;
    QVERIFY(first != second);
    QVERIFY(first != inputs.read_from_chip_data);
    (*first)[0] = 'x';
    QCOMPARE(pictureOf(second), QString::fromLatin1(readData));
    QCOMPARE(pictureOf(inputs.read_from_chip_data), QString::fromLatin1(readData));
}

void TestImageComposition::inputsAreOnlyRead() {
    const CompositionInputs inputs = inputsWith(QStringLiteral("8"), QStringLiteral("1"), true);
    composeImage(inputs);
    QCOMPARE(pictureOf(inputs.opened_bin_data), QString::fromLatin1(binary));
    QCOMPARE(pictureOf(inputs.read_from_chip_data), QString::fromLatin1(readData));
}

void TestImageComposition::source_isWhoseBytesThereAre() {
    const auto sourceOf = [](const CompositionInputs &inputs) {
        return sourceOfBytes(inputs, composeImage(inputs));
    };
    CompositionInputs inputs = inputsWith(QStringLiteral("0"), QStringLiteral("1"), true);
    QVERIFY(sourceOf(inputs) == CompositionSource::OpenedBinary);
    inputs.combineReadData = true;
    QVERIFY(sourceOf(inputs) == CompositionSource::ReadData);
    inputs.read_from_chip_data = nullptr;
    QVERIFY(sourceOf(inputs) == CompositionSource::OpenedBinary);
    inputs.opened_bin_data = nullptr;
    QVERIFY(!sourceOf(inputs));
    inputs = inputsWith(QStringLiteral("0"), QStringLiteral("-1"), true);
    QVERIFY(!sourceOf(inputs)); // refused
}

QTEST_GUILESS_MAIN(TestImageComposition)
#include "tst_imagecomposition.moc"

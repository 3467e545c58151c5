// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "image/ImageComposition.h"

#include "support/Bytes.h"

#include <QTest>

#include <sys/resource.h>

using Reason = RefusedComposition::Reason;
Q_DECLARE_METATYPE(RefusedComposition::Reason)

namespace {

/// Why \a composition made no image; a size of 0 was too large for it if it made one.
RefusedComposition refusalOf(const Composition &composition) {
    const RefusedComposition *refused = composition.image.failure();
    return refused ? *refused : RefusedComposition{};
}

} // namespace

class TestImageCompositionLimits : public QObject {
    Q_OBJECT

private slots:
    void refused_data();
    void refused();
    void refusedFromReadData_namesItsSource();
    void largestImage_isComposed();
    void largeImage_isRightAtEveryBorder();
    void imageOfNothingElse_sharesTheBytesUntilAnEdit();
    void withoutMemory_isRefused();
};

void TestImageCompositionLimits::refused_data() {
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("padTo");
    QTest::addColumn<Reason>("reason");
    QTest::addColumn<qint64>("askedSize");
    QTest::addColumn<QString>("log");
    const auto row = [](const char *name, const char *address, const char *padTo, Reason reason,
                        qint64 askedSize, const char *log) {
        QTest::newRow(name) << QString::fromLatin1(address) << QString::fromLatin1(padTo) << reason
                            << askedSize << QString::fromLatin1(log);
    };
    row("negative pad_to", "0", "-1", Reason::NegativePad, -1,
        "have read pad_to and converted to -1|start_address is 0|refusing to pad to -1 bytes");
    row("far too negative pad_to", "0", "-99999999999", Reason::NegativePad, -2147483648LL,
        "have read pad_to and converted to -2147483648|start_address is 0|"
        "refusing to pad to -2147483648 bytes");
    row("pad_to that wraps round to a negative size", "0", "2097152", Reason::NegativePad,
        -2147483648LL,
        "have read pad_to and converted to -2147483648|start_address is 0|"
        "refusing to pad to -2147483648 bytes");
    row("far too large pad_to", "0", "99999999999", Reason::NegativePad, -1024,
        "have read pad_to and converted to -1024|start_address is 0|"
        "refusing to pad to -1024 bytes");
    row("pad_to of one kibibyte too much", "0", "1048577", Reason::TooLarge, 1073742848,
        "have read pad_to and converted to 1073742848|start_address is 0|"
        "refusing to compose an image of 1073742848 bytes");
    row("start address of one byte too much", "3FFFFFFD", "0", Reason::TooLarge, 1073741825,
        "have read pad_to and converted to 0|start_address is 1073741821|"
        "refusing to compose an image of 1073741825 bytes");
    row("largest start address", "FFFFFFFF", "64", Reason::TooLarge, 4294967299LL,
        "have read pad_to and converted to 65536|start_address is 4294967295|"
        "refusing to compose an image of 4294967299 bytes");
    row("start address too large for 32 bits", "123456789ABCDEF", "64", Reason::TooLarge,
        4294967299LL,
        "have read pad_to and converted to 65536|start_address is 4294967295|"
        "refusing to compose an image of 4294967299 bytes");
}

void TestImageCompositionLimits::refused() {
    QFETCH(QString, address);
    QFETCH(QString, padTo);
    QFETCH(Reason, reason);
    QFETCH(qint64, askedSize);
    QFETCH(QString, log);
    CompositionInputs inputs;
    inputs.opened_bin_data = bufferOf("01 02 03 04");
    inputs.rom_start_address = address;
    inputs.pad_to = padTo;
    inputs.pad = true;
    const Composition composition = composeImage(inputs);
    QCOMPARE(refusalOf(composition), (RefusedComposition{reason, askedSize}));
    QCOMPARE(composition.log, log.split(u'|'));
}

void TestImageCompositionLimits::refusedFromReadData_namesItsSource() {
    CompositionInputs inputs;
    inputs.read_from_chip_data = bufferOf("A0");
    inputs.combineReadData = true;
    inputs.pad_to = QStringLiteral("-1");
    inputs.pad = true;
    const Composition composition = composeImage(inputs);
    QVERIFY(!composition.image);
    QCOMPARE(composition.source, CompositionSource::ReadData);
    QCOMPARE(composition.log, QStringList({QStringLiteral("have read pad_to and converted to -1"),
                                           QStringLiteral("refusing to pad to -1 bytes")}));
}

void TestImageCompositionLimits::largestImage_isComposed() {
    CompositionInputs inputs;
    inputs.opened_bin_data = bufferOf("01");
    inputs.rom_start_address = QStringLiteral("3FFFFFFF");
    const Composition composition = composeImage(inputs);
    if (refusalOf(composition).reason == Reason::NoMemory)
        QSKIP("this machine has no gigabyte to spare");
    const QByteArray &image = **composition.image;
    QCOMPARE(image.size(), qsizetype(largestImage));
    QCOMPARE(image[largestImage - 1], '\x01');
    QCOMPARE(image[largestImage - 2], '\xff');
}

// Large images come from other memory than small ones.
void TestImageCompositionLimits::largeImage_isRightAtEveryBorder() {
    CompositionInputs inputs;
    inputs.opened_bin_data = std::make_shared<QByteArray>(5'000'000, 'b');
    inputs.rom_start_address = QString::number(3'000'001, 16);
    inputs.pad_to = QStringLiteral("16384");
    inputs.pad = true;
    QCOMPARE(pictureOf(*composeImage(inputs).image),
             QStringLiteral("FF*3000001 62*5000000 FF*8777215"));
}

void TestImageCompositionLimits::imageOfNothingElse_sharesTheBytesUntilAnEdit() {
    CompositionInputs inputs;
    inputs.opened_bin_data = std::make_shared<QByteArray>(5'000'000, 'b');
    const ByteBuffer image = *composeImage(inputs).image;
    QVERIFY(image != inputs.opened_bin_data);
    QCOMPARE(image->constData(), inputs.opened_bin_data->constData());
    image->data()[0] = 'a';
    QCOMPARE(inputs.opened_bin_data->constData()[0], 'b');
}

void TestImageCompositionLimits::withoutMemory_isRefused() {
#ifdef __SANITIZE_ADDRESS__
    QSKIP("the sanitizer needs the address space");
#endif
    rlimit previous = {};
    QCOMPARE(getrlimit(RLIMIT_AS, &previous), 0);
    const rlimit tight = {rlim_t(largestImage), previous.rlim_max};
    QCOMPARE(setrlimit(RLIMIT_AS, &tight), 0);
    CompositionInputs inputs;
    inputs.pad_to = QStringLiteral("1048576");
    inputs.pad = true;
    const Composition composition = composeImage(inputs);
    QCOMPARE(setrlimit(RLIMIT_AS, &previous), 0);
    QCOMPARE(refusalOf(composition), (RefusedComposition{Reason::NoMemory, largestImage}));
    QCOMPARE(composition.log,
             QStringList({QStringLiteral("have read pad_to and converted to 1073741824"),
                          QStringLiteral("start_address is 0"),
                          QStringLiteral("padding to 1073741824 bytes"),
                          QStringLiteral("filling output_data length:1073741824 with 255"),
                          QStringLiteral("no memory for an image of 1073741824 bytes")}));
}

QTEST_GUILESS_MAIN(TestImageCompositionLimits)
#include "tst_imagecomposition_limits.moc"

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "devices/ImageFit.h"

#include <QTest>

/// How an image compares with a chip before anything is burned.
class TestImageFit : public QObject {
    Q_OBJECT

private slots:
    void sizes_areCompared_data();
    void sizes_areCompared();
    void whatIsNotSure_isNotCompared_data();
    void whatIsNotSure_isNotCompared();
};

namespace {

using Unit = MemorySection::Unit;

std::optional<ImageFit> fit(const QByteArray &image, const QList<MemorySection> &sections) {
    DeviceDescription chip;
    chip.sections = sections;
    return fitOf(std::make_shared<QByteArray>(image), chip);
}

} // namespace

void TestImageFit::sizes_areCompared_data() {
    QTest::addColumn<int>("length");
    QTest::addColumn<QList<MemorySection>>("sections");
    QTest::addColumn<int>("excess");
    QTest::addColumn<int>("padTo");
    const auto row = [](const char *name, int length, const QList<MemorySection> &sections,
                        int excess, int padTo) {
        QTest::newRow(name) << length << sections << excess << padTo;
    };
    row("equal", 2048, {{2048, Unit::Bytes}}, 0, -1);
    row("shorter", 5, {{2048, Unit::Bytes}}, -2043, 2);
    row("longer", 2050, {{2048, Unit::Bytes}}, 2, -1);
    row("words have two bytes", 2048, {{1024, Unit::Words}}, 0, -1);
    row("shorter than the words", 2047, {{1024, Unit::Words}}, -1, 2);
    row("the first memory counts", 8193, {{8192, Unit::Bytes}, {512, Unit::Bytes}}, 1, -1);
    row("no whole number of KiB", 5, {{1536, Unit::Bytes}}, -1531, -1);
    row("more than an image can have", 5, {{qint64(1) << 31, Unit::Bytes}},
        int(5 - (qint64(1) << 31)), -1);
}

void TestImageFit::sizes_areCompared() {
    QFETCH(const int, length);
    QFETCH(const QList<MemorySection>, sections);
    QFETCH(const int, excess);
    QFETCH(const int, padTo);
    const std::optional<ImageFit> found = fit(QByteArray(length, 'x'), sections);
    QVERIFY(found);
    QCOMPARE(found->excess, excess);
    QCOMPARE(found->padTo.value_or(nextSteps::PadTo{-1}).kibibytes, padTo);
}

void TestImageFit::whatIsNotSure_isNotCompared_data() {
    QTest::addColumn<QByteArray>("image");
    QTest::addColumn<QList<MemorySection>>("sections");
    const QList<MemorySection> bytes{{2048, Unit::Bytes}};
    QTest::newRow("no bytes") << QByteArray() << bytes;
    QTest::newRow("bits") << QByteArray("x") << QList<MemorySection>{{2048, Unit::Bits}};
    QTest::newRow("no size") << QByteArray("x") << QList<MemorySection>{};
    QTest::newRow("Intel HEX") << QByteArray(":00000001FF\n") << bytes;
    QTest::newRow("S-records") << QByteArray("S9030000FC\r\n") << bytes;
}

void TestImageFit::whatIsNotSure_isNotCompared() {
    QFETCH(const QByteArray, image);
    QFETCH(const QList<MemorySection>, sections);
    QVERIFY(!fit(image, sections));
    QVERIFY(!fitOf(nullptr, DeviceDescription()));
    QVERIFY(!fitOf(std::make_shared<QByteArray>("x"), NoSuchDevice{}));
    QVERIFY(!fitOf(std::make_shared<QByteArray>("x"), {}));
}

QTEST_GUILESS_MAIN(TestImageFit)
#include "tst_image_fit.moc"

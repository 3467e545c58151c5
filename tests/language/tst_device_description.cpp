// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/DeviceDescription.h"

#include <QTest>

/// What the tool's description of a device is taken for.
class TestDeviceDescription : public QObject {
    Q_OBJECT

private slots:
    void memory_isReadInBothDialects_data();
    void memory_isReadInBothDialects();
    void memoryLine_isReadWholeOrNotAtAll_data();
    void memoryLine_isReadWholeOrNotAtAll();
    void imageLength_isThatOfTheFirstSection_data();
    void imageLength_isThatOfTheFirstSection();
    void logicIc_hasVectorsAndNoMemory();
    void secondModel_answersForTheFirst();
    void whatIsNoDescription_isToldApart_data();
    void whatIsNoDescription_isToldApart();
};

namespace {

using Unit = MemorySection::Unit;

/// A description in the words of the tool that has \a memory for its memories.
QString described(const QString &memory) {
    return QStringLiteral("Name: AT28C256\nAvailable on: TL866II, T48, T56\nMemory: %1\n"
                          "Package: DIP28\nICSP: -\nProtocol: 0x07\n"
                          "Read buffer size: 512 Bytes\nWrite buffer size: 128 Bytes\n")
        .arg(memory);
}

QString unknown(const QString &name) {
    return QStringLiteral("Device %1 not found!\n").arg(name);
}

} // namespace

void TestDeviceDescription::memory_isReadInBothDialects_data() {
    QTest::addColumn<QString>("text");
    const QString release = described(QStringLiteral("32768 Bytes"));
    QTest::newRow("0.7.3") << release;
    QTest::newRow("behind a greeting of the shell")
        << QStringLiteral("Welcome: Name is nobody\n") + release;
    QTest::newRow("with voltages") << release + QStringLiteral("*******************************\n"
                                                               "VPP programming voltage: 12V\n"
                                                               "*******************************\n");
    QTest::newRow("newer") << QStringLiteral(
        "\n---------------Chip Info----------------\n"
        "Name: AT28C256\nAvailable on: TL866II, T48, T56\nMemory: 32768 Bytes\nPackage: DIP28\n"
        "Protocol: 0x07\nRead buffer size: 512 Bytes\nWrite buffer size: 128 Bytes\n"
        "----------------------------------------\n");
    QTest::newRow("line ends of two characters")
        << QString(release).replace(QStringLiteral("\n"), QStringLiteral("\r\n"));
}

void TestDeviceDescription::memory_isReadInBothDialects() {
    QFETCH(const QString, text);
    const DeviceDescription expected{.name = QStringLiteral("AT28C256"),
                                     .sections = {{32768, Unit::Bytes}},
                                     .package = QStringLiteral("DIP28"),
                                     .programmers = QStringLiteral("TL866II, T48, T56"),
                                     .vectors = std::nullopt};
    QVERIFY(readDeviceAnswer(text, 0) == DeviceAnswer(expected));
}

void TestDeviceDescription::memoryLine_isReadWholeOrNotAtAll_data() {
    QTest::addColumn<QString>("memory");
    QTest::addColumn<QList<MemorySection>>("sections");
    const auto row = [](const char *memory, const QList<MemorySection> &sections) {
        QTest::newRow(memory) << QString::fromLatin1(memory) << sections;
    };
    row("8192 Bytes + 512 Bytes", {{8192, Unit::Bytes}, {512, Unit::Bytes}});
    row("8192 Words + 256 Bytes + 4 Bytes",
        {{8192, Unit::Words}, {256, Unit::Bytes}, {4, Unit::Bytes}});
    row("2194 Bits", {{2194, Unit::Bits}});
    for (const char *other :
         {"", "Bytes", "32768", "32768 bytes", "8 Bytes + ", "8 Bytes 9", "-8 Bytes", "0 Bytes",
          "99999999999999999999 Bytes", "9000000000000000000 Words", "8 Bytes + 3 Acres"})
        row(other, {});
}

void TestDeviceDescription::memoryLine_isReadWholeOrNotAtAll() {
    QFETCH(const QString, memory);
    QFETCH(const QList<MemorySection>, sections);
    const DeviceAnswer answer = readDeviceAnswer(described(memory), 0);
    const auto *description = std::get_if<DeviceDescription>(&answer);
    QVERIFY(description);
    QVERIFY(description->sections == sections);
    QCOMPARE(description->package, QStringLiteral("DIP28"));
}

void TestDeviceDescription::imageLength_isThatOfTheFirstSection_data() {
    QTest::addColumn<QList<MemorySection>>("sections");
    QTest::addColumn<qint64>("length");
    QTest::newRow("bytes") << QList<MemorySection>{{32768, Unit::Bytes}} << qint64(32768);
    QTest::newRow("words of 16 bits")
        << QList<MemorySection>{{32768, Unit::Words}} << qint64(65536);
    QTest::newRow("more than one")
        << QList<MemorySection>{{8192, Unit::Bytes}, {512, Unit::Bytes}} << qint64(8192);
    QTest::newRow("bits") << QList<MemorySection>{{2194, Unit::Bits}} << qint64(-1);
    QTest::newRow("none") << QList<MemorySection>{} << qint64(-1);
}

void TestDeviceDescription::imageLength_isThatOfTheFirstSection() {
    QFETCH(const QList<MemorySection>, sections);
    QFETCH(const qint64, length);
    DeviceDescription description;
    description.sections = sections;
    QCOMPARE(description.imageLength().value_or(-1), length);
}

void TestDeviceDescription::logicIc_hasVectorsAndNoMemory() {
    const DeviceAnswer answer = readDeviceAnswer(
        QStringLiteral("Name: 7400\nPackage:\t DIP14\nVCC voltage:\t 2.35V\nVector count:\t 4\n"),
        0);
    const DeviceDescription expected{.name = QStringLiteral("7400"),
                                     .sections = {},
                                     .package = QStringLiteral("DIP14"),
                                     .programmers = QString(),
                                     .vectors = 4};
    QVERIFY(answer == DeviceAnswer(expected));
}

void TestDeviceDescription::secondModel_answersForTheFirst() {
    const DeviceAnswer answer = readDeviceAnswer(
        unknown(QStringLiteral("AT28C256")) + described(QStringLiteral("32768 Bytes")), 0);
    QVERIFY(std::holds_alternative<DeviceDescription>(answer));
}

void TestDeviceDescription::whatIsNoDescription_isToldApart_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("status");
    QTest::addColumn<bool>("isUnknown");
    const QString twice = unknown(QStringLiteral("27C")) + unknown(QStringLiteral("27C"));
    QTest::newRow("unknown") << twice << 1 << true;
    QTest::newRow("unknown, with blanks") << unknown(QStringLiteral("a b")) << 1 << true;
    QTest::newRow("unknown, newer") << u'\n' + twice << 1 << true;
    QTest::newRow("no lists") << QStringLiteral("/usr/local/share/minipro/logicic.xml: No such "
                                                "file or directory\n") +
                                     twice
                              << 1 << false;
    QTest::newRow("no tool") << QStringLiteral("bash: line 1: minipro: command not found\n") << 127
                             << false;
    QTest::newRow("the last attempt could not be made") << twice << 127 << false;
    QTest::newRow("an older tool") << QStringLiteral("Unknown option.\n") << 1 << false;
    QTest::newRow("silent") << QString() << 0 << false;
    QTest::newRow("a description that failed")
        << described(QStringLiteral("32768 Bytes")) << 1 << false;
}

void TestDeviceDescription::whatIsNoDescription_isToldApart() {
    QFETCH(const QString, text);
    QFETCH(const int, status);
    QFETCH(const bool, isUnknown);
    const DeviceAnswer expected =
        isUnknown ? DeviceAnswer(NoSuchDevice{}) : DeviceAnswer(std::monostate{});
    QVERIFY(readDeviceAnswer(text, status) == expected);
}

QTEST_GUILESS_MAIN(TestDeviceDescription)
#include "tst_device_description.moc"

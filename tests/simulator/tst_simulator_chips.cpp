// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "SimulatorRun.h"

#include <QDir>
#include <QTest>

namespace {

constexpr int kib = 1024;
constexpr int mib = 1024 * kib;

/// A buffer that holds `head` and is blank from there on.
QByteArray blankAfter(const QByteArray &head, int size) {
    return head + QByteArray(size - head.size(), '\xff');
}

/// The last line of a run's messages.
QByteArray verdictOf(const Answer &answer) {
    return answer.err.trimmed().split('\n').last().split('\r').last();
}

} // namespace

/// Which chips there are, and what they hold.
class TestSimulatorChips : public QObject {
    Q_OBJECT

private slots:
    void init();

    void everyChip_hasItsSizeAndId_data();
    void everyChip_hasItsSizeAndId();
    void everyChip_isWrittenAndReadBack_data();
    void everyChip_isWrittenAndReadBack();
    void firstContent_data();
    void firstContent();
    void sample_isRecognisable();
    void chipFile_ofAnotherLength_isCutOrFilledUp();
    void chipFile_leavesNothingElseBehind();
    void read_intoAFolderThatIsNotThere_fails();

private:
    Answer write(const QString &device, const QByteArray &image, const QStringList &switches = {});

    std::unique_ptr<TestBench> bench;
};

namespace {

void addChips() {
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("block");
    QTest::addColumn<QByteArray>("id");
    QTest::addColumn<QByteArray>("voltages");
    constexpr int smallBlock = 512;
    constexpr int epromBlock = 1 * kib;
    constexpr int flashBlock = 4 * kib;
    const char *usualVoltages = "\nVPP=12.5V, VDD=5.5V, VCC=5V, Pulse=100us\n";
    const char *lowVoltages = "\nVPP=10V, VDD=4V, VCC=5V, Pulse=100us\n";
    const struct {
        const char *name;
        int size;
        int block;
        const char *id;
        const char *voltages = "";
    } chips[] = {
        {"AT24C01", 128, smallBlock, ""},
        {"AT24C02", 256, smallBlock, ""},
        {"AT24C04", 512, smallBlock, ""},
        {"AT24C08", 1 * kib, smallBlock, ""},
        {"AT24C16", 2 * kib, smallBlock, ""},
        {"AT24C32", 4 * kib, smallBlock, ""},
        {"AT24C64", 8 * kib, smallBlock, ""},
        {"AT24C128", 16 * kib, smallBlock, ""},
        {"AT24C256", 32 * kib, smallBlock, ""},
        {"AT24C512", 64 * kib, smallBlock, ""},
        {"24C02", 256, smallBlock, ""},
        {"24LC64", 8 * kib, smallBlock, ""},
        {"24LC256", 32 * kib, smallBlock, ""},
        {"AT24C1024", 128 * kib, smallBlock, ""},
        {"25LC010A", 128, smallBlock, ""},
        {"25LC640", 8 * kib, smallBlock, ""},
        {"25LC1024", 128 * kib, smallBlock, ""},
        {"AT28C04@DIP24", 512, smallBlock, ""},
        {"AT28C16@DIP24", 2 * kib, smallBlock, ""},
        {"AT28C64", 8 * kib, smallBlock, ""},
        {"AT28C64B", 8 * kib, smallBlock, ""},
        {"AT28C256", 32 * kib, smallBlock, ""},
        {"X28C64", 8 * kib, smallBlock, ""},
        {"X28C256", 32 * kib, smallBlock, ""},
        {"CAT28C256", 32 * kib, smallBlock, ""},
        {"AT28C010", 128 * kib, smallBlock, ""},
        {"W27E257@DIP28", 32 * kib, epromBlock, "0xDA02"},
        {"W27C512@DIP28", 64 * kib, epromBlock, "0xDA08"},
        {"W27E512@DIP28", 64 * kib, epromBlock, "0xDA08"},
        {"AM27C64@DIP28", 8 * kib, epromBlock, "0x0115", usualVoltages},
        {"AM27C128@DIP28", 16 * kib, epromBlock, "0x0116", usualVoltages},
        {"AM27C256@DIP28", 32 * kib, epromBlock, "0x0110", usualVoltages},
        {"AM27C512@DIP28", 64 * kib, epromBlock, "0x0191", usualVoltages},
        {"AM27C010@DIP32", 128 * kib, epromBlock, "0x010E", usualVoltages},
        {"AM27C020@DIP32", 256 * kib, epromBlock, "0x0197", usualVoltages},
        {"AM27C040@DIP32", 512 * kib, epromBlock, "0x019B", usualVoltages},
        {"AT27C256R@DIP28", 32 * kib, epromBlock, "0x1E8C", usualVoltages},
        {"M27C256B@DIP28", 32 * kib, epromBlock, "0x208D", usualVoltages},
        {"M27C512@DIP28", 64 * kib, epromBlock, "0x203D", lowVoltages},
        {"M27C1001@DIP32", 128 * kib, epromBlock, "0x2005", usualVoltages},
        {"M27C2001@DIP32", 256 * kib, epromBlock, "0x2061", usualVoltages},
        {"M27C4001@PLCC32", 512 * kib, epromBlock, "0x2041", usualVoltages},
        {"AM29F010@DIP32", 128 * kib, epromBlock, "0x0120"},
        {"AM29F002T@DIP32", 256 * kib, epromBlock, "0x01B0"},
        {"AM29F040@DIP32", 512 * kib, epromBlock, "0x01A4"},
        {"MX29F040@DIP32", 512 * kib, epromBlock, "0xC2A4"},
        {"SST39SF010A", 128 * kib, epromBlock, "0xBFB5"},
        {"SST39SF020A", 256 * kib, epromBlock, "0xBFB6"},
        {"SST39SF040", 512 * kib, epromBlock, "0xBFB7"},
        {"AT29C256@DIP28", 32 * kib, epromBlock, "0x1FDC"},
        {"AT29C010A", 128 * kib, epromBlock, "0x1FD5"},
        {"AT29C040A", 512 * kib, epromBlock, "0x1FA4"},
        {"W25Q80BV", 1 * mib, flashBlock, "0xEF4014"},
        {"W25Q16BV", 2 * mib, flashBlock, "0xEF4015"},
        {"W25Q32BV", 4 * mib, flashBlock, "0xEF4016"},
        {"W25Q32JV", 4 * mib, flashBlock, "0xEF4016"},
        {"W25Q64FV", 8 * mib, flashBlock, "0xEF4017"},
        {"W25Q128FV@SOIC8", 16 * mib, flashBlock, "0xEF4018"},
        {"GD25Q64C(OTP)@SOIC8", 8 * mib, flashBlock, ""}, // known by its naming scheme
        {"93LC66(x16)", 512, smallBlock, ""},
        {"AM27C64@PLCC32", 8 * kib, epromBlock, "", usualVoltages},
    };
    for (const auto &chip : chips)
        QTest::newRow(chip.name) << chip.size << chip.block << QByteArray(chip.id)
                                 << QByteArray(chip.voltages);
}

QByteArray idLine(const QByteArray &id) {
    return id.isEmpty() ? id : "Chip ID: " + id + "  OK\n";
}

} // namespace

void TestSimulatorChips::init() {
    bench = std::make_unique<TestBench>();
}

Answer TestSimulatorChips::write(const QString &device, const QByteArray &image,
                                 const QStringList &switches) {
    const QString file = bench->makeFile(QStringLiteral("image.bin"), image);
    return bench->run(QStringList{QStringLiteral("-p"), device, QStringLiteral("-w"), file} +
                      switches);
}

void TestSimulatorChips::everyChip_hasItsSizeAndId_data() {
    addChips();
}

void TestSimulatorChips::everyChip_hasItsSizeAndId() {
    QFETCH(int, size);
    QFETCH(int, block);
    QFETCH(QByteArray, id);
    QFETCH(QByteArray, voltages);
    const QString device = QString::fromLatin1(QTest::currentDataTag());
    const int blocks = (size + block - 1) / block;
    QCOMPARE(bench->run({QStringLiteral("-p"), device, QStringLiteral("-r"),
                         bench->path(QStringLiteral("read.bin"))}),
             (Answer{0, {}, bannerText() + voltages + idLine(id) + readingText(blocks)}));
    QCOMPARE(bench->contentOf(QStringLiteral("read.bin")).size(), size);
}

void TestSimulatorChips::everyChip_isWrittenAndReadBack_data() {
    addChips();
}

void TestSimulatorChips::everyChip_isWrittenAndReadBack() {
    QFETCH(int, size);
    const QString device = QString::fromLatin1(QTest::currentDataTag());
    QByteArray image(size, '\x5a');
    image[0] = '\x00';
    image[size - 1] = '\xa5';
    QCOMPARE(verdictOf(write(device, image)), QByteArray("Verification OK"));
    QVERIFY(bench->readChip(device) == image);
}

void TestSimulatorChips::firstContent_data() {
    QTest::addColumn<QString>("chips");
    QTest::addColumn<QString>("device");
    QTest::addColumn<bool>("blank");
    QTest::newRow("flash holds sample text")
        << QStringLiteral("") << QStringLiteral("AM29F010@DIP32") << false;
    QTest::newRow("UV EPROM is blank")
        << QStringLiteral("auto") << QStringLiteral("AM27C256@DIP28") << true;
    QTest::newRow("UV EPROM can hold sample text")
        << QStringLiteral("sample") << QStringLiteral("AM27C256@DIP28") << false;
    QTest::newRow("flash can be blank")
        << QStringLiteral("blank") << QStringLiteral("AM29F010@DIP32") << true;
}

void TestSimulatorChips::firstContent() {
    QFETCH(QString, chips);
    QFETCH(QString, device);
    QFETCH(bool, blank);
    bench->set(QStringLiteral("CHIPS"), chips);
    const QByteArray content = bench->readChip(device);
    QCOMPARE(content == QByteArray(content.size(), '\xff'), blank);
    QCOMPARE(content.startsWith("Sample content"), !blank);
}

void TestSimulatorChips::sample_isRecognisable() {
    const QByteArray content = bench->readChip(QStringLiteral("W27C512@DIP28"));
    QCOMPARE(content.size(), 65'536);
    QVERIFY(content.startsWith("Sample content of the simulated chip W27C512@DIP28, 65536 bytes."));
    QByteArray everyByte;
    for (int value = 0; value < 256; ++value)
        everyByte += char(value);
    QCOMPARE(content.mid(256, 256), everyByte);
    QCOMPARE(content.mid(0x8000, 32), QByteArray("addr 0x00008000\naddr 0x00008010\n"));
    QCOMPARE(content.right(16), QByteArray("addr 0x0000FFF0\n"));
}

void TestSimulatorChips::chipFile_ofAnotherLength_isCutOrFilledUp() {
    bench->makeFile(QStringLiteral("bench/AT24C02.bin"), "short");
    QCOMPARE(bench->readChip(QStringLiteral("AT24C02")), blankAfter("short", 256));
    bench->makeFile(QStringLiteral("bench/AT24C02.bin"), QByteArray(300, 'x'));
    QCOMPARE(bench->readChip(QStringLiteral("AT24C02")), QByteArray(256, 'x'));
}

void TestSimulatorChips::chipFile_leavesNothingElseBehind() {
    write(QStringLiteral("AT24C02"), QByteArray(256, 'x'));
    QCOMPARE(bench->readChip(QStringLiteral("93LC66X*")).size(), 512);
    QCOMPARE(QDir(bench->path(QStringLiteral("bench"))).entryList(QDir::Files),
             (QStringList{QStringLiteral("93LC66X_.bin"), QStringLiteral("AT24C02.bin")}));
}

void TestSimulatorChips::read_intoAFolderThatIsNotThere_fails() {
    const QString file = bench->path(QStringLiteral("nowhere/read.bin"));
    QCOMPARE(
        bench->run({QStringLiteral("-p"), QStringLiteral("AT24C02"), QStringLiteral("-r"), file}),
        (Answer{1,
                {},
                bannerText() + "Could not open file " + file.toUtf8() +
                    " for writing.\nNo such file or directory\n"}));
}

QTEST_GUILESS_MAIN(TestSimulatorChips)
#include "tst_simulator_chips.moc"

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "SimulatorRun.h"

#include <QTest>

namespace {

constexpr int chipSize = 256;

/// The chip's content when it begins with `head` and is blank from there on.
QByteArray blankAfter(const QByteArray &head) {
    return head + QByteArray(chipSize - head.size(), '\xff');
}

} // namespace

/// How a write and a verify take their file: as it stands, or as Intel HEX or S-record.
class TestSimulatorImages : public QObject {
    Q_OBJECT

private slots:
    void init();

    void records_data();
    void records();
    void brokenRecords_data();
    void brokenRecords();
    void bytesThatBeginLikeARecord_data();
    void bytesThatBeginLikeARecord();
    void unusableFiles_data();
    void unusableFiles();
    void standardInput_isAFile();
    void shortFile_isVerifiedAsFarAsItGoes();
    void shortFile_leavesTheRestOfTheChip();
    void formats_areReadBack_data();
    void formats_areReadBack();
    void largeImages_areReadBack_data();
    void largeImages_areReadBack();

private:
    Answer write(const QByteArray &content, const QStringList &switches = {}) const {
        const QString file = bench->makeFile(QStringLiteral("image.any"), content);
        return bench->run(
            QStringList{QStringLiteral("-p"), QStringLiteral("24C02"), QStringLiteral("-w"), file} +
            switches);
    }
    [[nodiscard]] QByteArray chip() const {
        return bench->contentOf(QStringLiteral("bench/24C02.bin"));
    }

    std::unique_ptr<TestBench> bench;
};

namespace {

const QByteArray hexFound = "Found Intel hex file.\n";
const QByteArray recordsFound = "Found Motorola S-Record file.\n";
const QByteArray written = writingText(32) + readingText(1) + "Verification OK\n";
const QByteArray hexEnd = ":00000001FF\n";

} // namespace

void TestSimulatorImages::init() {
    bench = std::make_unique<TestBench>();
}

void TestSimulatorImages::records_data() {
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QByteArray>("said");
    QTest::addColumn<QByteArray>("head");
    QTest::newRow("Intel HEX") << ":0300000041424337\n" + hexEnd << hexFound << QByteArray("ABC");
    QTest::newRow("lower case, CR LF, no line end at the end")
        << QByteArray(":03000000616263d7\r\n:00000001ff") << hexFound << QByteArray("abc");
    QTest::newRow("line ends first, empty lines between")
        << "\r\n\n:0100000041BE\n\n" + hexEnd << hexFound << QByteArray("A");
    QTest::newRow("a gap stays blank") << ":0100000041BE\n:0100020042BB\n" + hexEnd << hexFound
                                       << QByteArray("A\xff"
                                                     "B");
    QTest::newRow("segment address")
        << ":020000020001FB\n:0100000041BE\n" + hexEnd << hexFound << QByteArray(16, '\xff') + 'A';
    QTest::newRow("beyond the chip")
        << ":020000040001F9\n:0100000041BE\n" + hexEnd << hexFound << QByteArray();
    QTest::newRow("over the chip's end")
        << ":0200FF0041427C\n" + hexEnd << hexFound << QByteArray(255, '\xff') + 'A';
    QTest::newRow("start address")
        << ":0400000500000000F7\n:0100000041BE\n" + hexEnd << hexFound << QByteArray("A");
    QTest::newRow("nothing behind the end counts") << ":0100000041BE\n" + hexEnd + ":garbage\n"
                                                   << hexFound << QByteArray("A");
    QTest::newRow("S-record") << QByteArray("S106000041424333\nS9030000FC\n") << recordsFound
                              << QByteArray("ABC");
    QTest::newRow("S-record with a heading")
        << QByteArray("S00600004844521B\nS106000041424333\nS9030000FC\n") << "HDR\n" + recordsFound
        << QByteArray("ABC");
    QTest::newRow("addresses of three and four bytes")
        << QByteArray("S20500000041B9\nS3060000000142B6\nS70500000000FA\n") << recordsFound
        << QByteArray("AB");
}

void TestSimulatorImages::records() {
    QFETCH(QByteArray, file);
    QFETCH(QByteArray, said);
    QFETCH(QByteArray, head);
    QCOMPARE(write(file), (Answer{0, {}, bannerText() + said + written}));
    QCOMPARE(chip(), blankAfter(head));
}

void TestSimulatorImages::brokenRecords_data() {
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QByteArray>("complaint");
    QTest::newRow("checksum") << ":0100000041BF\n" + hexEnd
                              << QByteArray("Error on line 1: bad checksum.");
    QTest::newRow("checksum in the third line") << ":0100000041BE\r\n\r\n:0100000041BF\r\n" + hexEnd
                                                << QByteArray("Error on line 3: bad checksum.");
    QTest::newRow("count") << ":0200000041BD\n" + hexEnd
                           << QByteArray("Error on line 1: bad count.");
    QTest::newRow("no digits at all")
        << QByteArray(":\n") << QByteArray("Error on line 1: bad count.");
    QTest::newRow("odd digit") << ":0100000041BE0\n" + hexEnd
                               << QByteArray("Error on line 1: bad count.");
    QTest::newRow("type") << ":0100000641B8\n" + hexEnd
                          << QByteArray("Error on line 1: bad record type.");
    QTest::newRow("another kind of line")
        << ":0100000041BE\nnonsense\n" + hexEnd << QByteArray("Error on line 2: bad record type.");
    QTest::newRow("no end") << QByteArray(":0100000041BE\n")
                            << QByteArray("Error: no end of file record found.");
    QTest::newRow("S-record checksum")
        << QByteArray("S104000041BB\nS9030000FC\n") << QByteArray("Error on line 1: bad checksum.");
    QTest::newRow("S-record count")
        << QByteArray("S105000041BA\nS9030000FC\n") << QByteArray("Error on line 1: bad count.");
    QTest::newRow("S-record type") << QByteArray("S404000041BA\nS9030000FC\n")
                                   << QByteArray("Error on line 1: bad record type.");
    QTest::newRow("S-record without an end")
        << QByteArray("S104000041BA\n") << QByteArray("Error: no end of file record found.");
}

void TestSimulatorImages::brokenRecords() {
    QFETCH(QByteArray, file);
    QFETCH(QByteArray, complaint);
    const QByteArray before = bench->readChip(QStringLiteral("24C02"));
    QCOMPARE(write(file, {QStringLiteral("-s")}), (Answer{1, {}, bannerText() + complaint + "\n"}));
    QCOMPARE(chip(), before);
}

void TestSimulatorImages::bytesThatBeginLikeARecord_data() {
    QTest::addColumn<QByteArray>("head");
    QTest::newRow("a colon and a letter") << QByteArray(":hello\n");
    QTest::newRow("an S and a letter") << QByteArray("Sorry\n");
    QTest::newRow("a blank before the colon") << " " + hexEnd;
    QTest::newRow("digits, then none before the line ends") << QByteArray(":0100 \n");
}

void TestSimulatorImages::bytesThatBeginLikeARecord() {
    QFETCH(QByteArray, head);
    QCOMPARE(write(blankAfter(head)), (Answer{0, {}, bannerText() + written}));
    QCOMPARE(chip(), blankAfter(head));
}

void TestSimulatorImages::unusableFiles_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("said");
    QTest::newRow("empty") << QStringLiteral("empty.bin") << QByteArray("No data to read.\n");
    QTest::newRow("folder") << QStringLiteral(".") << QByteArray("No data to read.\n");
    QTest::newRow("missing") << QStringLiteral("nofile")
                             << QByteArray("Could not open file nofile for reading.\n"
                                           "No such file or directory\n");
}

void TestSimulatorImages::unusableFiles() {
    QFETCH(QString, name);
    QFETCH(QByteArray, said);
    bench->makeFile(QStringLiteral("empty.bin"), {});
    for (const QString &action : {QStringLiteral("-w"), QStringLiteral("-m")})
        QCOMPARE(bench->run({QStringLiteral("-p"), QStringLiteral("24C02"), action, name,
                             QStringLiteral("-s")}),
                 (Answer{1, {}, bannerText() + said}));
}

void TestSimulatorImages::standardInput_isAFile() {
    const QByteArray image = blankAfter("from a pipe");
    QCOMPARE(bench->run({QStringLiteral("-p"), QStringLiteral("24C02"), QStringLiteral("-w"),
                         QStringLiteral("-")},
                        image),
             (Answer{0, {}, bannerText() + written}));
    QCOMPARE(bench->run({QStringLiteral("-p"), QStringLiteral("24C02"), QStringLiteral("-r"),
                         QStringLiteral("-")}),
             (Answer{0, image, bannerText() + readingText(1)}));
}

void TestSimulatorImages::shortFile_isVerifiedAsFarAsItGoes() {
    bench->makeFile(QStringLiteral("bench/AT28C256.bin"), QByteArray(32'768, 'x'));
    const QString file = bench->makeFile(QStringLiteral("short.bin"), QByteArray(1000, 'x'));
    QCOMPARE(bench->run({QStringLiteral("-p"), QStringLiteral("AT28C256"), QStringLiteral("-m"),
                         file, QStringLiteral("-S")}),
             (Answer{0, {}, bannerText() + readingText(64) + "Verification OK\n"}));
}

void TestSimulatorImages::shortFile_leavesTheRestOfTheChip() {
    bench->makeFile(QStringLiteral("bench/AT28C256.bin"), QByteArray(32'768, 'o'));
    const QString file = bench->makeFile(QStringLiteral("short.bin"), QByteArray(1000, 'x'));
    QCOMPARE(bench
                 ->run({QStringLiteral("-p"), QStringLiteral("AT28C256"), QStringLiteral("-w"),
                        file, QStringLiteral("-S"), QStringLiteral("-e")})
                 .status,
             0);
    QCOMPARE(bench->contentOf(QStringLiteral("bench/AT28C256.bin")),
             QByteArray(1000, 'x') + QByteArray(24, '\xff') + QByteArray(32'768 - 1024, 'o'));
}

void TestSimulatorImages::formats_areReadBack_data() {
    QTest::addColumn<QString>("format");
    QTest::addColumn<QByteArray>("firstLine");
    QTest::newRow("Intel HEX") << QStringLiteral("ihex")
                               << QByteArray(":10000000000102030405060708090A0B0C0D0E0F78");
    QTest::newRow("S-record") << QStringLiteral("SREC")
                              << QByteArray("S1130000000102030405060708090A0B0C0D0E0F74");
}

void TestSimulatorImages::formats_areReadBack() {
    QFETCH(QString, format);
    QFETCH(QByteArray, firstLine);
    QByteArray content;
    for (int i = 0; i < chipSize; ++i)
        content += char(i);
    bench->makeFile(QStringLiteral("bench/24C02.bin"), content);
    const QString file = bench->path(QStringLiteral("read.txt"));
    QCOMPARE(bench->run({QStringLiteral("-p"), QStringLiteral("24C02"), QStringLiteral("-f"),
                         format, QStringLiteral("-r"), file}),
             (Answer{0, {}, bannerText() + readingText(1)}));
    QCOMPARE(bench->contentOf(QStringLiteral("read.txt")).split('\n').first(), firstLine);
    bench->makeFile(QStringLiteral("bench/24C02.bin"), {});
    QCOMPARE(bench->run({QStringLiteral("-p"), QStringLiteral("24C02"), QStringLiteral("-w"), file})
                 .status,
             0);
    QCOMPARE(chip(), content);
}

void TestSimulatorImages::largeImages_areReadBack_data() {
    QTest::addColumn<QString>("format");
    QTest::newRow("Intel HEX") << QStringLiteral("ihex");
    QTest::newRow("S-record") << QStringLiteral("srec");
}

// Addresses of more than 16 bits.
void TestSimulatorImages::largeImages_areReadBack() {
    QFETCH(QString, format);
    const QString device = QStringLiteral("W25Q80BV");
    const QString file = bench->path(QStringLiteral("read.txt"));
    QCOMPARE(bench
                 ->run({QStringLiteral("-p"), device, QStringLiteral("-f"), format,
                        QStringLiteral("-r"), file})
                 .status,
             0);
    const Answer answer = bench->run({QStringLiteral("-p"), device, QStringLiteral("-m"), file});
    QCOMPARE(answer.status, 0);
    QVERIFY(answer.err.endsWith("Verification OK\n"));
    QVERIFY(answer.err.contains(" file.\n"));
}

QTEST_GUILESS_MAIN(TestSimulatorImages)
#include "tst_simulator_images.moc"

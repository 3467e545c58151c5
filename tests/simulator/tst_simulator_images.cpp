// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "SimulatorRun.h"

#include <QTest>

using namespace Qt::StringLiterals;

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
        const QString file = bench->makeFile(u"image.any"_s, content);
        return bench->run(QStringList{u"-p"_s, u"24C02"_s, u"-w"_s, file} + switches);
    }
    [[nodiscard]] QByteArray chip() const { return bench->contentOf(u"bench/24C02.bin"_s); }

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
    const QByteArray before = bench->readChip(u"24C02"_s);
    QCOMPARE(write(file, {u"-s"_s}), (Answer{1, {}, bannerText() + complaint + "\n"}));
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
    QTest::newRow("empty") << u"empty.bin"_s << QByteArray("No data to read.\n");
    QTest::newRow("folder") << u"."_s << QByteArray("No data to read.\n");
    QTest::newRow("missing") << u"nofile"_s
                             << QByteArray("Could not open file nofile for reading.\n"
                                           "No such file or directory\n");
}

void TestSimulatorImages::unusableFiles() {
    QFETCH(QString, name);
    QFETCH(QByteArray, said);
    bench->makeFile(u"empty.bin"_s, {});
    for (const QString &action : {u"-w"_s, u"-m"_s})
        QCOMPARE(bench->run({u"-p"_s, u"24C02"_s, action, name, u"-s"_s}),
                 (Answer{1, {}, bannerText() + said}));
}

void TestSimulatorImages::standardInput_isAFile() {
    const QByteArray image = blankAfter("from a pipe");
    QCOMPARE(bench->run({u"-p"_s, u"24C02"_s, u"-w"_s, u"-"_s}, image),
             (Answer{0, {}, bannerText() + written}));
    QCOMPARE(bench->run({u"-p"_s, u"24C02"_s, u"-r"_s, u"-"_s}),
             (Answer{0, image, bannerText() + readingText(1)}));
}

void TestSimulatorImages::shortFile_isVerifiedAsFarAsItGoes() {
    bench->makeFile(u"bench/AT28C256.bin"_s, QByteArray(32'768, 'x'));
    const QString file = bench->makeFile(u"short.bin"_s, QByteArray(1000, 'x'));
    QCOMPARE(bench->run({u"-p"_s, u"AT28C256"_s, u"-m"_s, file, u"-S"_s}),
             (Answer{0, {}, bannerText() + readingText(64) + "Verification OK\n"}));
}

void TestSimulatorImages::shortFile_leavesTheRestOfTheChip() {
    bench->makeFile(u"bench/AT28C256.bin"_s, QByteArray(32'768, 'o'));
    const QString file = bench->makeFile(u"short.bin"_s, QByteArray(1000, 'x'));
    QCOMPARE(bench->run({u"-p"_s, u"AT28C256"_s, u"-w"_s, file, u"-S"_s, u"-e"_s}).status, 0);
    QCOMPARE(bench->contentOf(u"bench/AT28C256.bin"_s),
             QByteArray(1000, 'x') + QByteArray(24, '\xff') + QByteArray(32'768 - 1024, 'o'));
}

void TestSimulatorImages::formats_areReadBack_data() {
    QTest::addColumn<QString>("format");
    QTest::addColumn<QByteArray>("firstLine");
    QTest::newRow("Intel HEX") << u"ihex"_s
                               << QByteArray(":10000000000102030405060708090A0B0C0D0E0F78");
    QTest::newRow("S-record") << u"SREC"_s
                              << QByteArray("S1130000000102030405060708090A0B0C0D0E0F74");
}

void TestSimulatorImages::formats_areReadBack() {
    QFETCH(QString, format);
    QFETCH(QByteArray, firstLine);
    QByteArray content;
    for (int i = 0; i < chipSize; ++i)
        content += char(i);
    bench->makeFile(u"bench/24C02.bin"_s, content);
    const QString file = bench->path(u"read.txt"_s);
    QCOMPARE(bench->run({u"-p"_s, u"24C02"_s, u"-f"_s, format, u"-r"_s, file}),
             (Answer{0, {}, bannerText() + readingText(1)}));
    QCOMPARE(bench->contentOf(u"read.txt"_s).split('\n').first(), firstLine);
    bench->makeFile(u"bench/24C02.bin"_s, {});
    QCOMPARE(bench->run({u"-p"_s, u"24C02"_s, u"-w"_s, file}).status, 0);
    QCOMPARE(chip(), content);
}

void TestSimulatorImages::largeImages_areReadBack_data() {
    QTest::addColumn<QString>("format");
    QTest::newRow("Intel HEX") << u"ihex"_s;
    QTest::newRow("S-record") << u"srec"_s;
}

/// Addresses of more than 16 bits.
void TestSimulatorImages::largeImages_areReadBack() {
    QFETCH(QString, format);
    const QString device = u"W25Q80BV"_s;
    const QString file = bench->path(u"read.txt"_s);
    QCOMPARE(bench->run({u"-p"_s, device, u"-f"_s, format, u"-r"_s, file}).status, 0);
    const Answer answer = bench->run({u"-p"_s, device, u"-m"_s, file});
    QCOMPARE(answer.status, 0);
    QVERIFY(answer.err.endsWith("Verification OK\n"));
    QVERIFY(answer.err.contains(" file.\n"));
}

QTEST_GUILESS_MAIN(TestSimulatorImages)
#include "tst_simulator_images.moc"

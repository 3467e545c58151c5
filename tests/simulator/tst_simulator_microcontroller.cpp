// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "SimulatorRun.h"

#include <QDir>
#include <QTest>

namespace {

const QString device = QStringLiteral("ATMEGA8@DIP28");
const QString withUserMemory = QStringLiteral("AT89S8253");
constexpr int codeSize = 8 * 1024;
constexpr int dataSize = 512;
const QByteArray head = bannerText() + "Chip ID: 0x1E9307  OK\n";
const QByteArray readData = progressText("Reading Data...  ", "Reading Data...  ", 1);
const QByteArray readFuses = "Reading config... T  OK\n";
const QByteArray factoryFuses = "fuses_lo = 0x62\nfuses_hi = 0xdf\nlock_byte = 0xff\n";

} // namespace

/// Chips with more than code memory: what a read leaves beside its file, and -c.
class TestSimulatorMicrocontroller : public QObject {
    Q_OBJECT

private slots:
    void init() { bench = std::make_unique<TestBench>(); }

    void read_takesEveryMemory();
    void read_ofOneMemory_leavesTheOthers_data();
    void read_ofOneMemory_leavesTheOthers();
    void read_endsNamesAtTheLastDotOfThePath();
    void write_ofDataAndFuses_isReadBack();
    void write_withoutAMemory_isOfCode();
    void fuses_haveToBeNamedAll();
    void fuses_inTheNewDialect();
    void description_namesBothMemories();
    void userMemory_isReadWithTheOthers();
    void userMemory_isWrittenAlone();

private:
    [[nodiscard]] Answer run(const QString &words) const {
        return bench->run(QStringList{QStringLiteral("-p"), device} + words.split(u' '));
    }

    std::unique_ptr<TestBench> bench;
};

void TestSimulatorMicrocontroller::read_takesEveryMemory() {
    bench->makeFile(QStringLiteral("read.eeprom.bin"), "older");
    QCOMPARE(run(QStringLiteral("-r read.bin")),
             (Answer{0, {}, head + readingText(8) + readData + readFuses}));
    QCOMPARE(bench->contentOf(QStringLiteral("read.bin")).size(), codeSize);
    QCOMPARE(bench->contentOf(QStringLiteral("read.eeprom.bin")).size(), dataSize);
    QCOMPARE(bench->contentOf(QStringLiteral("read.fuses.conf")), factoryFuses);
}

void TestSimulatorMicrocontroller::read_ofOneMemory_leavesTheOthers_data() {
    QTest::addColumn<QString>("section");
    QTest::addColumn<QByteArray>("said");
    QTest::addColumn<int>("size");
    QTest::newRow("code") << QStringLiteral("code") << readingText(8) << codeSize;
    QTest::newRow("data") << QStringLiteral("data") << readData << dataSize;
    QTest::newRow("config") << QStringLiteral("config") << readFuses << int(factoryFuses.size());
}

void TestSimulatorMicrocontroller::read_ofOneMemory_leavesTheOthers() {
    QFETCH(QString, section);
    QFETCH(QByteArray, said);
    QFETCH(int, size);
    QCOMPARE(run(QStringLiteral("-r read.bin -c ") + section), (Answer{0, {}, head + said}));
    QCOMPARE(bench->contentOf(QStringLiteral("read.bin")).size(), size);
    QCOMPARE(QDir(bench->path(QStringLiteral("."))).entryList(QDir::Files),
             QStringList{QStringLiteral("read.bin")});
}

void TestSimulatorMicrocontroller::read_endsNamesAtTheLastDotOfThePath() {
    QDir(bench->path(QStringLiteral("."))).mkdir(QStringLiteral("a.folder"));
    QCOMPARE(run(QStringLiteral("-r a.folder/read")).status, 0);
    QCOMPARE(bench->contentOf(QStringLiteral("a.folder/read")).size(), codeSize);
    QCOMPARE(bench->contentOf(QStringLiteral("a.eeprom.bin")).size(), dataSize);
}

void TestSimulatorMicrocontroller::write_ofDataAndFuses_isReadBack() {
    const QByteArray data(dataSize, 'd');
    bench->makeFile(QStringLiteral("data.bin"), data);
    QCOMPARE(run(QStringLiteral("-w data.bin -c data")),
             (Answer{0,
                     {},
                     head + progressText("Writing  Data...  ", "Writing Data...  ", 64) + readData +
                         "Verification OK\n"}));
    bench->makeFile(QStringLiteral("fuses.conf"),
                    "lock_byte=0xFC\nfuses_hi = 0xd9\nfuses_lo = 0xe4\n");
    QCOMPARE(run(QStringLiteral("-w fuses.conf -c config")),
             (Answer{0, {}, head + "Writing fuses... T  OK\n"}));
    QCOMPARE(run(QStringLiteral("-r read.bin")).status, 0);
    QCOMPARE(bench->contentOf(QStringLiteral("read.eeprom.bin")), data);
    QCOMPARE(bench->contentOf(QStringLiteral("read.fuses.conf")),
             QByteArray("fuses_lo = 0xe4\nfuses_hi = 0xd9\nlock_byte = 0xfc\n"));
}

void TestSimulatorMicrocontroller::write_withoutAMemory_isOfCode() {
    bench->makeFile(QStringLiteral("code.bin"), QByteArray(codeSize, 'c'));
    QCOMPARE(run(QStringLiteral("-w code.bin")),
             (Answer{0,
                     {},
                     head + "Erasing... T OK\n" + writingText(64) + readingText(8) +
                         "Verification OK\n"}));
    QCOMPARE(run(QStringLiteral("-m code.bin")),
             (Answer{0, {}, head + readingText(8) + "Verification OK\n"}));
}

void TestSimulatorMicrocontroller::fuses_haveToBeNamedAll() {
    bench->makeFile(QStringLiteral("fuses.conf"), "fuses_lo = 0xe4\n");
    QCOMPARE(run(QStringLiteral("-w fuses.conf -c config")),
             (Answer{1, {}, head + "Could not read config fuses_hi value.\n"}));
    QCOMPARE(run(QStringLiteral("-r read.conf -c config")).status, 0);
    QCOMPARE(bench->contentOf(QStringLiteral("read.conf")), factoryFuses);
}

void TestSimulatorMicrocontroller::fuses_inTheNewDialect() {
    bench->set(QStringLiteral("DIALECT"), QStringLiteral("new"));
    QCOMPARE(run(QStringLiteral("-r read.conf -c config")).status, 0);
    QCOMPARE(bench->contentOf(QStringLiteral("read.conf")),
             QByteArray(factoryFuses).replace(" = ", "="));
}

void TestSimulatorMicrocontroller::description_namesBothMemories() {
    QVERIFY(bench->run({QStringLiteral("-q"), QStringLiteral("t48"), QStringLiteral("-d"), device})
                .err.contains("\nMemory: 8192 Bytes + 512 Bytes\n"));
}

void TestSimulatorMicrocontroller::userMemory_isReadWithTheOthers() {
    QCOMPARE(bench->run({QStringLiteral("-p"), withUserMemory, QStringLiteral("-r"),
                         QStringLiteral("read.bin")}),
             (Answer{0,
                     {},
                     bannerText() + "Chip ID: 0x1E73  OK\n" + readingText(12) +
                         progressText("Reading Data...  ", "Reading Data...  ", 4) +
                         progressText("Reading User...  ", "Reading User...  ", 1) + readFuses}));
    QCOMPARE(bench->contentOf(QStringLiteral("read.bin")).size(), 12 * 1024);
    QCOMPARE(bench->contentOf(QStringLiteral("read.eeprom.bin")).size(), 2 * 1024);
    QCOMPARE(bench->contentOf(QStringLiteral("read.user.bin")).size(), 64);
    QCOMPARE(bench->contentOf(QStringLiteral("read.fuses.conf")),
             QByteArray("fuses = 0xdc\nlock_byte = 0xff\n"));
    QVERIFY(bench
                ->run({QStringLiteral("-q"), QStringLiteral("t48"), QStringLiteral("-d"),
                       withUserMemory})
                .err.contains("\nMemory: 12288 Bytes + 2048 Bytes + 64 Bytes\n"));
}

void TestSimulatorMicrocontroller::userMemory_isWrittenAlone() {
    const QByteArray note(64, 'n');
    bench->makeFile(QStringLiteral("note.bin"), note);
    const QStringList words = {QStringLiteral("-p"), withUserMemory, QStringLiteral("-c"),
                               QStringLiteral("user")};
    QCOMPARE(
        bench->run(words + QStringList{QStringLiteral("-w"), QStringLiteral("note.bin")}).status,
        0);
    QCOMPARE(
        bench->run(words + QStringList{QStringLiteral("-r"), QStringLiteral("read.bin")}).status,
        0);
    QCOMPARE(bench->contentOf(QStringLiteral("read.bin")), note);
    QCOMPARE(run(QStringLiteral("-r read.bin -c user")),
             (Answer{1, {}, head + "No user section found.\n"}));
}

QTEST_GUILESS_MAIN(TestSimulatorMicrocontroller)
#include "tst_simulator_microcontroller.moc"

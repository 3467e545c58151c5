// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "SimulatorRun.h"

#include <QDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString device = u"ATMEGA8@DIP28"_s;
const QString withUserMemory = u"AT89S8253"_s;
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
        return bench->run(QStringList{u"-p"_s, device} + words.split(u' '));
    }

    std::unique_ptr<TestBench> bench;
};

void TestSimulatorMicrocontroller::read_takesEveryMemory() {
    bench->makeFile(u"read.eeprom.bin"_s, "older");
    QCOMPARE(run(u"-r read.bin"_s), (Answer{0, {}, head + readingText(8) + readData + readFuses}));
    QCOMPARE(bench->contentOf(u"read.bin"_s).size(), codeSize);
    QCOMPARE(bench->contentOf(u"read.eeprom.bin"_s).size(), dataSize);
    QCOMPARE(bench->contentOf(u"read.fuses.conf"_s), factoryFuses);
}

void TestSimulatorMicrocontroller::read_ofOneMemory_leavesTheOthers_data() {
    QTest::addColumn<QString>("section");
    QTest::addColumn<QByteArray>("said");
    QTest::addColumn<int>("size");
    QTest::newRow("code") << u"code"_s << readingText(8) << codeSize;
    QTest::newRow("data") << u"data"_s << readData << dataSize;
    QTest::newRow("config") << u"config"_s << readFuses << int(factoryFuses.size());
}

void TestSimulatorMicrocontroller::read_ofOneMemory_leavesTheOthers() {
    QFETCH(QString, section);
    QFETCH(QByteArray, said);
    QFETCH(int, size);
    QCOMPARE(run(u"-r read.bin -c "_s + section), (Answer{0, {}, head + said}));
    QCOMPARE(bench->contentOf(u"read.bin"_s).size(), size);
    QCOMPARE(QDir(bench->path(u"."_s)).entryList(QDir::Files), QStringList{u"read.bin"_s});
}

void TestSimulatorMicrocontroller::read_endsNamesAtTheLastDotOfThePath() {
    QDir(bench->path(u"."_s)).mkdir(u"a.folder"_s);
    QCOMPARE(run(u"-r a.folder/read"_s).status, 0);
    QCOMPARE(bench->contentOf(u"a.folder/read"_s).size(), codeSize);
    QCOMPARE(bench->contentOf(u"a.eeprom.bin"_s).size(), dataSize);
}

void TestSimulatorMicrocontroller::write_ofDataAndFuses_isReadBack() {
    const QByteArray data(dataSize, 'd');
    bench->makeFile(u"data.bin"_s, data);
    QCOMPARE(run(u"-w data.bin -c data"_s),
             (Answer{0,
                     {},
                     head + progressText("Writing  Data...  ", "Writing Data...  ", 64) + readData +
                         "Verification OK\n"}));
    bench->makeFile(u"fuses.conf"_s, "lock_byte=0xFC\nfuses_hi = 0xd9\nfuses_lo = 0xe4\n");
    QCOMPARE(run(u"-w fuses.conf -c config"_s), (Answer{0, {}, head + "Writing fuses... T  OK\n"}));
    QCOMPARE(run(u"-r read.bin"_s).status, 0);
    QCOMPARE(bench->contentOf(u"read.eeprom.bin"_s), data);
    QCOMPARE(bench->contentOf(u"read.fuses.conf"_s),
             QByteArray("fuses_lo = 0xe4\nfuses_hi = 0xd9\nlock_byte = 0xfc\n"));
}

void TestSimulatorMicrocontroller::write_withoutAMemory_isOfCode() {
    bench->makeFile(u"code.bin"_s, QByteArray(codeSize, 'c'));
    QCOMPARE(run(u"-w code.bin"_s), (Answer{0,
                                            {},
                                            head + "Erasing... T OK\n" + writingText(64) +
                                                readingText(8) + "Verification OK\n"}));
    QCOMPARE(run(u"-m code.bin"_s), (Answer{0, {}, head + readingText(8) + "Verification OK\n"}));
}

void TestSimulatorMicrocontroller::fuses_haveToBeNamedAll() {
    bench->makeFile(u"fuses.conf"_s, "fuses_lo = 0xe4\n");
    QCOMPARE(run(u"-w fuses.conf -c config"_s),
             (Answer{1, {}, head + "Could not read config fuses_hi value.\n"}));
    QCOMPARE(run(u"-r read.conf -c config"_s).status, 0);
    QCOMPARE(bench->contentOf(u"read.conf"_s), factoryFuses);
}

void TestSimulatorMicrocontroller::fuses_inTheNewDialect() {
    bench->set(u"DIALECT"_s, u"new"_s);
    QCOMPARE(run(u"-r read.conf -c config"_s).status, 0);
    QCOMPARE(bench->contentOf(u"read.conf"_s), QByteArray(factoryFuses).replace(" = ", "="));
}

void TestSimulatorMicrocontroller::description_namesBothMemories() {
    QVERIFY(bench->run({u"-q"_s, u"t48"_s, u"-d"_s, device})
                .err.contains("\nMemory: 8192 Bytes + 512 Bytes\n"));
}

void TestSimulatorMicrocontroller::userMemory_isReadWithTheOthers() {
    QCOMPARE(bench->run({u"-p"_s, withUserMemory, u"-r"_s, u"read.bin"_s}),
             (Answer{0,
                     {},
                     bannerText() + "Chip ID: 0x1E73  OK\n" + readingText(12) +
                         progressText("Reading Data...  ", "Reading Data...  ", 4) +
                         progressText("Reading User...  ", "Reading User...  ", 1) + readFuses}));
    QCOMPARE(bench->contentOf(u"read.bin"_s).size(), 12 * 1024);
    QCOMPARE(bench->contentOf(u"read.eeprom.bin"_s).size(), 2 * 1024);
    QCOMPARE(bench->contentOf(u"read.user.bin"_s).size(), 64);
    QCOMPARE(bench->contentOf(u"read.fuses.conf"_s),
             QByteArray("fuses = 0xdc\nlock_byte = 0xff\n"));
    QVERIFY(bench->run({u"-q"_s, u"t48"_s, u"-d"_s, withUserMemory})
                .err.contains("\nMemory: 12288 Bytes + 2048 Bytes + 64 Bytes\n"));
}

void TestSimulatorMicrocontroller::userMemory_isWrittenAlone() {
    const QByteArray note(64, 'n');
    bench->makeFile(u"note.bin"_s, note);
    const QStringList words = {u"-p"_s, withUserMemory, u"-c"_s, u"user"_s};
    QCOMPARE(bench->run(words + QStringList{u"-w"_s, u"note.bin"_s}).status, 0);
    QCOMPARE(bench->run(words + QStringList{u"-r"_s, u"read.bin"_s}).status, 0);
    QCOMPARE(bench->contentOf(u"read.bin"_s), note);
    QCOMPARE(run(u"-r read.bin -c user"_s), (Answer{1, {}, head + "No user section found.\n"}));
}

QTEST_GUILESS_MAIN(TestSimulatorMicrocontroller)
#include "tst_simulator_microcontroller.moc"

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "SimulatorRun.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// The table without its colours, bad cells kept as "L-".
QByteArray withoutColours(const QByteArray &table) {
    static const QRegularExpression colour(u"\x1b\\[[0-9;]*m"_s);
    return QString::fromLatin1(table).remove(colour).toLatin1();
}

/// The letters of each row, joined, without the row's number.
QList<QByteArray> rowsOf(const QByteArray &table) {
    QList<QByteArray> rows;
    for (const QByteArray &line : withoutColours(table).split('\n').mid(1))
        if (!line.isEmpty())
            rows.append(line.mid(line.indexOf(':') + 1).simplified().replace(' ', ""));
    return rows;
}

QByteArray headerOf(int pins) {
    QByteArray header("      ");
    for (int pin = 1; pin <= pins; ++pin)
        header += QByteArray::number(pin).leftJustified(3);
    return header;
}

} // namespace

/// Logic ICs: the table on standard output, the verdict on standard error.
class TestSimulatorLogic : public QObject {
    Q_OBJECT

private slots:
    void table_isPrintedByteForByte();
    void badPin_isRedAndCounted();
    void flakyPin_failsInEveryThirdTest();
    void everyPart_passesWithTheRightPins_data();
    void everyPart_passesWithTheRightPins();
    void truthTables_data();
    void truthTables();
    void memory_hasNoRowsAndSucceeds();
    void logicPart_canOnlyBeTested();
    void name_isTakenInAnyCase();
    void verdict_comesBeforeTheTableOnceBothAreBuffered();
    void everyPart_failsWithABadPin_data();
    void everyPart_failsWithABadPin();

private:
    TestBench bench;
};

namespace {

void addParts() {
    QTest::addColumn<int>("pins");
    QTest::addColumn<int>("vectors");
    const struct {
        const char *name;
        int pins;
        int vectors;
    } parts[] = {{"4001", 14, 4},   {"4011", 14, 4},   {"4070", 14, 4},   {"4071", 14, 4},
                 {"4081", 14, 4},   {"7400", 14, 4},   {"7402", 14, 4},   {"7404", 14, 2},
                 {"7408", 14, 4},   {"7410", 14, 8},   {"7420", 14, 16},  {"7432", 14, 4},
                 {"7401", 14, 4},   {"7486", 14, 4},   {"7474", 14, 4},   {"74138", 16, 12},
                 {"74157", 16, 16}, {"74161", 16, 26}, {"74244", 20, 32}, {"74245", 20, 26},
                 {"74373", 20, 24}, {"74374", 20, 24}, {"74154", 24, 19}, {"6821", 40, 33}};
    for (const auto &part : parts)
        QTest::newRow(part.name) << part.pins << part.vectors;
}

} // namespace

void TestSimulatorLogic::table_isPrintedByteForByte() {
    const QByteArray table =
        QByteArray("      1  2  3  4  5  6  7  8  9  10 11 12 13 14 \n"
                   "0000: |0  |H  |0  |H  |0  |H  |G  |H  |0  |H  |0  |H  |0  |V  |\n"
                   "0001: |1  |L  |1  |L  |1  |L  |G  |L  |1  |L  |1  |L  |1  |V  |\n")
            .replace("|", "\x1b[0m");
    QCOMPARE(bench.run({u"-T"_s, u"-p"_s, u"7404"_s, u"-y"_s}),
             (Answer{0, table, bannerText() + "Logic test successful.\n"}));
}

void TestSimulatorLogic::badPin_isRedAndCounted() {
    bench.set(u"FAULT"_s, u"bad-logic-pins"_s);
    const Answer answer = bench.run({u"-T"_s, u"-p"_s, u"7400"_s});
    bench.set(u"FAULT"_s, u""_s);
    QCOMPARE(answer.status, 1);
    QCOMPARE(answer.err, bannerText() + "Logic test failed: 1 errors encountered.\n");
    QCOMPARE(answer.out.split('\n').at(4),
             QByteArray("0003: |1  |1  !L- |1  |1  |L  |G  |L  |1  |1  |L  |1  |1  |V  |")
                 .replace("|", "\x1b[0m")
                 .replace("!", "\x1b[0;91m"));
}

// The last output of a 7400 is pin 11; the first one fails always, so that both are seen.
void TestSimulatorLogic::flakyPin_failsInEveryThirdTest() {
    const QByteArray good = "11L-11LGL11L11V";
    const QByteArray bad = "11L-11LGL11L-11V";
    bench.set(u"FAULT"_s, u"bad-logic-pins,flaky-pin"_s);
    QList<QByteArray> tests;
    for (int test = 0; test < 6; ++test)
        tests.append(rowsOf(bench.run({u"-T"_s, u"-p"_s, u"7400"_s}).out).value(3));
    bench.set(u"FAULT"_s, u""_s);
    QCOMPARE(tests, (QList<QByteArray>{good, good, bad, good, good, bad}));
}

void TestSimulatorLogic::everyPart_passesWithTheRightPins_data() {
    addParts();
}

void TestSimulatorLogic::everyPart_passesWithTheRightPins() {
    QFETCH(int, pins);
    QFETCH(int, vectors);
    const Answer answer =
        bench.run({u"-T"_s, u"-p"_s, QString::fromLatin1(QTest::currentDataTag())});
    QCOMPARE(answer.status, 0);
    QCOMPARE(answer.err, bannerText() + "Logic test successful.\n");
    QCOMPARE(answer.out.split('\n').first(), headerOf(pins));
    const QList<QByteArray> rows = rowsOf(answer.out);
    QCOMPARE(rows.size(), vectors);
    static const QRegularExpression letters(u"^[01LHCZXGV]+$"_s);
    for (const QByteArray &row : rows) {
        QCOMPARE(row.size(), pins);
        QVERIFY2(letters.match(QString::fromLatin1(row)).hasMatch(), row.constData());
        QCOMPARE(row.count('G'), 1);
        QCOMPARE(row.count('V'), 1);
    }
}

void TestSimulatorLogic::truthTables_data() {
    QTest::addColumn<QString>("part");
    QTest::addColumn<int>("vector");
    QTest::addColumn<QByteArray>("letters");

    QTest::newRow("NOR of nothing is high") << u"7402"_s << 0 << QByteArray("H00H00G00H00HV");
    QTest::newRow("NOR of one is low") << u"7402"_s << 1 << QByteArray("L10L10G10L10LV");
    QTest::newRow("AND needs both") << u"7408"_s << 2 << QByteArray("01L01LGL01L01V");
    QTest::newRow("AND of both is high") << u"7408"_s << 3 << QByteArray("11H11HGH11H11V");
    QTest::newRow("OR of one is high") << u"7432"_s << 1 << QByteArray("10H10HGH10H10V");
    QTest::newRow("XOR of two is low") << u"7486"_s << 3 << QByteArray("11L11LGL11L11V");
    QTest::newRow("XOR of one is high") << u"4070"_s << 1 << QByteArray("10HH10G10HH10V");
    QTest::newRow("NAND of three, all high") << u"7410"_s << 7 << QByteArray("11111LGL111L1V");
    QTest::newRow("NAND of four, one low") << u"7420"_s << 14 << QByteArray("01X11HGH01X11V");
    QTest::newRow("open collector lets go of a high output")
        << u"7401"_s << 2 << QByteArray("Z01Z01G01Z01ZV");
    QTest::newRow("open collector pulls its output down")
        << u"7401"_s << 3 << QByteArray("L11L11G11L11LV");
    QTest::newRow("decoder picks line 5") << u"74138"_s << 9 << QByteArray("101001HGHLHHHHHV");
    QTest::newRow("decoder disabled picks none")
        << u"74138"_s << 3 << QByteArray("000000HGHHHHHHHV");
    QTest::newRow("selector passes A") << u"74157"_s << 1 << QByteArray("010H01LGH01L100V");
    QTest::newRow("selector strobed is low") << u"74157"_s << 9 << QByteArray("010L01LGL01L101V");
    QTest::newRow("counter carries at 15") << u"74161"_s << 15 << QByteArray("1C00001G11HHHHHV");
    QTest::newRow("counter wraps") << u"74161"_s << 16 << QByteArray("1C00001G11LLLLLV");
    QTest::newRow("counter loads 5") << u"74161"_s << 17 << QByteArray("1C10101G01LHLHLV");
    QTest::newRow("flip-flop takes the data with the clock")
        << u"7474"_s << 3 << QByteArray("11C1HLGLH1C11V");
    QTest::newRow("flip-flop is preset whatever the data")
        << u"7474"_s << 1 << QByteArray("10C0HLGLH0C01V");
    QTest::newRow("latch holds while its gate is low")
        << u"74373"_s << 6 << QByteArray("0H00HH00HG0H00HH00HV");
    QTest::newRow("flip-flops float while disabled")
        << u"74374"_s << 3 << QByteArray("1Z11ZZ11ZG0Z11ZZ11ZV");
    QTest::newRow("transceiver from B to A")
        << u"74245"_s << 17 << QByteArray("0HLLLLLLLG000000010V");
    QTest::newRow("transceiver disabled lets both sides float")
        << u"74245"_s << 12 << QByteArray("1ZZZZZZZZGZZZZZZZZ1V");
    QTest::newRow("16-line decoder picks line 11")
        << u"74154"_s << 11 << QByteArray("HHHHHHHHHHHGLHHHH001011V");
    QTest::newRow("adapter shows the byte written to port A")
        << u"6821"_s << 3
        << QByteArray("GHLHLHLHL0000000000V0101C010101011"
                      "00ZZ00");
    QTest::newRow("adapter pulls its interrupt line")
        << u"6821"_s << 27 << QByteArray("G001111001001LHLH00V10100ZZZZZZZZ100ZL01");
}

void TestSimulatorLogic::truthTables() {
    QFETCH(QString, part);
    QFETCH(int, vector);
    QFETCH(QByteArray, letters);
    QCOMPARE(rowsOf(bench.run({u"-T"_s, u"-p"_s, part}).out).value(vector), letters);
}

void TestSimulatorLogic::memory_hasNoRowsAndSucceeds() {
    QCOMPARE(bench.run({u"-T"_s, u"-p"_s, u"W27C512@DIP28"_s}),
             (Answer{0, headerOf(28) + "\n", bannerText() + "Logic test successful.\n"}));
}

void TestSimulatorLogic::logicPart_canOnlyBeTested() {
    const QString file = bench.makeFile(u"kept.bin"_s, "kept");
    QCOMPARE(bench.run({u"-p"_s, u"7400"_s, u"-r"_s, file}),
             (Answer{1, {}, bannerText() + "Unsupported device!\n"}));
    QCOMPARE(bench.contentOf(u"kept.bin"_s), QByteArray("kept"));
}

void TestSimulatorLogic::name_isTakenInAnyCase() {
    QCOMPARE(bench.run({u"-T"_s, u"-p"_s, u"74ls54"_s}),
             bench.run({u"-T"_s, u"-p"_s, u"74LS54"_s}));
    QCOMPARE(bench.run({u"-T"_s, u"-p"_s, u"74ls54"_s}).status, 0);
}

void TestSimulatorLogic::verdict_comesBeforeTheTableOnceBothAreBuffered() {
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    bench.start(process, {u"-T"_s, u"-p"_s, u"7404"_s});
    QVERIFY(process.waitForFinished());
    const QByteArray both = process.readAll();
    QVERIFY(both.startsWith(bannerText() + "Logic test successful.\n      1  2  3"));
}

void TestSimulatorLogic::everyPart_failsWithABadPin_data() {
    addParts();
}

void TestSimulatorLogic::everyPart_failsWithABadPin() {
    bench.set(u"FAULT"_s, u"bad-logic-pins"_s);
    const Answer answer =
        bench.run({u"-T"_s, u"-p"_s, QString::fromLatin1(QTest::currentDataTag())});
    bench.set(u"FAULT"_s, u""_s);
    const QByteArray errors = QByteArray::number(answer.out.count("\x1b[0;91m"));
    QVERIFY(errors != "0");
    QCOMPARE(answer.status, 1);
    QCOMPARE(answer.err, bannerText() + "Logic test failed: " + errors + " errors encountered.\n");
}

QTEST_GUILESS_MAIN(TestSimulatorLogic)
#include "tst_simulator_logic.moc"

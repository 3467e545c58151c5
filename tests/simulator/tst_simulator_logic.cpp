// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "SimulatorRun.h"

#include <QRegularExpression>
#include <QTest>

namespace {

/// The table without its colours, bad cells kept as "L-".
QByteArray withoutColours(const QByteArray &table) {
    static const QRegularExpression colour(QStringLiteral("\x1b\\[[0-9;]*m"));
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
    QCOMPARE(bench.run({QStringLiteral("-T"), QStringLiteral("-p"), QStringLiteral("7404"),
                        QStringLiteral("-y")}),
             (Answer{0, table, bannerText() + "Logic test successful.\n"}));
}

void TestSimulatorLogic::badPin_isRedAndCounted() {
    bench.set(QStringLiteral("FAULT"), QStringLiteral("bad-logic-pins"));
    const Answer answer =
        bench.run({QStringLiteral("-T"), QStringLiteral("-p"), QStringLiteral("7400")});
    bench.set(QStringLiteral("FAULT"), QStringLiteral(""));
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
    bench.set(QStringLiteral("FAULT"), QStringLiteral("bad-logic-pins,flaky-pin"));
    QList<QByteArray> tests;
    for (int test = 0; test < 6; ++test)
        tests.append(
            rowsOf(
                bench.run({QStringLiteral("-T"), QStringLiteral("-p"), QStringLiteral("7400")}).out)
                .value(3));
    bench.set(QStringLiteral("FAULT"), QStringLiteral(""));
    QCOMPARE(tests, (QList<QByteArray>{good, good, bad, good, good, bad}));
}

void TestSimulatorLogic::everyPart_passesWithTheRightPins_data() {
    addParts();
}

void TestSimulatorLogic::everyPart_passesWithTheRightPins() {
    QFETCH(int, pins);
    QFETCH(int, vectors);
    const Answer answer = bench.run(
        {QStringLiteral("-T"), QStringLiteral("-p"), QString::fromLatin1(QTest::currentDataTag())});
    QCOMPARE(answer.status, 0);
    QCOMPARE(answer.err, bannerText() + "Logic test successful.\n");
    QCOMPARE(answer.out.split('\n').first(), headerOf(pins));
    const QList<QByteArray> rows = rowsOf(answer.out);
    QCOMPARE(rows.size(), vectors);
    static const QRegularExpression letters(QStringLiteral("^[01LHCZXGV]+$"));
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

    QTest::newRow("NOR of nothing is high")
        << QStringLiteral("7402") << 0 << QByteArray("H00H00G00H00HV");
    QTest::newRow("NOR of one is low")
        << QStringLiteral("7402") << 1 << QByteArray("L10L10G10L10LV");
    QTest::newRow("AND needs both") << QStringLiteral("7408") << 2 << QByteArray("01L01LGL01L01V");
    QTest::newRow("AND of both is high")
        << QStringLiteral("7408") << 3 << QByteArray("11H11HGH11H11V");
    QTest::newRow("OR of one is high")
        << QStringLiteral("7432") << 1 << QByteArray("10H10HGH10H10V");
    QTest::newRow("XOR of two is low")
        << QStringLiteral("7486") << 3 << QByteArray("11L11LGL11L11V");
    QTest::newRow("XOR of one is high")
        << QStringLiteral("4070") << 1 << QByteArray("10HH10G10HH10V");
    QTest::newRow("NAND of three, all high")
        << QStringLiteral("7410") << 7 << QByteArray("11111LGL111L1V");
    QTest::newRow("NAND of four, one low")
        << QStringLiteral("7420") << 14 << QByteArray("01X11HGH01X11V");
    QTest::newRow("open collector lets go of a high output")
        << QStringLiteral("7401") << 2 << QByteArray("Z01Z01G01Z01ZV");
    QTest::newRow("open collector pulls its output down")
        << QStringLiteral("7401") << 3 << QByteArray("L11L11G11L11LV");
    QTest::newRow("decoder picks line 5")
        << QStringLiteral("74138") << 9 << QByteArray("101001HGHLHHHHHV");
    QTest::newRow("decoder disabled picks none")
        << QStringLiteral("74138") << 3 << QByteArray("000000HGHHHHHHHV");
    QTest::newRow("selector passes A")
        << QStringLiteral("74157") << 1 << QByteArray("010H01LGH01L100V");
    QTest::newRow("selector strobed is low")
        << QStringLiteral("74157") << 9 << QByteArray("010L01LGL01L101V");
    QTest::newRow("counter carries at 15")
        << QStringLiteral("74161") << 15 << QByteArray("1C00001G11HHHHHV");
    QTest::newRow("counter wraps")
        << QStringLiteral("74161") << 16 << QByteArray("1C00001G11LLLLLV");
    QTest::newRow("counter loads 5")
        << QStringLiteral("74161") << 17 << QByteArray("1C10101G01LHLHLV");
    QTest::newRow("flip-flop takes the data with the clock")
        << QStringLiteral("7474") << 3 << QByteArray("11C1HLGLH1C11V");
    QTest::newRow("flip-flop is preset whatever the data")
        << QStringLiteral("7474") << 1 << QByteArray("10C0HLGLH0C01V");
    QTest::newRow("latch holds while its gate is low")
        << QStringLiteral("74373") << 6 << QByteArray("0H00HH00HG0H00HH00HV");
    QTest::newRow("flip-flops float while disabled")
        << QStringLiteral("74374") << 3 << QByteArray("1Z11ZZ11ZG0Z11ZZ11ZV");
    QTest::newRow("transceiver from B to A")
        << QStringLiteral("74245") << 17 << QByteArray("0HLLLLLLLG000000010V");
    QTest::newRow("transceiver disabled lets both sides float")
        << QStringLiteral("74245") << 12 << QByteArray("1ZZZZZZZZGZZZZZZZZ1V");
    QTest::newRow("16-line decoder picks line 11")
        << QStringLiteral("74154") << 11 << QByteArray("HHHHHHHHHHHGLHHHH001011V");
    QTest::newRow("adapter shows the byte written to port A")
        << QStringLiteral("6821") << 3
        << QByteArray("GHLHLHLHL0000000000V0101C010101011"
                      "00ZZ00");
    QTest::newRow("adapter pulls its interrupt line")
        << QStringLiteral("6821") << 27 << QByteArray("G001111001001LHLH00V10100ZZZZZZZZ100ZL01");
}

void TestSimulatorLogic::truthTables() {
    QFETCH(QString, part);
    QFETCH(int, vector);
    QFETCH(QByteArray, letters);
    QCOMPARE(
        rowsOf(bench.run({QStringLiteral("-T"), QStringLiteral("-p"), part}).out).value(vector),
        letters);
}

void TestSimulatorLogic::memory_hasNoRowsAndSucceeds() {
    QCOMPARE(
        bench.run({QStringLiteral("-T"), QStringLiteral("-p"), QStringLiteral("W27C512@DIP28")}),
        (Answer{0, headerOf(28) + "\n", bannerText() + "Logic test successful.\n"}));
}

void TestSimulatorLogic::logicPart_canOnlyBeTested() {
    const QString file = bench.makeFile(QStringLiteral("kept.bin"), "kept");
    QCOMPARE(bench.run({QStringLiteral("-p"), QStringLiteral("7400"), QStringLiteral("-r"), file}),
             (Answer{1, {}, bannerText() + "Unsupported device!\n"}));
    QCOMPARE(bench.contentOf(QStringLiteral("kept.bin")), QByteArray("kept"));
}

void TestSimulatorLogic::name_isTakenInAnyCase() {
    QCOMPARE(bench.run({QStringLiteral("-T"), QStringLiteral("-p"), QStringLiteral("74ls54")}),
             bench.run({QStringLiteral("-T"), QStringLiteral("-p"), QStringLiteral("74LS54")}));
    QCOMPARE(
        bench.run({QStringLiteral("-T"), QStringLiteral("-p"), QStringLiteral("74ls54")}).status,
        0);
}

void TestSimulatorLogic::verdict_comesBeforeTheTableOnceBothAreBuffered() {
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    bench.start(process, {QStringLiteral("-T"), QStringLiteral("-p"), QStringLiteral("7404")});
    QVERIFY(process.waitForFinished());
    const QByteArray both = process.readAll();
    QVERIFY(both.startsWith(bannerText() + "Logic test successful.\n      1  2  3"));
}

void TestSimulatorLogic::everyPart_failsWithABadPin_data() {
    addParts();
}

void TestSimulatorLogic::everyPart_failsWithABadPin() {
    bench.set(QStringLiteral("FAULT"), QStringLiteral("bad-logic-pins"));
    const Answer answer = bench.run(
        {QStringLiteral("-T"), QStringLiteral("-p"), QString::fromLatin1(QTest::currentDataTag())});
    bench.set(QStringLiteral("FAULT"), QStringLiteral(""));
    const QByteArray errors = QByteArray::number(answer.out.count("\x1b[0;91m"));
    QVERIFY(errors != "0");
    QCOMPARE(answer.status, 1);
    QCOMPARE(answer.err, bannerText() + "Logic test failed: " + errors + " errors encountered.\n");
}

QTEST_GUILESS_MAIN(TestSimulatorLogic)
#include "tst_simulator_logic.moc"

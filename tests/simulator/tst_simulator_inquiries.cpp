// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "SimulatorRun.h"

#include <QRegularExpression>
#include <QSet>
#include <QTest>

#include <csignal>

namespace {

const QByteArray menu = "No device found. Which database do you want to display?\n"
                        "1) TL866A/CS\n2) TL866II+/T48/T56\n3) Abort\n";

} // namespace

/// What is answered without a chip: the device list, one device, the programmer, the version.
class TestSimulatorInquiries : public QObject {
    Q_OBJECT

private slots:
    void init();

    void version_saysThatItIsTheSimulator();
    void supported_namesTheModels();
    void presence_data();
    void presence();
    void list_holdsTheTermInAnyCase();
    void list_withoutATerm_isTheWholeOne();
    void list_isLongAndPlain();
    void list_startsWithLogicParts();
    void list_showsOwnEntriesOfTheModel_data();
    void list_showsOwnEntriesOfTheModel();
    void list_namesDevicesThatWork_data();
    void list_namesDevicesThatWork();
    void list_withoutAProgrammer_asksAndWaits();
    void list_withoutAProgrammer_takesAnAnswer_data();
    void list_withoutAProgrammer_takesAnAnswer();
    void list_withoutAProgrammer_knowsTheModel();
    void list_withABusyProgrammer_asks();
    void description_data();
    void description();
    void sizes_followFromNames_data();
    void sizes_followFromNames();

private:
    void fault(const char *name) { bench->set(QStringLiteral("FAULT"), QString::fromLatin1(name)); }
    [[nodiscard]] QByteArray list(const QString &term) const {
        return bench
            ->run({QStringLiteral("-q"), QStringLiteral("tl866ii"), QStringLiteral("-L"), term})
            .out;
    }
    [[nodiscard]] QList<QByteArray> names() const {
        QList<QByteArray> lines = list(QStringLiteral("")).split('\n');
        lines.removeLast();
        return lines;
    }

    std::unique_ptr<TestBench> bench;
};

void TestSimulatorInquiries::init() {
    bench = std::make_unique<TestBench>();
}

void TestSimulatorInquiries::version_saysThatItIsTheSimulator() {
    const Answer answer = bench->run({QStringLiteral("-V")});
    QCOMPARE(answer.status, 0);
    QCOMPARE(answer.out, QByteArray());
    QVERIFY(answer.err.contains("minipro version 0.7.3 "));
    QVERIFY(answer.err.contains("minipro-sim version "));
    QVERIFY(answer.err.contains("This is the simulator: it reaches no programmer and no chip\n"));
    QVERIFY(answer.err.contains("Bench folder:\t" + bench->path(QStringLiteral("bench")).toUtf8() +
                                "\n"));
}

void TestSimulatorInquiries::supported_namesTheModels() {
    QCOMPARE(bench->run({QStringLiteral("-Q")}),
             (Answer{0, {}, "tl866a: TL866CS/A\ntl866ii: TL866II+\nt48: T48\nt56: T56\n"}));
}

void TestSimulatorInquiries::presence_data() {
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("said");
    QTest::newRow("connected") << QByteArray() << QByteArray("tl866ii: TL866II+\n");
    QTest::newRow("nothing connected")
        << QByteArray("no-programmer") << QByteArray("[No programmer found]\n");
    QTest::newRow("in use") << QByteArray("busy")
                            << QByteArray("\nIO error: claim_interface: LIBUSB_ERROR_BUSY\n"
                                          "[No programmer found]\n");
}

void TestSimulatorInquiries::presence() {
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, said);
    fault(name.constData());
    QCOMPARE(bench->run({QStringLiteral("-k")}), (Answer{0, {}, said}));
}

void TestSimulatorInquiries::list_holdsTheTermInAnyCase() {
    const Answer lower = bench->run({QStringLiteral("-L"), QStringLiteral("w27c512")});
    QCOMPARE(lower, (Answer{0, "W27C512@DIP28\nW27C512@PLCC32\n", bannerText()}));
    QCOMPARE(bench->run({QStringLiteral("--search"), QStringLiteral("W27C512@")}), lower);
    QCOMPARE(bench->run({QStringLiteral("-L"), QStringLiteral("no such part")}),
             (Answer{0, {}, bannerText()}));
    QCOMPARE(list(QStringLiteral("(custom)")), QByteArray());
}

void TestSimulatorInquiries::list_withoutATerm_isTheWholeOne() {
    QCOMPARE(bench->run({QStringLiteral("-q"), QStringLiteral("TL866II"), QStringLiteral("-l")}),
             (Answer{0, list(QStringLiteral("")), {}}));
}

void TestSimulatorInquiries::list_isLongAndPlain() {
    QCOMPARE(names().size(), 7'410);
    static const QRegularExpression plain(QStringLiteral("^[-A-Za-z0-9()*+./:=@[\\]_]{1,39}$"));
    for (const QByteArray &name : names())
        QVERIFY2(plain.match(QString::fromLatin1(name)).hasMatch(), name.constData());
    const QList<QByteArray> all = names();
    const QSet<QByteArray> different(all.cbegin(), all.cend());
    QVERIFY2(different.size() < all.size(), "the tool lists some names twice");
}

void TestSimulatorInquiries::list_startsWithLogicParts() {
    const QList<QByteArray> all = names();
    QCOMPARE(all.first(), QByteArray("4000"));
    QCOMPARE(all.indexOf("82C55A-5(OKI)(custom)"), all.indexOf("ACE24AC02") - 1);
    QVERIFY(all.indexOf("7400") < all.indexOf("ACE24AC02"));
}

void TestSimulatorInquiries::list_showsOwnEntriesOfTheModel_data() {
    QTest::addColumn<QString>("model");
    QTest::addColumn<QByteArray>("listed");
    QTest::newRow("the older model") << QStringLiteral("tl866a") << QByteArray();
    QTest::newRow("TL866II+") << QStringLiteral("tl866ii") << QByteArray("ATF750C-TEST(custom)\n");
    QTest::newRow("T48") << QStringLiteral("t48") << QByteArray();
}

void TestSimulatorInquiries::list_showsOwnEntriesOfTheModel() {
    QFETCH(QString, model);
    QFETCH(QByteArray, listed);
    QCOMPARE(bench->run({QStringLiteral("-q"), model, QStringLiteral("-L"),
                         QStringLiteral("ATF750C-TEST")}),
             (Answer{0, listed, {}}));
    QCOMPARE(
        bench->run({QStringLiteral("-q"), model, QStringLiteral("-L"), QStringLiteral("LM339")}),
        (Answer{0, "LM339(custom)\n", {}}));
}

void TestSimulatorInquiries::list_namesDevicesThatWork_data() {
    QTest::addColumn<QString>("device");
    init();
    const QList<QByteArray> all = names();
    constexpr qsizetype step = 197;
    for (qsizetype i = 0; i < all.size(); i += step)
        QTest::newRow(all.at(i).constData()) << QString::fromLatin1(all.at(i));
    QTest::newRow("LM339(custom)") << QStringLiteral("LM339(custom)");
    QTest::newRow("AT28C256E(custom)") << QStringLiteral("AT28C256E(custom)");
}

void TestSimulatorInquiries::list_namesDevicesThatWork() {
    QFETCH(QString, device);
    device.remove(QStringLiteral("(custom)"));
    QCOMPARE(bench->run({QStringLiteral("-T"), QStringLiteral("-p"), device}).err,
             bannerText() + "Logic test successful.\n");
}

void TestSimulatorInquiries::list_withoutAProgrammer_asksAndWaits() {
    fault("no-programmer");
    QProcess process;
    process.setReadChannel(QProcess::StandardError);
    bench->start(process, {QStringLiteral("-L"), QStringLiteral("7400")});
    QByteArray said;
    while (said.size() < menu.size() && process.waitForReadyRead())
        said += process.readAllStandardError();
    QCOMPARE(said, menu);
    QCOMPARE(process.state(), QProcess::Running);
    QCOMPARE(process.readAllStandardOutput(), QByteArray());
    process.terminate();
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), SIGTERM);
}

void TestSimulatorInquiries::list_withoutAProgrammer_takesAnAnswer_data() {
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("listed");
    QTest::addColumn<QByteArray>("said");
    const QByteArray own = "ATF750C-TEST(custom)\n";
    QTest::newRow("the older database") << QByteArray("1\n") << 0 << QByteArray() << QByteArray();
    QTest::newRow("the newer database") << QByteArray("2\n") << 0 << own << QByteArray();
    QTest::newRow("a line without its end") << QByteArray("2") << 0 << own << QByteArray();
    QTest::newRow("abort") << QByteArray("3\n") << 1 << QByteArray() << QByteArray();
    QTest::newRow("no answer at all")
        << QByteArray() << 1 << QByteArray() << QByteArray("Aborted.\n");
    QTest::newRow("nothing that can be chosen, then an end")
        << QByteArray("x\n\n4\n") << 1 << QByteArray() << QByteArray("Aborted.\n");
    QTest::newRow("an answer at the second attempt")
        << QByteArray("x\n2\n") << 0 << own << QByteArray();
}

void TestSimulatorInquiries::list_withoutAProgrammer_takesAnAnswer() {
    QFETCH(QByteArray, input);
    QFETCH(int, status);
    QFETCH(QByteArray, listed);
    QFETCH(QByteArray, said);
    fault("no-programmer");
    QCOMPARE(bench->run({QStringLiteral("-L"), QStringLiteral("ATF750C-T")}, input),
             (Answer{status, listed, menu + said}));
}

void TestSimulatorInquiries::list_withoutAProgrammer_knowsTheModel() {
    fault("no-programmer");
    QCOMPARE(bench->run({QStringLiteral("-q"), QStringLiteral("T48"), QStringLiteral("-L"),
                         QStringLiteral("74138")}),
             (Answer{0, "74138\n", {}}));
}

void TestSimulatorInquiries::list_withABusyProgrammer_asks() {
    fault("busy");
    QCOMPARE(bench->run({QStringLiteral("-L"), QStringLiteral("74138")}, "2\n"),
             (Answer{0, "74138\n", "\nIO error: claim_interface: LIBUSB_ERROR_BUSY\n" + menu}));
}

void TestSimulatorInquiries::description_data() {
    QTest::addColumn<QString>("device");
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("said");
    QTest::newRow("an EEPROM in any case")
        << QStringLiteral("at28c256") << 0
        << QByteArray("Name: AT28C256\nAvailable on: TL866II, T48, T56\nMemory: 32768 Bytes\n"
                      "Package: DIP28\nICSP: -\nProtocol: 0x07\nRead buffer size: 512 Bytes\n"
                      "Write buffer size: 128 Bytes\n");
    QTest::newRow("a logic IC")
        << QStringLiteral("7400") << 0
        << QByteArray("Name: 7400\nPackage:\t DIP14\nVCC voltage:\t 2.35V\nVector count:\t 4\n");
    QTest::newRow("unknown") << QStringLiteral("NOSUCH") << 1
                             << QByteArray("Device NOSUCH not found!\n");
}

void TestSimulatorInquiries::description() {
    QFETCH(QString, device);
    QFETCH(int, status);
    QFETCH(QByteArray, said);
    QCOMPARE(bench->run({QStringLiteral("-d"), device}), (Answer{status, {}, bannerText() + said}));
    fault("no-programmer");
    QCOMPARE(
        bench->run({QStringLiteral("-q"), QStringLiteral("tl866ii"), QStringLiteral("-d"), device}),
        (Answer{status, {}, said}));
    QCOMPARE(bench->run({QStringLiteral("-d"), device}, "2\n"), (Answer{status, {}, menu + said}));
}

void TestSimulatorInquiries::sizes_followFromNames_data() {
    QTest::addColumn<int>("size");
    constexpr int kib = 1024;
    const struct {
        const char *name;
        int size;
    } rows[] = {{"ACE24AC16", 2 * kib},
                {"AT24C1024", 128 * kib},
                {"93LC66(x16)", 512},
                {"CAT93C86(x8)", 2 * kib},
                {"25LC010A", 128},
                {"25AA512", 64 * kib},
                {"M95320(page=16)", 4 * kib},
                {"MX25L1605@SOP8", 2048 * kib},
                {"MX25L6445E(OTP)@SOP8", 8192 * kib},
                {"W25Q256FV(OTP)@SOIC16", 32768 * kib},
                {"AM2716@DIP24", 2 * kib},
                {"AT27256@PLCC32", 32 * kib},
                {"CY27C040@DIP32", 512 * kib},
                {"AT28C64B@PLCC32", 8 * kib},
                {"AT29BV040A", 512 * kib},
                {"S29GL064A90TAIR4@TSOP48", 8192 * kib},
                {"PIC16F716@SSOP20", 8 * kib}};
    for (const auto &row : rows)
        QTest::newRow(row.name) << row.size;
}

void TestSimulatorInquiries::sizes_followFromNames() {
    QFETCH(int, size);
    const QString device = QString::fromLatin1(QTest::currentDataTag());
    QCOMPARE(
        bench->run({QStringLiteral("-q"), QStringLiteral("tl866ii"), QStringLiteral("-d"), device})
            .err.split('\n')
            .value(2),
        "Memory: " + QByteArray::number(size) + " Bytes");
}

QTEST_GUILESS_MAIN(TestSimulatorInquiries)
#include "tst_simulator_inquiries.moc"

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "SimulatorRun.h"

#include <QTest>

#include <algorithm>
#include <csignal>
#include <memory>

/// What goes wrong when MINIPRO_SIM_FAULT asks for it.
class TestSimulatorFaults : public QObject {
    Q_OBJECT

private slots:
    void init();

    void sentences_data();
    void sentences();
    void wrongId_goesOnWhenToldTo();
    void wrongId_hasAsManyDigitsAsTheRightOne();
    void badByte_isReadInverted();
    void brokenRead_leavesTheFile_data();
    void brokenRead_leavesTheFile();
    void brokenWrite_leavesAPartOfTheChip_data();
    void brokenWrite_leavesAPartOfTheChip();
    void brokenErase_data();
    void brokenErase();
    void brokenLogicTest_hasNoTable_data();
    void brokenLogicTest_hasNoTable();
    void killedLogicTest_hasNoTable();
    void missingAdapter_stopsTheRun();
    void missingDatabase_isNamedForEachPlace();
    void severalFaults_canBeGiven();
    void silent_printsTheBannerAndWaits();
    void silent_keepsASearchWaiting();
    void endlessOutput_neverEnds();
    void ignoresSigterm_isEndedByKillAlone();
    void splitUtf8_cutsCharactersBetweenWrites();
    void invalidUtf8_isInTheBanner();
    void leavesGrandchild_keepsThePipesOpen();
    void closesOutputEarly_worksOn();
    void environmentMistakes_data();
    void environmentMistakes();

private:
    void fault(const char *name) { bench->set(QStringLiteral("FAULT"), QString::fromLatin1(name)); }
    [[nodiscard]] QStringList readCommand() const {
        return {QStringLiteral("-p"), QStringLiteral("AT29C256@DIP28"), QStringLiteral("-r"),
                bench->path(QStringLiteral("read.bin"))};
    }
    void startUntilBanner(QProcess &process, const QStringList &arguments) const;

    std::unique_ptr<TestBench> bench;
};

namespace {

constexpr int chipSize = 32 * 1024;
const QByteArray idLine = "Chip ID: 0x1FDC  OK\n";
constexpr int readBlocks = 32;
const QByteArray noDevice = "\nIO error: bulk_transfer: LIBUSB_ERROR_NO_DEVICE\n";
const QByteArray noAnswer = noDevice + "IO error: expected 8 bytes but 0 bytes transferred\n";
const QByteArray overcurrent = "Overcurrent protection!\a\n";
const QByteArray protectHint = "Use -P if you want to write-protect this chip.\n";
const QByteArray protectSuspicion = "This chip may be write-protected. Use -u and try again.\n";
const QByteArray noFirstStep = "Error running the first step of logic test.\n";

} // namespace

void TestSimulatorFaults::init() {
    bench = std::make_unique<TestBench>();
}

void TestSimulatorFaults::startUntilBanner(QProcess &process, const QStringList &arguments) const {
    process.setReadChannel(QProcess::StandardError);
    bench->start(process, arguments);
    QVERIFY(process.waitForStarted());
    QByteArray seen;
    while (!seen.contains("USB speed: 12Mbps (USB 1.1)\n") && process.waitForReadyRead())
        seen += process.readAllStandardError();
    QVERIFY(seen.startsWith(bannerText()));
}

void TestSimulatorFaults::sentences_data() {
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("err");
    QTest::newRow("no programmer")
        << QByteArray("no-programmer") << QByteArray("No programmer found.\n");
    QTest::newRow("busy") << QByteArray("busy")
                          << QByteArray("\nIO error: claim_interface: LIBUSB_ERROR_BUSY\n");
    QTest::newRow("wrong ID") << QByteArray("wrong-id")
                              << bannerText() +
                                     "Invalid Chip ID: expected 0x1FDC, got 0xFFFF (unknown)\n"
                                     "(use '-y' to continue anyway at your own risk)\n";
    const auto readUpTo = [](int updates) {
        return bannerText() + idLine + brokenProgress("Reading Code...  ", updates, readBlocks);
    };
    QTest::newRow("overcurrent at the second block")
        << QByteArray("overcurrent") << readUpTo(2) + "\n" + overcurrent;
    QTest::newRow("overcurrent at the fifth block")
        << QByteArray("overcurrent:5") << readUpTo(5) + "\n" + overcurrent;
    QTest::newRow("overcurrent before the first block")
        << QByteArray("overcurrent:0") << bannerText() + idLine + overcurrent;
    QTest::newRow("unplugged half-way")
        << QByteArray("unplugged") << readUpTo(16) + noAnswer + noAnswer;
    QTest::newRow("unplugged after three blocks")
        << QByteArray("unplugged:3") << readUpTo(3) + noAnswer + noAnswer;
    QTest::newRow("unplugged before the first block")
        << QByteArray("unplugged:0") << bannerText() + idLine + noAnswer + noAnswer;
    QTest::newRow("bootloader")
        << QByteArray("bootloader")
        << QByteArray("Found TL866II+ in bootloader modein bootloader mode!\nExiting...\n");
}

void TestSimulatorFaults::sentences() {
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, err);
    fault(name.constData());
    QCOMPARE(bench->run(readCommand()), (Answer{1, {}, err}));
}

void TestSimulatorFaults::wrongId_goesOnWhenToldTo() {
    fault("wrong-id");
    QCOMPARE(bench->run(readCommand() + QStringList{QStringLiteral("-y")}),
             (Answer{0,
                     {},
                     bannerText() +
                         "WARNING: Chip ID mismatch: expected 0x1FDC, got 0xFFFF (unknown)\n" +
                         readingText(readBlocks)}));
}

void TestSimulatorFaults::wrongId_hasAsManyDigitsAsTheRightOne() {
    fault("wrong-id");
    const QString file = bench->path(QStringLiteral("read.bin"));
    QCOMPARE(
        bench->run({QStringLiteral("-p"), QStringLiteral("W25Q16BV"), QStringLiteral("-r"), file}),
        (Answer{1,
                {},
                bannerText() + "Invalid Chip ID: expected 0xEF4015, got 0xFFFFFF (unknown)\n"
                               "(use '-y' to continue anyway at your own risk)\n"}));
}

void TestSimulatorFaults::badByte_isReadInverted() {
    QByteArray image(chipSize, '\x7e');
    bench->makeFile(QStringLiteral("bench/AT29C256@DIP28.bin"), image);
    fault("bad-byte");
    QCOMPARE(bench->run(readCommand()).status, 0);
    image[0x1234] = '\x81';
    QCOMPARE(bench->contentOf(QStringLiteral("read.bin")), image);
}

void TestSimulatorFaults::brokenRead_leavesTheFile_data() {
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("left");
    QTest::newRow("in the middle: empty") << QByteArray("unplugged") << QByteArray();
    QTest::newRow("at the start: as it was") << QByteArray("unplugged:0") << QByteArray("old");
    QTest::newRow("overcurrent in the middle: empty") << QByteArray("overcurrent") << QByteArray();
    QTest::newRow("overcurrent at the start: as it was")
        << QByteArray("overcurrent:0") << QByteArray("old");
}

void TestSimulatorFaults::brokenRead_leavesTheFile() {
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, left);
    bench->makeFile(QStringLiteral("read.bin"), "old");
    fault(name.constData());
    QCOMPARE(bench->run(readCommand()).status, 1);
    QCOMPARE(bench->contentOf(QStringLiteral("read.bin")), left);
}

void TestSimulatorFaults::brokenWrite_leavesAPartOfTheChip_data() {
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("pages");
    QTest::addColumn<QByteArray>("said");
    QTest::newRow("unplugged half-way")
        << QByteArray("unplugged") << 128 << noDevice + protectSuspicion + noAnswer;
    QTest::newRow("unplugged after 78 pages")
        << QByteArray("unplugged:78") << 78 << noDevice + protectSuspicion + noAnswer;
    QTest::newRow("overcurrent") << QByteArray("overcurrent") << 2
                                 << "\n" + overcurrent + protectSuspicion;
}

void TestSimulatorFaults::brokenWrite_leavesAPartOfTheChip() {
    QFETCH(QByteArray, name);
    QFETCH(int, pages);
    QFETCH(QByteArray, said);
    constexpr int pageSize = 128;
    const QString image = bench->makeFile(QStringLiteral("image.bin"), QByteArray(chipSize, 'x'));
    fault(name.constData());
    QCOMPARE(
        bench->run({QStringLiteral("-p"), QStringLiteral("AT28C256"), QStringLiteral("-w"), image}),
        (Answer{1,
                {},
                bannerText() + protectHint + "Erasing... T OK\n" +
                    brokenProgress("Writing  Code...  ", pages, 256) + said}));
    QCOMPARE(bench->contentOf(QStringLiteral("bench/AT28C256.bin")),
             QByteArray(pages * pageSize, 'x') + QByteArray(chipSize - pages * pageSize, '\xff'));
}

void TestSimulatorFaults::brokenErase_data() {
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("said");
    QTest::newRow("overcurrent") << QByteArray("overcurrent") << "\n" + overcurrent;
    QTest::newRow("unplugged") << QByteArray("unplugged") << noAnswer + noAnswer;
}

void TestSimulatorFaults::brokenErase() {
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, said);
    fault(name.constData());
    QCOMPARE(bench->run({QStringLiteral("-p"), QStringLiteral("AT28C256"), QStringLiteral("-E")}),
             (Answer{1, {}, bannerText() + "Erasing... " + said}));
}

void TestSimulatorFaults::brokenLogicTest_hasNoTable_data() {
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("said");
    QTest::newRow("overcurrent") << QByteArray("overcurrent") << overcurrent + noFirstStep;
    QTest::newRow("unplugged") << QByteArray("unplugged") << noAnswer + noFirstStep + noAnswer;
}

void TestSimulatorFaults::brokenLogicTest_hasNoTable() {
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, said);
    fault(name.constData());
    QCOMPARE(bench->run({QStringLiteral("-T"), QStringLiteral("-p"), QStringLiteral("7400")}),
             (Answer{1, {}, bannerText() + said}));
}

void TestSimulatorFaults::killedLogicTest_hasNoTable() {
    bench->set(QStringLiteral("PACE"), QStringLiteral("real"));
    QProcess process;
    startUntilBanner(process, {QStringLiteral("-T"), QStringLiteral("-p"), QStringLiteral("6821")});
    process.kill();
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.readAllStandardOutput(), QByteArray());
}

void TestSimulatorFaults::missingAdapter_stopsTheRun() {
    fault("no-tsop-adapter");
    const QString file = bench->path(QStringLiteral("read.bin"));
    QCOMPARE(bench->run({QStringLiteral("-p"), QStringLiteral("AM29F800BB@TSOP48"),
                         QStringLiteral("-r"), file}),
             (Answer{1, {}, bannerText() + "TSOP adapter not found!\n"}));
    QCOMPARE(bench->run(readCommand()).status, 0);
}

void TestSimulatorFaults::missingDatabase_isNamedForEachPlace() {
    fault("no-database");
    const QByteArray reason = "/logicic.xml: No such file or directory\n";
    const QByteArray share = "/usr/local/share/minipro" + reason;
    QCOMPARE(bench->run(readCommand()),
             (Answer{1, {}, "." + reason + share + "Device AT29C256@DIP28 not found!\n"}));
    bench->setHome(QStringLiteral("/somewhere"));
    QCOMPARE(bench->run({QStringLiteral("-q"), QStringLiteral("t48"), QStringLiteral("-L"),
                         QStringLiteral("27C")}),
             (Answer{1, {}, "." + reason + "/somewhere" + reason + share}));
}

void TestSimulatorFaults::severalFaults_canBeGiven() {
    bench->makeFile(QStringLiteral("bench/AT29C256@DIP28.bin"), QByteArray(chipSize, '\xff'));
    fault("wrong-id, bad-byte");
    QCOMPARE(bench->run(readCommand()).status, 1);
    QCOMPARE(bench->run(readCommand() + QStringList{QStringLiteral("-y")}).status, 0);
    QCOMPARE(bench->contentOf(QStringLiteral("read.bin")).at(0x1234), '\0');
}

void TestSimulatorFaults::silent_printsTheBannerAndWaits() {
    fault("silent");
    QProcess process;
    startUntilBanner(process, readCommand());
    QCOMPARE(process.state(), QProcess::Running);
    process.terminate();
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::CrashExit);
    QCOMPARE(process.exitCode(), SIGTERM);
}

void TestSimulatorFaults::silent_keepsASearchWaiting() {
    fault("silent");
    QProcess process;
    bench->start(process, {QStringLiteral("-L"), QStringLiteral("27C")});
    QVERIFY(process.waitForStarted());
    QVERIFY(!process.waitForReadyRead(100));
    QCOMPARE(process.state(), QProcess::Running);
    process.kill();
    QVERIFY(process.waitForFinished());
}

void TestSimulatorFaults::endlessOutput_neverEnds() {
    fault("endless-output");
    QProcess process;
    startUntilBanner(process, readCommand());
    qsizetype volume = 0;
    while (volume < 1'000'000 && process.waitForReadyRead())
        volume += process.readAllStandardError().size();
    QVERIFY(volume >= 1'000'000);
    process.kill();
    QVERIFY(process.waitForFinished());
}

void TestSimulatorFaults::ignoresSigterm_isEndedByKillAlone() {
    fault("ignores-sigterm");
    QProcess process;
    startUntilBanner(process, readCommand());
    process.terminate();
    QVERIFY(!process.waitForFinished(100));
    process.kill();
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), SIGKILL);
}

void TestSimulatorFaults::splitUtf8_cutsCharactersBetweenWrites() {
    fault("split-utf8");
    QProcess process;
    process.setReadChannel(QProcess::StandardError);
    bench->start(process, readCommand());
    QByteArrayList pieces;
    while (process.waitForReadyRead())
        pieces.append(process.readAllStandardError());
    const QByteArray whole = pieces.join();
    QVERIFY(whole.contains("Serial code: Pr\u00fcf \u20ac \U0001f4a1\n"));
    QVERIFY(withoutDurations(whole.mid(whole.indexOf("USB speed"))) ==
            "USB speed: 12Mbps (USB 1.1)\n" + idLine + readingText(readBlocks));
    const bool cut = std::any_of(pieces.cbegin(), pieces.cend(), [](const QByteArray &piece) {
        return piece.endsWith("\xc3") || piece.endsWith("\xe2\x82") || piece.endsWith("\xf0\x9f");
    });
    QVERIFY(cut);
}

void TestSimulatorFaults::invalidUtf8_isInTheBanner() {
    fault("invalid-utf8");
    const Answer answer = bench->run(readCommand());
    QCOMPARE(answer.status, 0);
    QVERIFY(answer.err.contains("Serial code: AB\xff\xfe"
                                "CD\xc3(EF\xe2\x82\nUSB speed"));
    QVERIFY(!answer.err.isValidUtf8());
}

void TestSimulatorFaults::leavesGrandchild_keepsThePipesOpen() {
    fault("leaves-grandchild");
    bench->set(QStringLiteral("GRANDCHILD_MS"), QStringLiteral("100"));
    const Answer answer = bench->run(readCommand());
    QCOMPARE(answer.status, 0);
    QVERIFY(answer.err.startsWith(bannerText() + "Background process "));
    QVERIFY(answer.err.contains(" keeps the pipes open.\n" + idLine));
}

void TestSimulatorFaults::closesOutputEarly_worksOn() {
    fault("closes-output-early");
    QCOMPARE(bench->run(readCommand()), (Answer{0, {}, bannerText()}));
    QCOMPARE(bench->contentOf(QStringLiteral("read.bin")),
             bench->contentOf(QStringLiteral("bench/AT29C256@DIP28.bin")));
    QCOMPARE(bench->contentOf(QStringLiteral("read.bin")).size(), chipSize);
}

void TestSimulatorFaults::environmentMistakes_data() {
    QTest::addColumn<QString>("variable");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QByteArray>("complaint");
    QTest::newRow("unknown fault")
        << QStringLiteral("FAULT") << QStringLiteral("busy,gremlins")
        << QByteArray("minipro-sim: MINIPRO_SIM_FAULT is \"gremlins\"; it can be one or more of "
                      "these, separated by commas:\n    no-programmer ");
    QTest::newRow("place of a fault that has none")
        << QStringLiteral("FAULT") << QStringLiteral("busy:3")
        << QByteArray("minipro-sim: MINIPRO_SIM_FAULT is \"busy:3\"; it can be one or more of ");
    QTest::newRow("place that is no number")
        << QStringLiteral("FAULT") << QStringLiteral("overcurrent:2x")
        << QByteArray("minipro-sim: MINIPRO_SIM_FAULT is \"overcurrent:2x\"; it can be one or ");
    QTest::newRow("unknown dialect")
        << QStringLiteral("DIALECT") << QStringLiteral("old")
        << QByteArray("minipro-sim: MINIPRO_SIM_DIALECT is \"old\"; it can be new or release\n");
    QTest::newRow("unknown pace")
        << QStringLiteral("PACE") << QStringLiteral("slow")
        << QByteArray("minipro-sim: MINIPRO_SIM_PACE is \"slow\"; it can be instant or real\n");
    QTest::newRow("unknown content")
        << QStringLiteral("CHIPS") << QStringLiteral("full")
        << QByteArray(
               "minipro-sim: MINIPRO_SIM_CHIPS is \"full\"; it can be auto, sample or blank\n");
    QTest::newRow("life that is no number")
        << QStringLiteral("GRANDCHILD_MS") << QStringLiteral("1s")
        << QByteArray("minipro-sim: MINIPRO_SIM_GRANDCHILD_MS is \"1s\"; it can be a number of "
                      "milliseconds\n");
}

void TestSimulatorFaults::environmentMistakes() {
    QFETCH(QString, variable);
    QFETCH(QString, value);
    QFETCH(QByteArray, complaint);
    bench->set(variable, value);
    const Answer answer = bench->run(readCommand());
    QCOMPARE(answer.status, 2);
    QCOMPARE(answer.err.left(complaint.size()), complaint);
    QCOMPARE(bench->contentOf(QStringLiteral("read.bin")), QByteArray("no such file"));
}

QTEST_GUILESS_MAIN(TestSimulatorFaults)
#include "tst_simulator_faults.moc"

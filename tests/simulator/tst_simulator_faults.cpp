#include "SimulatorRun.h"

#include <QTest>

#include <algorithm>
#include <csignal>
#include <memory>

using namespace Qt::StringLiterals;

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
    void unplugged_leavesAnEmptyFile();
    void unplugged_leavesAHalfWrittenChip();
    void unplugged_breaksALogicTableOff();
    void severalFaults_canBeGiven();
    void silent_printsTheBannerAndWaits();
    void silent_keepsASearchWaiting();
    void endlessOutput_neverEnds();
    void ignoresSigterm_isEndedByKillAlone();
    void splitUtf8_cutsCharactersBetweenWrites();
    void invalidUtf8_isInTheBanner();
    void leavesGrandchild_keepsThePipesOpen();
    void closesOutputEarly_worksOn();
    void missingDatabase_isNamedForEachPlace();
    void environmentMistakes_data();
    void environmentMistakes();

private:
    void fault(const char *name) { bench->set(u"FAULT"_s, QString::fromLatin1(name)); }
    [[nodiscard]] QStringList readCommand() const {
        return {u"-p"_s, u"AT29C256@DIP28"_s, u"-r"_s, bench->path(u"read.bin"_s)};
    }
    void startUntilBanner(QProcess &process, const QStringList &arguments) const;

    std::unique_ptr<TestBench> bench;
};

namespace {

constexpr int chipSize = 32 * 1024;
const QByteArray idLine = "Chip ID: 0x1FDC  OK\n";
const QByteArray noDevice = "\nIO error: bulk_transfer: LIBUSB_ERROR_NO_DEVICE\n";

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
    QTest::newRow("bootloader")
        << QByteArray("bootloader")
        << QByteArray("Found TL866II+ in bootloader modein bootloader mode!\nExiting...\n");
    QTest::newRow("overcurrent") << QByteArray("overcurrent")
                                 << bannerText() + idLine +
                                        brokenProgress("Reading Code...  ", 1, 32) +
                                        "\nOvercurrent protection!\a\n";
    QTest::newRow("unplugged") << QByteArray("unplugged")
                               << bannerText() + idLine +
                                      brokenProgress("Reading Code...  ", 17, 32) + noDevice;
}

void TestSimulatorFaults::sentences() {
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, err);
    fault(name.constData());
    QCOMPARE(bench->run(readCommand()), (Answer{1, {}, err}));
}

void TestSimulatorFaults::wrongId_goesOnWhenToldTo() {
    fault("wrong-id");
    QCOMPARE(bench->run(readCommand() + QStringList{u"-y"_s}),
             (Answer{0,
                     {},
                     bannerText() +
                         "WARNING: Chip ID mismatch: expected 0x1FDC, got 0xFFFF (unknown)\n" +
                         readingText(32)}));
}

void TestSimulatorFaults::wrongId_hasAsManyDigitsAsTheRightOne() {
    fault("wrong-id");
    const QString file = bench->path(u"read.bin"_s);
    QCOMPARE(bench->run({u"-p"_s, u"W25Q16BV"_s, u"-r"_s, file}),
             (Answer{1,
                     {},
                     bannerText() + "Invalid Chip ID: expected 0xEF4015, got 0xFFFFFF (unknown)\n"
                                    "(use '-y' to continue anyway at your own risk)\n"}));
}

void TestSimulatorFaults::badByte_isReadInverted() {
    QByteArray image(chipSize, '\x7e');
    bench->makeFile(u"bench/AT29C256@DIP28.bin"_s, image);
    fault("bad-byte");
    QCOMPARE(bench->run(readCommand()).status, 0);
    image[0x1234] = '\x81';
    QCOMPARE(bench->contentOf(u"read.bin"_s), image);
}

void TestSimulatorFaults::unplugged_leavesAnEmptyFile() {
    bench->makeFile(u"read.bin"_s, "old bytes");
    fault("unplugged");
    QCOMPARE(bench->run(readCommand()).status, 1);
    QCOMPARE(bench->contentOf(u"read.bin"_s), QByteArray());
}

void TestSimulatorFaults::unplugged_leavesAHalfWrittenChip() {
    const QString image = bench->makeFile(u"image.bin"_s, QByteArray(chipSize, 'x'));
    fault("unplugged");
    QCOMPARE(bench->run({u"-p"_s, u"AT28C256"_s, u"-w"_s, image}),
             (Answer{1,
                     {},
                     bannerText() + "Use -P if you want to write-protect this chip.\n" +
                         "Erasing... T OK\n" + brokenProgress("Writing  Code...  ", 129, 256) +
                         noDevice + "This chip may be write-protected. Use -u and try again.\n"}));
    QCOMPARE(bench->contentOf(u"bench/AT28C256.bin"_s),
             QByteArray(chipSize / 2, 'x') + QByteArray(chipSize / 2, '\xff'));
}

void TestSimulatorFaults::unplugged_breaksALogicTableOff() {
    fault("unplugged");
    const Answer answer = bench->run({u"-T"_s, u"-p"_s, u"7400"_s});
    QCOMPARE(answer.status, 1);
    QCOMPARE(answer.err, bannerText() + noDevice);
    QCOMPARE(answer.out.count('\n'), 3);
}

void TestSimulatorFaults::severalFaults_canBeGiven() {
    bench->makeFile(u"bench/AT29C256@DIP28.bin"_s, QByteArray(chipSize, '\xff'));
    fault("wrong-id, bad-byte");
    QCOMPARE(bench->run(readCommand()).status, 1);
    QCOMPARE(bench->run(readCommand() + QStringList{u"-y"_s}).status, 0);
    QCOMPARE(bench->contentOf(u"read.bin"_s).at(0x1234), '\0');
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
    bench->start(process, {u"-L"_s, u"27C"_s});
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
            "USB speed: 12Mbps (USB 1.1)\n" + idLine + readingText(32));
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
    bench->set(u"GRANDCHILD_MS"_s, u"100"_s);
    const Answer answer = bench->run(readCommand());
    QCOMPARE(answer.status, 0);
    QVERIFY(answer.err.startsWith(bannerText() + "Background process "));
    QVERIFY(answer.err.contains(" keeps the pipes open.\n" + idLine));
}

void TestSimulatorFaults::closesOutputEarly_worksOn() {
    fault("closes-output-early");
    QCOMPARE(bench->run(readCommand()), (Answer{0, {}, bannerText()}));
    QCOMPARE(bench->contentOf(u"read.bin"_s), bench->contentOf(u"bench/AT29C256@DIP28.bin"_s));
    QCOMPARE(bench->contentOf(u"read.bin"_s).size(), chipSize);
}

void TestSimulatorFaults::missingDatabase_isNamedForEachPlace() {
    fault("no-database");
    const QByteArray reason = "/logicic.xml: No such file or directory\n";
    const QByteArray share = "/usr/local/share/minipro" + reason;
    QCOMPARE(bench->run(readCommand()),
             (Answer{1, {}, "." + reason + share + "Device AT29C256@DIP28 not found!\n"}));
    bench->setHome(u"/somewhere"_s);
    QCOMPARE(bench->run({u"-q"_s, u"t48"_s, u"-L"_s, u"27C"_s}),
             (Answer{1, {}, "." + reason + "/somewhere" + reason + share}));
}

void TestSimulatorFaults::environmentMistakes_data() {
    QTest::addColumn<QString>("variable");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QByteArray>("complaint");
    QTest::newRow("unknown fault")
        << u"FAULT"_s << u"busy,gremlins"_s
        << QByteArray("minipro-sim: MINIPRO_SIM_FAULT is \"gremlins\"; it can be one or more of "
                      "these, separated by commas:\n    no-programmer ");
    QTest::newRow("unknown dialect")
        << u"DIALECT"_s << u"old"_s
        << QByteArray("minipro-sim: MINIPRO_SIM_DIALECT is \"old\"; it can be new or release\n");
    QTest::newRow("unknown pace")
        << u"PACE"_s << u"slow"_s
        << QByteArray("minipro-sim: MINIPRO_SIM_PACE is \"slow\"; it can be instant or real\n");
    QTest::newRow("unknown content")
        << u"CHIPS"_s << u"full"_s
        << QByteArray(
               "minipro-sim: MINIPRO_SIM_CHIPS is \"full\"; it can be auto, sample or blank\n");
    QTest::newRow("life that is no number")
        << u"GRANDCHILD_MS"_s << u"1s"_s
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
    QCOMPARE(bench->contentOf(u"read.bin"_s), QByteArray("no such file"));
}

QTEST_GUILESS_MAIN(TestSimulatorFaults)
#include "tst_simulator_faults.moc"

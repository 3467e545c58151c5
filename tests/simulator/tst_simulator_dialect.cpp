// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "SimulatorRun.h"

#include <QRegularExpression>
#include <QTest>

#include <array>

#include <fcntl.h>
#include <unistd.h>

namespace {

const QByteArray newBanner = bannerText() + "\n";

/// `text` with every duration of the newer dialect replaced by "T".
QByteArray withoutTimes(const QByteArray &text) {
    static const QRegularExpression time(QStringLiteral("\\b(\\d+m )?\\d+(\\.\\d+)? (ms|Sec)\\b"));
    return QString::fromLatin1(text).replace(time, QStringLiteral("T")).toLatin1();
}

/// A progress line of the newer dialect.
QByteArray counted(const QByteArray &label, int blocks) {
    QByteArray text;
    for (int done = 1; done <= blocks; ++done)
        text +=
            "\r\x1b[K" + label + QByteArray::number(100 * done / blocks).rightJustified(2) + '%';
    return text + "\r\x1b[K" + label + "T  OK\n";
}

/// What the run writes to standard error, each write by itself: a pipe of packets keeps them apart.
QByteArrayList writesOf(const TestBench &bench, const QStringList &arguments) {
    int ends[2];
    if (pipe2(ends, O_DIRECT | O_CLOEXEC) != 0)
        return {};
    QProcess process;
    process.setChildProcessModifier([&ends] { dup2(ends[1], STDERR_FILENO); });
    bench.start(process, arguments);
    close(ends[1]);
    QByteArrayList writes;
    std::array<char, 4096> packet{};
    for (ssize_t size = 0; (size = read(ends[0], packet.data(), packet.size())) > 0;)
        writes.append(QByteArray(packet.data(), size));
    close(ends[0]);
    process.waitForFinished();
    return writes;
}

const QByteArray erased = "\r\x1b[KErasing... \r\x1b[KErasing... T  OK\n";
const QByteArray written = counted("Writing Code...  ", 256);
const QByteArray readBack = counted("Reading Code...  ", 64);
const QByteArray protectHint = "Use -P if you want to write-protect this chip.\n";

} // namespace

/// The words of the tool's development line.
class TestSimulatorDialect : public QObject {
    Q_OBJECT

private slots:
    void init();

    void progress_countsBlocksThatAreDone();
    void progress_isWrittenInPieces_data();
    void progress_isWrittenInPieces();
    void write_countsWithTheSameBlanks();
    void erase_writesItsLineAnew();
    void voltages_comeBehindTheChipId();
    void unknownDevice_comesBehindTheBanner();
    void missingDatabase_comesBehindTheBanner();
    void missingAdapter_isNoObstacle();
    void logicTest_speaksAsTheRelease();
    void logicTest_ofAMemory_isRefused();
    void menu_hasFourChoices_data();
    void menu_hasFourChoices();
    void latestModel_isKnown();
    void list_isLonger();
    void description_data();
    void description();
    void release_isTheOtherValue();

private:
    [[nodiscard]] Answer run(const QStringList &arguments, const QByteArray &input = {}) const {
        Answer answer = bench->run(arguments, input);
        answer.err = withoutTimes(answer.err);
        return answer;
    }
    void fault(const char *name) { bench->set(QStringLiteral("FAULT"), QString::fromLatin1(name)); }

    std::unique_ptr<TestBench> bench;
};

void TestSimulatorDialect::init() {
    bench = std::make_unique<TestBench>();
    bench->set(QStringLiteral("DIALECT"), QStringLiteral("new"));
}

void TestSimulatorDialect::progress_countsBlocksThatAreDone() {
    QCOMPARE(run({QStringLiteral("-p"), QStringLiteral("AT28C256"), QStringLiteral("-r"),
                  QStringLiteral("read.bin")}),
             (Answer{0, {}, newBanner + readBack}));
}

void TestSimulatorDialect::progress_isWrittenInPieces_data() {
    QTest::addColumn<QString>("dialect");
    QTest::addColumn<QByteArrayList>("pieces");
    QTest::newRow("the label, then the percentage")
        << QStringLiteral("release") << QByteArrayList{"\r\x1b[KReading Code...  ", " 0%"};
    QTest::newRow("both at once") << QStringLiteral("new")
                                  << QByteArrayList{"\r\x1b[KReading Code...  100%"};
}

void TestSimulatorDialect::progress_isWrittenInPieces() {
    QFETCH(QString, dialect);
    QFETCH(QByteArrayList, pieces);
    bench->set(QStringLiteral("DIALECT"), dialect);
    const QByteArrayList writes =
        writesOf(*bench, {QStringLiteral("-p"), QStringLiteral("24C02"), QStringLiteral("-r"),
                          QStringLiteral("read.bin")});
    const qsizetype first = writes.indexOf(pieces.first());
    QVERIFY(first > 0);
    QCOMPARE(writes.mid(first, pieces.size()), pieces);
}

void TestSimulatorDialect::write_countsWithTheSameBlanks() {
    const QString image = bench->makeFile(QStringLiteral("image.bin"), QByteArray(32 * 1024, 'x'));
    QCOMPARE(run({QStringLiteral("-p"), QStringLiteral("AT28C256"), QStringLiteral("-w"), image}),
             (Answer{0,
                     {},
                     newBanner + protectHint + erased + written + readBack + "Verification OK\n"}));
    QCOMPARE(bench->contentOf(QStringLiteral("bench/AT28C256.bin")), QByteArray(32 * 1024, 'x'));
}

void TestSimulatorDialect::erase_writesItsLineAnew() {
    QCOMPARE(run({QStringLiteral("-p"), QStringLiteral("AT28C256"), QStringLiteral("-E")}),
             (Answer{0, {}, newBanner + erased}));
}

void TestSimulatorDialect::voltages_comeBehindTheChipId() {
    QCOMPARE(run({QStringLiteral("-p"), QStringLiteral("M27C512@DIP28"), QStringLiteral("-r"),
                  QStringLiteral("read.bin")}),
             (Answer{0,
                     {},
                     newBanner +
                         "Chip ID: 0x203D  OK\n"
                         "VPP: 10 V, VDD: 4 V, VCC: 5 V, Pulse: 100 us\n\n" +
                         readBack}));
}

void TestSimulatorDialect::unknownDevice_comesBehindTheBanner() {
    QCOMPARE(run({QStringLiteral("-p"), QStringLiteral("NOSUCH"), QStringLiteral("-r"),
                  QStringLiteral("read.bin")}),
             (Answer{1, {}, newBanner + "\nDevice NOSUCH not found!\n"}));
}

void TestSimulatorDialect::missingDatabase_comesBehindTheBanner() {
    fault("no-database");
    QCOMPARE(run({QStringLiteral("-p"), QStringLiteral("AT28C256"), QStringLiteral("-r"),
                  QStringLiteral("read.bin")}),
             (Answer{1,
                     {},
                     newBanner + "./logicic.xml: No such file or directory\n"
                                 "/usr/local/share/minipro/logicic.xml: No such file or directory\n"
                                 "\nDevice AT28C256 not found!\n"}));
}

void TestSimulatorDialect::missingAdapter_isNoObstacle() {
    fault("no-tsop-adapter");
    QCOMPARE(
        run({QStringLiteral("-p"), QStringLiteral("AM29F800BB@TSOP48"), QStringLiteral("-r"),
             QStringLiteral("read.bin")}),
        (Answer{
            0, {}, newBanner + "TSOP adapter not found!\n" + counted("Reading Code...  ", 1024)}));
}

void TestSimulatorDialect::logicTest_speaksAsTheRelease() {
    const Answer answer = run({QStringLiteral("-T"), QStringLiteral("-p"), QStringLiteral("7400")});
    QCOMPARE(answer.err, newBanner + "Logic test successful.\n");
    bench->set(QStringLiteral("DIALECT"), QStringLiteral("release"));
    QCOMPARE(answer.out,
             run({QStringLiteral("-T"), QStringLiteral("-p"), QStringLiteral("7400")}).out);
}

void TestSimulatorDialect::logicTest_ofAMemory_isRefused() {
    QCOMPARE(
        run({QStringLiteral("-T"), QStringLiteral("-p"), QStringLiteral("at28c256")}),
        (Answer{
            1, {}, newBanner + "AT28C256: test vectors are not defined for this device type.\n"}));
}

void TestSimulatorDialect::menu_hasFourChoices_data() {
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("listed");
    QTest::newRow("the latest model") << QByteArray("3\n") << 0 << QByteArray("LM339(custom)\n");
    QTest::newRow("abort") << QByteArray("4\n") << 1 << QByteArray();
}

void TestSimulatorDialect::menu_hasFourChoices() {
    QFETCH(QByteArray, input);
    QFETCH(int, status);
    QFETCH(QByteArray, listed);
    fault("no-programmer");
    QCOMPARE(run({QStringLiteral("-L"), QStringLiteral("LM339")}, input),
             (Answer{status, listed,
                     "No device found. Which database do you want to display?\n"
                     "1) TL866A/CS\n2) TL866II+/T48/T56\n3) T76\n4) Abort\n"}));
}

void TestSimulatorDialect::latestModel_isKnown() {
    QCOMPARE(run({QStringLiteral("-q"), QStringLiteral("t76"), QStringLiteral("-L"),
                  QStringLiteral("LM339")}),
             (Answer{0, "LM339(custom)\n", {}}));
    QVERIFY(run({QStringLiteral("-Q")}).err.endsWith("t76: T76\n"));
}

void TestSimulatorDialect::list_isLonger() {
    const QByteArray list =
        run({QStringLiteral("-q"), QStringLiteral("t76"), QStringLiteral("-l")}).out;
    QVERIFY(list.count('\n') > 32'000);
    QVERIFY(list.contains("\nAM29F040@TSOP32(ADP:Pin9to1)\n"));
    QCOMPARE(run({QStringLiteral("-p"), QStringLiteral("AM29F040@TSOP32(ADP:Pin9to1)"),
                  QStringLiteral("-r"), QStringLiteral("read.bin")})
                 .status,
             0);
    QCOMPARE(bench->contentOf(QStringLiteral("read.bin")).size(), 512 * 1024);
    bench->set(QStringLiteral("DIALECT"), QStringLiteral("release"));
    QCOMPARE(run({QStringLiteral("-p"), QStringLiteral("AM29F040@TSOP32(ADP:Pin9to1)"),
                  QStringLiteral("-r"), QStringLiteral("read.bin")}),
             (Answer{1, {}, "Device AM29F040@TSOP32(ADP:Pin9to1) not found!\n"}));
}

void TestSimulatorDialect::description_data() {
    QTest::addColumn<QString>("device");
    QTest::addColumn<QByteArray>("said");
    const QByteArray heading = "\n---------------Chip Info----------------\n";
    const QByteArray dashes = QByteArray(40, '-') + '\n';
    QTest::newRow("PLCC") << QStringLiteral("AT28C64B@PLCC32")
                          << heading + "Name: AT28C64B@PLCC32\n"
                                       "Available on: TL866II, T48, T56\nMemory: 8192 Bytes\n"
                                       "Package: PLCC32\nProtocol: 0x07\n"
                                       "Read buffer size: 512 Bytes\n"
                                       "Write buffer size: 128 Bytes\n";
    QTest::newRow("chosen voltages")
        << QStringLiteral("AM27C64@DIP28")
        << heading +
               "Name: AM27C64@DIP28\nAvailable on: TL866II, T48, T56\nMemory: 8192 Bytes\n"
               "Package: DIP28\nProtocol: 0x0b\nRead buffer size: 1024 Bytes\n"
               "Write buffer size: 128 Bytes\n" +
               dashes +
               "VPP programming voltage: 12.5V\nVDD write voltage: 5.5V\n"
               "VCC verify voltage: 5V\nPulse delay: 100us\n" +
               dashes;
}

void TestSimulatorDialect::description() {
    QFETCH(QString, device);
    QFETCH(QByteArray, said);
    QCOMPARE(run({QStringLiteral("-q"), QStringLiteral("tl866ii"), QStringLiteral("-d"), device}),
             (Answer{0, {}, said}));
}

void TestSimulatorDialect::release_isTheOtherValue() {
    bench->set(QStringLiteral("DIALECT"), QStringLiteral("release"));
    QCOMPARE(bench->run({QStringLiteral("-p"), QStringLiteral("24C02"), QStringLiteral("-r"),
                         QStringLiteral("read.bin")}),
             (Answer{0, {}, bannerText() + readingText(1)}));
}

QTEST_GUILESS_MAIN(TestSimulatorDialect)
#include "tst_simulator_dialect.moc"

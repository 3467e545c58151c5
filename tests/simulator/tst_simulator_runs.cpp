// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "SimulatorRun.h"

#include <QElapsedTimer>
#include <QTest>

/// What a run prints, byte for byte, on both streams.
class TestSimulatorRuns : public QObject {
    Q_OBJECT

private slots:
    void read_countsUpAndFillsTheFile();
    void write_erasesWritesAndReadsBack();
    void write_ofAnotherImage_failsAtTheFirstDifference();
    void verify_readsAndCompares();
    void erase_saysHowLongItTook();
    void chipId_isShownForChipsThatHaveOne();
    void unknownDevice_isNamed();
    void realPace_takesTenMillisecondsABlock();

private:
    TestBench bench;
};

namespace {

constexpr int eepromSize = 32 * 1024;

QByteArray numberedBytes(int size) {
    QByteArray bytes(size, Qt::Uninitialized);
    for (int i = 0; i < size; ++i)
        bytes[i] = char((i + i / 256) % 256);
    return bytes;
}

const QByteArray protectHint = "Use -P if you want to write-protect this chip.\n";
const QByteArray protectSuspicion = "This chip may be write-protected. Use -u and try again.\n";

} // namespace

void TestSimulatorRuns::read_countsUpAndFillsTheFile() {
    const QString file = bench.path(QStringLiteral("read.bin"));
    QCOMPARE(
        bench.run({QStringLiteral("-p"), QStringLiteral("AT28C256"), QStringLiteral("-r"), file}),
        (Answer{0, {}, bannerText() + readingText(64)}));
    QCOMPARE(bench.contentOf(QStringLiteral("read.bin")).size(), eepromSize);
    QCOMPARE(bench.contentOf(QStringLiteral("read.bin")),
             bench.contentOf(QStringLiteral("bench/AT28C256.bin")));
}

void TestSimulatorRuns::write_erasesWritesAndReadsBack() {
    const QByteArray image = numberedBytes(eepromSize);
    const QString file = bench.makeFile(QStringLiteral("image.bin"), image);
    QCOMPARE(
        bench.run({QStringLiteral("-p"), QStringLiteral("AT28C256"), QStringLiteral("-w"), file}),
        (Answer{0,
                {},
                bannerText() + protectHint + "Erasing... T OK\n" + writingText(256) +
                    readingText(64) + "Verification OK\n"}));
    QCOMPARE(bench.contentOf(QStringLiteral("bench/AT28C256.bin")), image);
}

void TestSimulatorRuns::write_ofAnotherImage_failsAtTheFirstDifference() {
    QByteArray image = numberedBytes(eepromSize);
    image[0x1234] = 0x7E;
    const QString file = bench.makeFile(QStringLiteral("image.bin"), image);
    TestBench badBench;
    badBench.set(QStringLiteral("FAULT"), QStringLiteral("bad-byte"));
    QCOMPARE(badBench.run(
                 {QStringLiteral("-p"), QStringLiteral("AT28C256"), QStringLiteral("-w"), file}),
             (Answer{1,
                     {},
                     bannerText() + protectHint + "Erasing... T OK\n" + writingText(256) +
                         readingText(64) +
                         "Verification failed at address 0x1234: File=0x7E, Device=0x81\n" +
                         protectSuspicion}));
}

void TestSimulatorRuns::verify_readsAndCompares() {
    const QByteArray image = numberedBytes(eepromSize);
    const QString file = bench.makeFile(QStringLiteral("image.bin"), image);
    bench.makeFile(QStringLiteral("bench/AT28C256.bin"), image);
    QCOMPARE(
        bench.run({QStringLiteral("-p"), QStringLiteral("AT28C256"), QStringLiteral("-m"), file}),
        (Answer{0, {}, bannerText() + readingText(64) + "Verification OK\n"}));
}

void TestSimulatorRuns::erase_saysHowLongItTook() {
    QCOMPARE(bench.run({QStringLiteral("-p"), QStringLiteral("AT28C256"), QStringLiteral("-E")}),
             (Answer{0, {}, bannerText() + "Erasing... T OK\n"}));
    QCOMPARE(bench.contentOf(QStringLiteral("bench/AT28C256.bin")), QByteArray(eepromSize, '\xff'));
}

void TestSimulatorRuns::chipId_isShownForChipsThatHaveOne() {
    const QString file = bench.path(QStringLiteral("read.bin"));
    QCOMPARE(bench.run({QStringLiteral("-p"), QStringLiteral("w27c512@dip28"), QStringLiteral("-r"),
                        file}),
             (Answer{0, {}, bannerText() + "Chip ID: 0xDA08  OK\n" + readingText(64)}));
    QCOMPARE(bench.contentOf(QStringLiteral("read.bin")).size(), 65'536);
}

void TestSimulatorRuns::unknownDevice_isNamed() {
    const QString file = bench.makeFile(QStringLiteral("kept.bin"), "kept");
    QCOMPARE(
        bench.run({QStringLiteral("-p"), QStringLiteral("NOSUCHCHIP"), QStringLiteral("-r"), file}),
        (Answer{1, {}, "Device NOSUCHCHIP not found!\n"}));
    QCOMPARE(bench.contentOf(QStringLiteral("kept.bin")), QByteArray("kept"));
}

void TestSimulatorRuns::realPace_takesTenMillisecondsABlock() {
    constexpr int blocks = 16;
    TestBench slowBench;
    slowBench.set(QStringLiteral("PACE"), QStringLiteral("real"));
    QElapsedTimer watch;
    watch.start();
    QCOMPARE(slowBench.run({QStringLiteral("-p"), QStringLiteral("AT24C64"), QStringLiteral("-r"),
                            slowBench.path(QStringLiteral("read.bin"))}),
             (Answer{0, {}, bannerText() + readingText(blocks)}));
    QVERIFY(watch.elapsed() >= blocks * 10);
}

QTEST_GUILESS_MAIN(TestSimulatorRuns)
#include "tst_simulator_runs.moc"

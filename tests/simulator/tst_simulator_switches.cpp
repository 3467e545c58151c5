// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "SimulatorRun.h"

#include <QTest>

/// Switches and actions beside reading, writing and verifying as a whole.
class TestSimulatorSwitches : public QObject {
    Q_OBJECT

private slots:
    void init();

    void idAlone_data();
    void idAlone();
    void skippedId_isNotAskedFor();
    void writing_data();
    void writing();
    void unprotect_isNotNeededWithoutProtection();
    void blankCheck_data();
    void blankCheck();
    void otherMemories_data();
    void otherMemories();
    void voltages_areShownForAnyAction_data();
    void voltages_areShownForAnyAction();

private:
    [[nodiscard]] QStringList command(const QString &device, const QString &switches) const {
        return QStringList{QStringLiteral("-p"), device} + switches.split(u' ');
    }

    std::unique_ptr<TestBench> bench;
};

namespace {

const QByteArray erased = "Erasing... T OK\n";
const QByteArray verified = readingText(64) + "Verification OK\n";
const QByteArray protectHint = "Use -P if you want to write-protect this chip.\n";
const QByteArray voltages = "\nVPP=12.5V, VDD=5.5V, VCC=5V, Pulse=100us\n";

} // namespace

void TestSimulatorSwitches::init() {
    bench = std::make_unique<TestBench>();
    bench->makeFile(QStringLiteral("image.bin"), QByteArray(32 * 1024, 'x'));
}

void TestSimulatorSwitches::idAlone_data() {
    QTest::addColumn<QString>("device");
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QString>("switches");
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("said");
    const QByteArray wrong = "Chip ID mismatch: expected 0xDA08, got 0xFFFF (unknown)\n";
    QTest::newRow("right") << QStringLiteral("W27C512@DIP28") << QStringLiteral("")
                           << QStringLiteral("-D") << 0 << QByteArray("Chip ID: 0xDA08  OK\n");
    QTest::newRow("wrong") << QStringLiteral("W27C512@DIP28") << QStringLiteral("wrong-id")
                           << QStringLiteral("-D") << 1 << wrong;
    QTest::newRow("wrong, and no error")
        << QStringLiteral("W27C512@DIP28") << QStringLiteral("wrong-id") << QStringLiteral("-D -y")
        << 1 << wrong;
    QTest::newRow("none") << QStringLiteral("AT28C256") << QStringLiteral("")
                          << QStringLiteral("-D") << 1
                          << QByteArray("This chip doesn't have a chip ID!\n");
    QTest::newRow("before an action")
        << QStringLiteral("W27C512@DIP28") << QStringLiteral("") << QStringLiteral("-D -E") << 0
        << QByteArray("Chip ID: 0xDA08  OK\n");
    QTest::newRow("a logic IC") << QStringLiteral("7400") << QStringLiteral("")
                                << QStringLiteral("-D") << 1 << QByteArray("Unsupported device!\n");
}

void TestSimulatorSwitches::idAlone() {
    QFETCH(QString, device);
    QFETCH(QString, fault);
    QFETCH(QString, switches);
    QFETCH(int, status);
    QFETCH(QByteArray, said);
    bench->set(QStringLiteral("FAULT"), fault);
    QCOMPARE(bench->run(command(device, switches)), (Answer{status, {}, bannerText() + said}));
}

void TestSimulatorSwitches::skippedId_isNotAskedFor() {
    bench->set(QStringLiteral("FAULT"), QStringLiteral("wrong-id"));
    QCOMPARE(bench->run(command(QStringLiteral("W27C512@DIP28"), QStringLiteral("-x -r read.bin"))),
             (Answer{0, {}, bannerText() + "WARNING: skipping Chip ID test\n" + readingText(64)}));
}

void TestSimulatorSwitches::writing_data() {
    QTest::addColumn<QString>("switches");
    QTest::addColumn<QByteArray>("said");
    const QByteArray written = writingText(256);
    QTest::newRow("nothing") << QStringLiteral("") << protectHint + erased + written + verified;
    QTest::newRow("no verification") << QStringLiteral(" -v") << protectHint + erased + written;
    QTest::newRow("no erase") << QStringLiteral(" -e") << protectHint + written + verified;
    QTest::newRow("unprotect") << QStringLiteral(" -u")
                               << protectHint + erased + "Protect off...OK\n" + written + verified;
    QTest::newRow("protect") << QStringLiteral(" -P")
                             << erased + written + verified + "Protect on...OK\n";
    QTest::newRow("all of them") << QStringLiteral(" -u -P -e -v")
                                 << "Protect off...OK\n" + written + "Protect on...OK\n";
}

void TestSimulatorSwitches::writing() {
    QFETCH(QString, switches);
    QFETCH(QByteArray, said);
    QCOMPARE(
        bench->run(command(QStringLiteral("AT28C256"), QStringLiteral("-w image.bin") + switches)),
        (Answer{0, {}, bannerText() + said}));
    QCOMPARE(bench->contentOf(QStringLiteral("bench/AT28C256.bin")), QByteArray(32 * 1024, 'x'));
}

void TestSimulatorSwitches::unprotect_isNotNeededWithoutProtection() {
    QCOMPARE(
        bench->run(command(QStringLiteral("W27E257@DIP28"), QStringLiteral("-u -P -w image.bin"))),
        (Answer{0,
                {},
                bannerText() + "Chip ID: 0xDA02  OK\n" + erased + writingText(256) +
                    readingText(32) + "Verification OK\n"}));
}

void TestSimulatorSwitches::blankCheck_data() {
    QTest::addColumn<char>("content");
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("said");
    QTest::newRow("blank") << '\xff' << 0 << QByteArray("Code memory section is blank.\n");
    QTest::newRow("not blank") << 'x' << 1 << QByteArray("Code memory section is not blank.\n");
}

void TestSimulatorSwitches::blankCheck() {
    QFETCH(char, content);
    QFETCH(int, status);
    QFETCH(QByteArray, said);
    bench->makeFile(QStringLiteral("bench/AT28C256.bin"),
                    QByteArray(32 * 1024 - 1, '\xff') + QByteArray(1, content));
    QCOMPARE(bench->run(command(QStringLiteral("AT28C256"), QStringLiteral("-b"))),
             (Answer{status, {}, bannerText() + readingText(64) + said}));
}

void TestSimulatorSwitches::otherMemories_data() {
    QTest::addColumn<QString>("section");
    for (const char *section : {"config", "data", "user", "calibration"})
        QTest::newRow(section) << QString::fromLatin1(section);
}

void TestSimulatorSwitches::otherMemories() {
    QFETCH(QString, section);
    bench->makeFile(QStringLiteral("kept.bin"), "kept");
    const Answer refused{1, {}, bannerText() + "No " + section.toUtf8() + " section found.\n"};
    for (const QString &action : {QStringLiteral(" -r kept.bin"), QStringLiteral(" -w image.bin"),
                                  QStringLiteral(" -m image.bin")})
        QCOMPARE(bench->run(
                     command(QStringLiteral("24LC256"), QStringLiteral("-c ") + section + action)),
                 refused);
    QCOMPARE(bench->contentOf(QStringLiteral("kept.bin")), QByteArray("kept"));
}

void TestSimulatorSwitches::voltages_areShownForAnyAction_data() {
    QTest::addColumn<QString>("action");
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("said");
    QTest::newRow("read") << QStringLiteral("-r read.bin") << 0 << readingText(32);
    QTest::newRow("verify") << QStringLiteral("-m image.bin") << 1
                            << readingText(32) + "Verification failed at address 0x0000: "
                                                 "File=0x78, Device=0xFF\n";
    QTest::newRow("ID") << QStringLiteral("-D") << 0 << QByteArray();
    QTest::newRow("erase") << QStringLiteral("-E") << 1
                           << QByteArray("This chip can't be erased!\n");
}

void TestSimulatorSwitches::voltages_areShownForAnyAction() {
    QFETCH(QString, action);
    QFETCH(int, status);
    QFETCH(QByteArray, said);
    QCOMPARE(bench->run(command(QStringLiteral("AM27C256@DIP28"), action)),
             (Answer{status, {}, bannerText() + voltages + "Chip ID: 0x0110  OK\n" + said}));
}

QTEST_GUILESS_MAIN(TestSimulatorSwitches)
#include "tst_simulator_switches.moc"

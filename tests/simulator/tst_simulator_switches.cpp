// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "SimulatorRun.h"

#include <QTest>

using namespace Qt::StringLiterals;

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
        return QStringList{u"-p"_s, device} + switches.split(u' ');
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
    bench->makeFile(u"image.bin"_s, QByteArray(32 * 1024, 'x'));
}

void TestSimulatorSwitches::idAlone_data() {
    QTest::addColumn<QString>("device");
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QString>("switches");
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("said");
    const QByteArray wrong = "Chip ID mismatch: expected 0xDA08, got 0xFFFF (unknown)\n";
    QTest::newRow("right") << u"W27C512@DIP28"_s << u""_s << u"-D"_s << 0
                           << QByteArray("Chip ID: 0xDA08  OK\n");
    QTest::newRow("wrong") << u"W27C512@DIP28"_s << u"wrong-id"_s << u"-D"_s << 1 << wrong;
    QTest::newRow("wrong, and no error")
        << u"W27C512@DIP28"_s << u"wrong-id"_s << u"-D -y"_s << 1 << wrong;
    QTest::newRow("none") << u"AT28C256"_s << u""_s << u"-D"_s << 1
                          << QByteArray("This chip doesn't have a chip ID!\n");
    QTest::newRow("before an action")
        << u"W27C512@DIP28"_s << u""_s << u"-D -E"_s << 0 << QByteArray("Chip ID: 0xDA08  OK\n");
    QTest::newRow("a logic IC") << u"7400"_s << u""_s << u"-D"_s << 1
                                << QByteArray("Unsupported device!\n");
}

void TestSimulatorSwitches::idAlone() {
    QFETCH(QString, device);
    QFETCH(QString, fault);
    QFETCH(QString, switches);
    QFETCH(int, status);
    QFETCH(QByteArray, said);
    bench->set(u"FAULT"_s, fault);
    QCOMPARE(bench->run(command(device, switches)), (Answer{status, {}, bannerText() + said}));
}

void TestSimulatorSwitches::skippedId_isNotAskedFor() {
    bench->set(u"FAULT"_s, u"wrong-id"_s);
    QCOMPARE(bench->run(command(u"W27C512@DIP28"_s, u"-x -r read.bin"_s)),
             (Answer{0, {}, bannerText() + "WARNING: skipping Chip ID test\n" + readingText(64)}));
}

void TestSimulatorSwitches::writing_data() {
    QTest::addColumn<QString>("switches");
    QTest::addColumn<QByteArray>("said");
    const QByteArray written = writingText(256);
    QTest::newRow("nothing") << u""_s << protectHint + erased + written + verified;
    QTest::newRow("no verification") << u" -v"_s << protectHint + erased + written;
    QTest::newRow("no erase") << u" -e"_s << protectHint + written + verified;
    QTest::newRow("unprotect") << u" -u"_s
                               << protectHint + erased + "Protect off...OK\n" + written + verified;
    QTest::newRow("protect") << u" -P"_s << erased + written + verified + "Protect on...OK\n";
    QTest::newRow("all of them") << u" -u -P -e -v"_s
                                 << "Protect off...OK\n" + written + "Protect on...OK\n";
}

void TestSimulatorSwitches::writing() {
    QFETCH(QString, switches);
    QFETCH(QByteArray, said);
    QCOMPARE(bench->run(command(u"AT28C256"_s, u"-w image.bin"_s + switches)),
             (Answer{0, {}, bannerText() + said}));
    QCOMPARE(bench->contentOf(u"bench/AT28C256.bin"_s), QByteArray(32 * 1024, 'x'));
}

void TestSimulatorSwitches::unprotect_isNotNeededWithoutProtection() {
    QCOMPARE(bench->run(command(u"W27E257@DIP28"_s, u"-u -P -w image.bin"_s)),
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
    bench->makeFile(u"bench/AT28C256.bin"_s,
                    QByteArray(32 * 1024 - 1, '\xff') + QByteArray(1, content));
    QCOMPARE(bench->run(command(u"AT28C256"_s, u"-b"_s)),
             (Answer{status, {}, bannerText() + readingText(64) + said}));
}

void TestSimulatorSwitches::otherMemories_data() {
    QTest::addColumn<QString>("section");
    for (const char *section : {"config", "data", "user", "calibration"})
        QTest::newRow(section) << QString::fromLatin1(section);
}

void TestSimulatorSwitches::otherMemories() {
    QFETCH(QString, section);
    bench->makeFile(u"kept.bin"_s, "kept");
    const Answer refused{1, {}, bannerText() + "No " + section.toUtf8() + " section found.\n"};
    for (const QString &action : {u" -r kept.bin"_s, u" -w image.bin"_s, u" -m image.bin"_s})
        QCOMPARE(bench->run(command(u"24LC256"_s, u"-c "_s + section + action)), refused);
    QCOMPARE(bench->contentOf(u"kept.bin"_s), QByteArray("kept"));
}

void TestSimulatorSwitches::voltages_areShownForAnyAction_data() {
    QTest::addColumn<QString>("action");
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("said");
    QTest::newRow("read") << u"-r read.bin"_s << 0 << readingText(32);
    QTest::newRow("verify") << u"-m image.bin"_s << 1
                            << readingText(32) + "Verification failed at address 0x0000: "
                                                 "File=0x78, Device=0xFF\n";
    QTest::newRow("ID") << u"-D"_s << 0 << QByteArray();
    QTest::newRow("erase") << u"-E"_s << 1 << QByteArray("This chip can't be erased!\n");
}

void TestSimulatorSwitches::voltages_areShownForAnyAction() {
    QFETCH(QString, action);
    QFETCH(int, status);
    QFETCH(QByteArray, said);
    QCOMPARE(bench->run(command(u"AM27C256@DIP28"_s, action)),
             (Answer{status, {}, bannerText() + voltages + "Chip ID: 0x0110  OK\n" + said}));
}

QTEST_GUILESS_MAIN(TestSimulatorSwitches)
#include "tst_simulator_switches.moc"

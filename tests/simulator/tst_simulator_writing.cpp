// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "SimulatorRun.h"

#include <QTest>

namespace {

constexpr int kib = 1024;

/// A buffer that holds `head` and is blank from there on.
QByteArray blankAfter(const QByteArray &head, int size) {
    return head + QByteArray(size - head.size(), '\xff');
}

/// The last line of a run's messages.
QByteArray verdictOf(const Answer &answer) {
    return answer.err.trimmed().split('\n').last().split('\r').last();
}

} // namespace

/// What an erase and a write do to the bytes in a chip, and what keeps them from it.
class TestSimulatorWriting : public QObject {
    Q_OBJECT

private slots:
    void init();

    void writing_data();
    void writing();
    void sizeMismatch_data();
    void sizeMismatch();
    void protection_data();
    void protection();
    void erase_ofAChipThatOnlyLightErases_fails();
    void write_ofAFileThatIsNotThere_fails();

private:
    Answer write(const QString &device, const QByteArray &image, const QStringList &switches = {});

    std::unique_ptr<TestBench> bench;
};

void TestSimulatorWriting::init() {
    bench = std::make_unique<TestBench>();
}

Answer TestSimulatorWriting::write(const QString &device, const QByteArray &image,
                                   const QStringList &switches) {
    const QString file = bench->makeFile(QStringLiteral("image.bin"), image);
    return bench->run(QStringList{QStringLiteral("-p"), device, QStringLiteral("-w"), file} +
                      switches);
}

void TestSimulatorWriting::writing_data() {
    QTest::addColumn<QString>("device");
    QTest::addColumn<QStringList>("switches");
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("image");
    QTest::addColumn<QByteArray>("after");
    QTest::addColumn<QByteArray>("verdict");
    const QByteArray before("\x0f\xf0\xff\x00", 4);
    const QByteArray image("\xff\x30\x55\xaa", 4);
    const QByteArray cleared("\x0f\x30\x55\x00", 4);
    const QByteArray failure("Verification failed at address 0x0000: File=0xFF, Device=0x0F");
    const QByteArray success("Verification OK");
    const QStringList keep{QStringLiteral("-e")};
    QTest::newRow("an erased EEPROM takes every bit")
        << QStringLiteral("AT28C64") << QStringList() << before << image << image << success;
    QTest::newRow("an EEPROM replaces its bytes without an erase")
        << QStringLiteral("AT28C64") << keep << before << image << image << success;
    QTest::newRow("an electrically erasable EPROM is erased")
        << QStringLiteral("W27C512@DIP28") << QStringList() << before << image << image << success;
    QTest::newRow("an electrically erasable EPROM without an erase")
        << QStringLiteral("W27C512@DIP28") << keep << before << image << cleared << failure;
    QTest::newRow("nothing in the socket erases a UV EPROM")
        << QStringLiteral("AM27C256@DIP28") << QStringList() << before << image << cleared
        << failure;
    QTest::newRow("a UV EPROM takes more cleared bits")
        << QStringLiteral("AM27C256@DIP28") << QStringList() << before << cleared << cleared
        << success;
    QTest::newRow("a flash without an erase")
        << QStringLiteral("SST39SF010A") << keep << before << image << cleared << failure;
    QTest::newRow("a serial EEPROM replaces its bytes")
        << QStringLiteral("AT24C02") << keep << before << image << image << success;
}

void TestSimulatorWriting::writing() {
    QFETCH(QString, device);
    QFETCH(QStringList, switches);
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, image);
    QFETCH(QByteArray, after);
    QFETCH(QByteArray, verdict);
    const int size = int(bench->readChip(device).size());
    const QString chipFile = QStringLiteral("bench/") + device + QStringLiteral(".bin");
    bench->makeFile(chipFile, blankAfter(before, size));

    const Answer answer = write(device, blankAfter(image, size), switches);

    QCOMPARE(verdictOf(answer), verdict);
    QCOMPARE(answer.status, verdict == "Verification OK" ? 0 : 1);
    QCOMPARE(bench->contentOf(chipFile), blankAfter(after, size));
}

void TestSimulatorWriting::sizeMismatch_data() {
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("flag");
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("err");
    const QByteArray hint = "Use -P if you want to write-protect this chip.\n";
    const QByteArray suspicion = "This chip may be write-protected. Use -u and try again.\n";
    const QByteArray refusal = "Incorrect file size: 30000 (needed 32768, use -s/S to ignore)\n";
    const QByteArray written = "Erasing... T OK\n" + writingText(256) + readingText(64);
    const QByteArray partWritten = "Erasing... T OK\n" + writingText(236) + readingText(59);
    QTest::newRow("a write is refused") << QStringLiteral("-w") << QStringLiteral("-y") << 30'000
                                        << 1 << hint + refusal + suspicion;
    QTest::newRow("a verify is refused")
        << QStringLiteral("-m") << QStringLiteral("-y") << 30'000 << 1 << refusal;
    QTest::newRow("-s warns and writes as far as the file goes")
        << QStringLiteral("-w") << QStringLiteral("-s") << 30'000 << 0
        << hint + "Warning: Incorrect file size: 30000 (needed 32768)\n" + partWritten +
               "Verification OK\n";
    QTest::newRow("-S does not even warn") << QStringLiteral("-w") << QStringLiteral("-S") << 30'000
                                           << 0 << hint + partWritten + "Verification OK\n";
    QTest::newRow("-s takes the first bytes of a longer file")
        << QStringLiteral("-w") << QStringLiteral("-s") << 40'000 << 0
        << hint + "Warning: Incorrect file size: 40000 (needed 32768)\n" + written +
               "Verification OK\n";
}

void TestSimulatorWriting::sizeMismatch() {
    QFETCH(QString, action);
    QFETCH(QString, flag);
    QFETCH(int, size);
    QFETCH(int, status);
    QFETCH(QByteArray, err);
    const QString file = bench->makeFile(QStringLiteral("image.bin"), QByteArray(size, 'x'));
    QCOMPARE(bench->run({QStringLiteral("-p"), QStringLiteral("AT28C256"), action, file, flag}),
             (Answer{status, {}, bannerText() + err}));
    if (status == 0)
        QCOMPARE(bench->contentOf(QStringLiteral("bench/AT28C256.bin")),
                 blankAfter(QByteArray(qMin(size, 32 * kib), 'x'), 32 * kib));
}

void TestSimulatorWriting::protection_data() {
    QTest::addColumn<QString>("device");
    QTest::addColumn<QStringList>("switches");
    QTest::addColumn<QByteArray>("verdict");
    QTest::addColumn<bool>("written");
    QTest::newRow("a protected chip keeps its bytes")
        << QStringLiteral("AT28C256") << QStringList()
        << QByteArray("This chip may be write-protected. Use -u and try again.") << false;
    QTest::newRow("-u takes the protection off")
        << QStringLiteral("AT28C256") << QStringList{QStringLiteral("-u")}
        << QByteArray("Verification OK") << true;
    QTest::newRow("a chip without protection is written")
        << QStringLiteral("W27E257@DIP28") << QStringList() << QByteArray("Verification OK")
        << true;
}

void TestSimulatorWriting::protection() {
    QFETCH(QString, device);
    QFETCH(QStringList, switches);
    QFETCH(QByteArray, verdict);
    QFETCH(bool, written);
    bench->set(QStringLiteral("FAULT"), QStringLiteral("protected"));
    const QByteArray image(32 * kib, 'x');
    const Answer answer = write(device, image, switches);
    QCOMPARE(verdictOf(answer), verdict);
    QCOMPARE(answer.status, written ? 0 : 1);
    QCOMPARE(bench->contentOf(QStringLiteral("bench/") + device + QStringLiteral(".bin")) == image,
             written);
}

void TestSimulatorWriting::erase_ofAChipThatOnlyLightErases_fails() {
    const Answer answer =
        bench->run({QStringLiteral("-p"), QStringLiteral("AM27C64@DIP28"), QStringLiteral("-E")});
    QCOMPARE(verdictOf(answer), QByteArray("This chip can't be erased!"));
    QCOMPARE(answer.status, 1);
}

void TestSimulatorWriting::write_ofAFileThatIsNotThere_fails() {
    const QString file = bench->path(QStringLiteral("nowhere.bin"));
    QCOMPARE(
        bench->run({QStringLiteral("-p"), QStringLiteral("AT24C02"), QStringLiteral("-w"), file}),
        (Answer{1,
                {},
                bannerText() + "Could not open file " + file.toUtf8() +
                    " for reading.\nNo such file or directory\n"}));
}

QTEST_GUILESS_MAIN(TestSimulatorWriting)
#include "tst_simulator_writing.moc"

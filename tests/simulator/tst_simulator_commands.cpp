#include "SimulatorRun.h"

#include <QRegularExpression>
#include <QSet>
#include <QTest>

using namespace Qt::StringLiterals;

/// The command line and the device list.
class TestSimulatorCommands : public QObject {
    Q_OBJECT

private slots:
    void order_ofTheOptions_doesNotMatter_data();
    void order_ofTheOptions_doesNotMatter();
    void mistakes_data();
    void mistakes();
    void emptyDevice_isNotFound();
    void version_saysThatItIsTheSimulator();
    void help_namesEveryFaultAndVariable();
    void list_holdsTheTermInAnyCase();
    void list_ofNothing_isEmpty();
    void list_isLongAndPlain();
    void list_startsWithLogicParts();
    void list_isLongerInTheNewDialect();
    void list_namesDevicesThatWork_data();
    void list_namesDevicesThatWork();

private:
    [[nodiscard]] QList<QByteArray> list(const QString &term) const {
        QList<QByteArray> names = bench.run({u"-L"_s, term}).out.split('\n');
        names.removeLast();
        return names;
    }

    TestBench bench;
};

void TestSimulatorCommands::order_ofTheOptions_doesNotMatter_data() {
    QTest::addColumn<QString>("command");
    QTest::newRow("device first") << u"-p 24C02 -r read.bin -y -s -e -u"_s;
    QTest::newRow("device last") << u"-y -r read.bin -u -p 24C02"_s;
    QTest::newRow("switches joined") << u"-yseu -p24C02 -rread.bin"_s;
    QTest::newRow("end of options") << u"-p 24C02 -r read.bin --"_s;
}

void TestSimulatorCommands::order_ofTheOptions_doesNotMatter() {
    QFETCH(QString, command);
    QCOMPARE(bench.run(command.split(u' ')), (Answer{0, {}, bannerText() + readingText(1)}));
}

void TestSimulatorCommands::mistakes_data() {
    QTest::addColumn<QString>("command");
    QTest::addColumn<QByteArray>("complaint");
    const QByteArray program = MINIPRO_SIM;
    const QByteArray tooMany = "Only one of -r, -w, -m, -E, -T, -L, -V and -h can be given.";
    QTest::newRow("nothing at all")
        << u""_s << QByteArray("Device required. Use -p <device> to specify a device.");
    QTest::newRow("action without a device")
        << u"-r read.bin"_s << QByteArray("Device required. Use -p <device> to specify a device.");
    QTest::newRow("device without an action")
        << u"-p 24C02"_s << QByteArray("No action to perform. Use -r, -w, -m, -E or -T.");
    QTest::newRow("two actions") << u"-p 24C02 -r read.bin -w image.bin"_s << tooMany;
    QTest::newRow("the same action twice") << u"-p 24C02 -r one.bin -r two.bin"_s << tooMany;
    QTest::newRow("a test and a search") << u"-T -L 7400"_s << tooMany;
    QTest::newRow("unknown option") << u"-p 24C02 -Z"_s << program + ": invalid option -- 'Z'";
    QTest::newRow("missing argument")
        << u"-T -p"_s << program + ": option requires an argument -- 'p'";
    QTest::newRow("words left over") << u"-L 27C 512"_s << QByteArray("Extra argument: '512'");
    QTest::newRow("unknown model")
        << u"-q T99 -L 27C"_s
        << QByteArray("Unknown programmer version. Use TL866A, TL866II, T48 or T56.");
}

void TestSimulatorCommands::mistakes() {
    QFETCH(QString, command);
    QFETCH(QByteArray, complaint);
    QCOMPARE(bench.run(command.split(u' ', Qt::SkipEmptyParts)),
             (Answer{1, {}, complaint + "\n(-h shows the usage)\n"}));
}

void TestSimulatorCommands::emptyDevice_isNotFound() {
    QCOMPARE(bench.run({u"-p"_s, u""_s, u"-r"_s, u"read.bin"_s}),
             (Answer{1, {}, "Device  not found!\n"}));
}

void TestSimulatorCommands::version_saysThatItIsTheSimulator() {
    const Answer answer = bench.run({u"-V"_s});
    QCOMPARE(answer.status, 0);
    QCOMPARE(answer.out, QByteArray());
    QVERIFY(answer.err.contains("minipro-sim version "));
    QVERIFY(answer.err.contains("This is the simulator: it reaches no programmer and no chip\n"));
    QVERIFY(answer.err.contains("Bench folder:\t" + bench.path(u"bench"_s).toUtf8() + "\n"));
}

void TestSimulatorCommands::help_namesEveryFaultAndVariable() {
    const Answer answer = bench.run({u"-h"_s});
    QCOMPARE(answer.status, 0);
    for (const char *word : {"MINIPRO_SIM_BENCH",
                             "MINIPRO_SIM_CHIPS",
                             "MINIPRO_SIM_DIALECT",
                             "MINIPRO_SIM_PACE",
                             "MINIPRO_SIM_FAULT",
                             "MINIPRO_SIM_GRANDCHILD_MS",
                             "no-programmer",
                             "busy",
                             "wrong-id",
                             "bad-byte",
                             "protected",
                             "overcurrent",
                             "unplugged",
                             "silent",
                             "endless-output",
                             "split-utf8",
                             "invalid-utf8",
                             "ignores-sigterm",
                             "leaves-grandchild",
                             "closes-output-early",
                             "bad-logic-pins"})
        QVERIFY2(answer.err.contains(word), word);
}

void TestSimulatorCommands::list_holdsTheTermInAnyCase() {
    const Answer lower = bench.run({u"-L"_s, u"w27c512"_s});
    QCOMPARE(lower, (Answer{0, "W27C512@DIP28\nW27C512@PLCC32\n", {}}));
    QCOMPARE(bench.run({u"-L"_s, u"W27C512@"_s}), lower);
    QCOMPARE(list(u"(custom)"_s), QList<QByteArray>());
}

void TestSimulatorCommands::list_ofNothing_isEmpty() {
    QCOMPARE(bench.run({u"-L"_s, u"no such part"_s}), (Answer{0, {}, {}}));
}

void TestSimulatorCommands::list_isLongAndPlain() {
    const QList<QByteArray> names = list(u""_s);
    QCOMPARE(names.size(), 7'410);
    static const QRegularExpression plain(u"^[-A-Za-z0-9()*+./:=@[\\]_]{1,39}$"_s);
    for (const QByteArray &name : names)
        QVERIFY2(plain.match(QString::fromLatin1(name)).hasMatch(), name.constData());
    const QSet<QByteArray> different(names.cbegin(), names.cend());
    QVERIFY2(different.size() < names.size(), "the tool lists some names twice");
}

void TestSimulatorCommands::list_startsWithLogicParts() {
    const QList<QByteArray> names = list(u""_s);
    QCOMPARE(names.first(), QByteArray("4000"));
    QCOMPARE(names.indexOf("82C55A-5(OKI)(custom)"), names.indexOf("ACE24AC02") - 1);
    QVERIFY(names.indexOf("7400") < names.indexOf("ACE24AC02"));
}

void TestSimulatorCommands::list_isLongerInTheNewDialect() {
    const QString device = u"AM29F040@TSOP32(ADP:Pin9to1)"_s;
    const QStringList command{u"-p"_s, device, u"-r"_s, u"read.bin"_s};
    QCOMPARE(bench.run(command), (Answer{1, {}, "Device " + device.toUtf8() + " not found!\n"}));
    TestBench newBench;
    newBench.set(u"DIALECT"_s, u"new"_s);
    const QByteArray names = newBench.run({u"-L"_s, u""_s}).out;
    QVERIFY(names.count('\n') > 32'000);
    QVERIFY(names.contains("\n" + device.toUtf8() + "\n"));
    QCOMPARE(newBench.readChip(device).size(), 512 * 1024);
}

void TestSimulatorCommands::list_namesDevicesThatWork_data() {
    QTest::addColumn<QString>("device");
    const QList<QByteArray> names = list(u""_s);
    constexpr qsizetype step = 197;
    for (qsizetype i = 0; i < names.size(); i += step)
        QTest::newRow(names.at(i).constData()) << QString::fromLatin1(names.at(i));
    QTest::newRow("LM339(custom)") << u"LM339(custom)"_s;
    QTest::newRow("AT28C256E(custom)") << u"AT28C256E(custom)"_s;
}

void TestSimulatorCommands::list_namesDevicesThatWork() {
    QFETCH(QString, device);
    device.remove(u"(custom)"_s);
    QCOMPARE(bench.run({u"-T"_s, u"-p"_s, device}).err, bannerText() + "Logic test successful.\n");
}

QTEST_GUILESS_MAIN(TestSimulatorCommands)
#include "tst_simulator_commands.moc"

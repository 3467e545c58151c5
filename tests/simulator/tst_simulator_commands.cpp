// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "SimulatorRun.h"

#include <QTest>

/// The command line: in what order and by what names options are taken, and what makes no sense.
class TestSimulatorCommands : public QObject {
    Q_OBJECT

private slots:
    void init() { bench = std::make_unique<TestBench>(); }

    void order_ofTheOptions_doesNotMatter_data();
    void order_ofTheOptions_doesNotMatter();
    void switches_byLetterAndByName_data();
    void switches_byLetterAndByName();
    void lastAction_wins();
    void inquiry_isAnsweredAtOnce();
    void mistakes_data();
    void mistakes();
    void help_isTheUsage_data();
    void help_isTheUsage();
    void simulatorOption_namesEveryFaultAndVariable();

private:
    std::unique_ptr<TestBench> bench;
};

void TestSimulatorCommands::order_ofTheOptions_doesNotMatter_data() {
    QTest::addColumn<QString>("command");
    QTest::newRow("device first") << QStringLiteral("-p 24C02 -r read.bin -y -s -e -u");
    QTest::newRow("device last") << QStringLiteral("-y -r read.bin -u -p 24C02");
    QTest::newRow("switches joined") << QStringLiteral("-yseu -p24C02 -rread.bin");
    QTest::newRow("end of options") << QStringLiteral("-p 24C02 -r read.bin --");
    QTest::newRow("by name") << QStringLiteral("--device 24C02 --read read.bin --no_id_error");
    QTest::newRow("by name, joined") << QStringLiteral("--device=24C02 --read=read.bin");
    QTest::newRow("by a shortened name") << QStringLiteral("--dev 24C02 --read read.bin");
    QTest::newRow("without effect on this chip")
        << QStringLiteral("-p 24C02 -r read.bin -i -I -o vpp=12 -v -P -c code");
}

void TestSimulatorCommands::order_ofTheOptions_doesNotMatter() {
    QFETCH(QString, command);
    QCOMPARE(bench->run(command.split(u' ')), (Answer{0, {}, bannerText() + readingText(1)}));
}

void TestSimulatorCommands::switches_byLetterAndByName_data() {
    QTest::addColumn<QString>("letter");
    QTest::addColumn<QString>("name");
    const struct {
        const char *letter;
        const char *name;
    } rows[] = {{"-E", "--erase"},
                {"-b", "--blank_check"},
                {"-T", "--logic_test"},
                {"-D", "--read_id"},
                {"-w blank.bin", "--write blank.bin"},
                {"-w blank.bin -v", "--write blank.bin --skip_verify"},
                {"-w blank.bin -e", "--write blank.bin --skip_erase"},
                {"-w blank.bin -u", "--write blank.bin --unprotect"},
                {"-w blank.bin -P", "--write blank.bin --protect"},
                {"-w short.bin -s", "--write short.bin --no_size_error"},
                {"-w short.bin -S", "--write short.bin --no_size_warning"},
                {"-m blank.bin -x", "--verify blank.bin --skip_id"},
                {"-m blank.bin -c data", "--verify blank.bin --page data"},
                {"-r read.hex -f ihex", "--read read.hex --format ihex"}};
    for (const auto &row : rows)
        QTest::newRow(row.letter) << QString::fromLatin1(row.letter)
                                  << QString::fromLatin1(row.name);
}

void TestSimulatorCommands::switches_byLetterAndByName() {
    QFETCH(QString, letter);
    QFETCH(QString, name);
    bench->makeFile(QStringLiteral("blank.bin"), QByteArray(8 * 1024, '\xff'));
    bench->makeFile(QStringLiteral("short.bin"), QByteArray(1024, '\xff'));
    const auto answerTo = [this](const QString &words) {
        return bench->run(QStringLiteral("-p AT28C64B ").append(words).split(u' '));
    };
    const Answer answer = answerTo(letter);
    QVERIFY(answer.err.startsWith(bannerText()));
    QCOMPARE(answerTo(name), answer);
}

void TestSimulatorCommands::lastAction_wins() {
    bench->makeFile(QStringLiteral("kept.bin"), "kept");
    QCOMPARE(
        bench->run(QStringLiteral("-p 24C02 -w image.bin -E -r kept.bin -r read.bin").split(u' ')),
        (Answer{0, {}, bannerText() + readingText(1)}));
    QCOMPARE(bench->contentOf(QStringLiteral("read.bin")).size(), 256);
    QCOMPARE(bench->contentOf(QStringLiteral("kept.bin")), QByteArray("kept"));
}

void TestSimulatorCommands::inquiry_isAnsweredAtOnce() {
    QCOMPARE(bench->run(QStringLiteral("-p 24C02 -k -r read.bin -Z").split(u' ')),
             (Answer{0, {}, "tl866ii: TL866II+\n"}));
    QCOMPARE(bench->run(QStringLiteral("-Z -k").split(u' ')).status, 1);
}

void TestSimulatorCommands::mistakes_data() {
    QTest::addColumn<QString>("command");
    QTest::addColumn<QByteArray>("complaint");
    const QByteArray program = MINIPRO_SIM;
    const QByteArray noDevice = "Device required. Use -p <device> to specify a device.";
    const QByteArray noSkipping = "Skipping the ID check is not permitted for this action.";
    const QByteArray listOnly = "-L, -l or -d command is required for this action.";
    QTest::newRow("nothing at all") << QStringLiteral("") << noDevice;
    QTest::newRow("action without a device") << QStringLiteral("-r read.bin") << noDevice;
    QTest::newRow("device without an action")
        << QStringLiteral("-p 24C02") << QByteArray("No action to perform.");
    QTest::newRow("unknown option")
        << QStringLiteral("-p 24C02 -Z") << program + ": invalid option -- 'Z'";
    QTest::newRow("unknown name") << QStringLiteral("--nonsense")
                                  << program + ": unrecognized option '--nonsense'";
    QTest::newRow("missing argument")
        << QStringLiteral("-T -p") << program + ": option requires an argument -- 'p'";
    QTest::newRow("words left over")
        << QStringLiteral("-p 24C02 -r read.bin more") << QByteArray("Extra argument: 'more'");
    QTest::newRow("unknown model")
        << QStringLiteral("-q T99 -L 27C")
        << QByteArray("Unknown programmer version. Use TL866A, TL866II, T48 or T56.");
    QTest::newRow("a model that came later")
        << QStringLiteral("-q T76 -L 27C")
        << QByteArray("Unknown programmer version. Use TL866A, TL866II, T48 or T56.");
    QTest::newRow("model and a read") << QStringLiteral("-q t48 -p 24C02 -r read.bin") << listOnly;
    QTest::newRow("model alone") << QStringLiteral("-q t48") << listOnly;
    QTest::newRow("write without the ID")
        << QStringLiteral("-p 24C02 -x -w image.bin") << noSkipping;
    QTest::newRow("erase without the ID") << QStringLiteral("-p 24C02 -E -x") << noSkipping;
    QTest::newRow("ID without the ID") << QStringLiteral("-p 24C02 -D -x") << noSkipping;
    QTest::newRow("unknown memory")
        << QStringLiteral("-p 24C02 -c rom -r read.bin") << QByteArray("Unknown memory type.");
    QTest::newRow("unknown format") << QStringLiteral("-p 24C02 -f elf -r read.bin")
                                    << QByteArray("Unknown file format. Use ihex or srec.");
    QTest::newRow("not simulated")
        << QStringLiteral("-t") << QByteArray("The simulator cannot do this: -t");
}

void TestSimulatorCommands::mistakes() {
    QFETCH(QString, command);
    QFETCH(QByteArray, complaint);
    // The command line is judged before anybody reaches for the programmer.
    bench->set(QStringLiteral("FAULT"), QStringLiteral("no-programmer"));
    const Answer answer = bench->run(command.split(u' ', Qt::SkipEmptyParts));
    QCOMPARE(answer, (Answer{1, {}, complaint + "\n" + usageText()}));
    QCOMPARE(bench->contentOf(QStringLiteral("read.bin")), QByteArray("no such file"));
}

void TestSimulatorCommands::help_isTheUsage_data() {
    QTest::addColumn<QString>("command");
    for (const char *command : {"-h", "--help", "-p 24C02 -r read.bin -h"})
        QTest::newRow(command) << QString::fromLatin1(command);
}

void TestSimulatorCommands::help_isTheUsage() {
    QFETCH(QString, command);
    QCOMPARE(bench->run(command.split(u' ')), (Answer{1, {}, usageText()}));
}

void TestSimulatorCommands::simulatorOption_namesEveryFaultAndVariable() {
    const Answer answer = bench->run({QStringLiteral("--simulator")});
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
                             "bad-logic-pins",
                             "flaky-pin",
                             "bootloader",
                             "no-database",
                             "no-tsop-adapter"})
        QVERIFY2(answer.err.contains(word), word);
}

QTEST_GUILESS_MAIN(TestSimulatorCommands)
#include "tst_simulator_commands.moc"

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/SearchOutcome.h"

#include "language/ToolReportReader.h"

#include <QLocale>
#include <QRegularExpression>
#include <QTest>

#include <cerrno>
#include <csignal>

/// What a search for devices came to, in words.
class TestSearchOutcome : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::English)); }
    void search_isToldAs_data();
    void search_isToldAs();
    void failure_saysWhatToDo_data() { search_isToldAs_data(); }
    void failure_saysWhatToDo();
    void waitingSearch_isToldAs_data();
    void waitingSearch_isToldAs();
    void otherWords_areNoWaiting_data();
    void otherWords_areNoWaiting();
    void silence_saysWhatToDo();
};

namespace {

const char *const banner = "Found TL866II+ 04.2.132 (0x284)\nDevice code: 12345678\n"
                           "Serial code: ABCDEFGHIJKLMNOPQRST\nUSB speed: 12Mbps (USB 1.1)\n";
const char *const menu = "No device found. Which database do you want to display?\n"
                         "1) TL866A/CS\n2) TL866II+/T48/T56\n3) Abort\n";
const char *const newMenu = "No device found. Which database do you want to display?\n"
                            "1) TL866A/CS\n2) TL866II+/T48/T56\n3) T76\n4) Abort\n";

SearchFacts ended(int status, const char *words, qsizetype devices = 0) {
    ToolReportReader reader;
    reader.take(QString::fromLatin1(words));
    SearchFacts facts;
    facts.run.tool = QStringLiteral("/opt/minipro");
    facts.run.status = status;
    facts.run.programmers = QList<UsbProgrammer>();
    facts.run.report = reader.report();
    facts.devices = devices;
    return facts;
}

SearchFacts stopped(const char *words, qsizetype devices = 0) {
    SearchFacts facts = ended(SIGTERM, words, devices);
    facts.run.killedBySignal = true;
    facts.run.stopRequested = true;
    return facts;
}

SearchFacts withoutList(SearchFacts facts, const char *why = "No such file or directory",
                        int error = ENOENT) {
    facts.devices = Failure{QString::fromLatin1(why), error};
    return facts;
}

} // namespace

void TestSearchOutcome::search_isToldAs_data() {
    QTest::addColumn<SearchFacts>("facts");
    QTest::addColumn<QString>("words");
    const auto row = [](const char *name, const SearchFacts &facts, const char *words) {
        QTest::newRow(name) << facts << QString::fromUtf8(words);
    };
    row("one device", ended(0, banner, 1), "1 device found.");
    row("many devices", ended(0, banner, 7442), "7,442 devices found.");
    row("devices, without a programmer", ended(0, "", 11), "11 devices found.");
    row("no match, a programmer", ended(0, banner), "No device's name holds this term.");
    row("no match, no words", ended(0, ""), "No device's name holds this term.");
    row("the tool is not there",
        ended(127, "bash: line 1: /opt/minipro: No such file or directory\n"),
        "The shell did not find the programmer tool \u201c/opt/minipro\u201d. Enter its path in "
        "the field "
        "Programmer tool.");
    row("the tool cannot be executed",
        ended(126, "bash: line 1: /opt/minipro: Permission denied\n"),
        "The shell could not execute the programmer tool \u201c/opt/minipro\u201d. Enter the path "
        "of a "
        "program in the field Programmer tool.");
    row("another program has the programmer",
        ended(1, "\nIO error: claim_interface: LIBUSB_ERROR_BUSY\n"),
        "The programmer is in use by another program. End that program, or wait for it, and try "
        "again.");
    row("bootloader mode",
        ended(1, "Found TL866II+ in bootloader modein bootloader mode!\nExiting...\n"),
        "The programmer is in bootloader mode and can do nothing else. Plug it in again; if it "
        "stays so, renew its firmware.");
    row("no list of devices", ended(1, "/share/minipro/logicic.xml: No such file or directory\n"),
        "The programmer tool did not find its list of devices in /share/minipro. Install the tool "
        "with its files (make install), or set MINIPRO_HOME to the folder that holds logicic.xml "
        "and infoic.xml.");
    row("no list of devices, and a good status",
        ended(0, "/share/minipro/infoic.xml: No such file or directory\n"),
        "The programmer tool did not find its list of devices in /share/minipro. Install the tool "
        "with its files (make install), or set MINIPRO_HOME to the folder that holds logicic.xml "
        "and infoic.xml.");
    row("a switch that the tool does not know",
        ended(1, "minipro: invalid option -- 'Z'\nminipro version 0.7.3     A free and open TL866 "
                 "series programmer\nUsage: minipro [options]\n"),
        "The search failed: the tool does not take its command line: minipro: invalid option -- "
        "'Z'. Check the field Programmer tool.");
    row("words that nobody knows", ended(1, "Oops!\n"),
        "The search failed: the programmer tool ended with status 1 and said: Oops! Check the "
        "field "
        "Programmer tool and search again.");
    row("words that nobody knows, by their place",
        ended(1, "Oops!\nThis chip may be write-protected.\n"),
        "The search failed: the tool said: Oops! Check the field Programmer tool and search "
        "again.");
    row("half a list", ended(139, banner, 20),
        "The search failed: the programmer tool was killed by signal 11 (Segmentation fault). The "
        "list may not be whole. Try again.");
    row("the menu, and the end of the input", ended(1, menu),
        "No programmer was found: none is plugged in. Plug one in and try again.");
    row("a list that cannot be written",
        withoutList(ended(1, "bash: line 1: /x/temp_sr.bin: No such file or directory\n")),
        "The list of devices could not be read: No such file or directory. Search again; if that "
        "does not help, see that the folder for temporary files may be written to and has room.");
    row("a list that cannot be read", withoutList(ended(0, banner)),
        "The list of devices could not be read: No such file or directory. Search again; if that "
        "does not help, see that the folder for temporary files may be written to and has room.");
    row("a list that is too large", withoutList(ended(0, banner), "File too large", EFBIG),
        "The list of devices could not be read: it is larger than 8 MiB. Check the field "
        "Programmer tool and search again.");
    row("a list that is no text", withoutList(ended(0, ""), "Not valid UTF-8 text", EILSEQ),
        "The list of devices could not be read: Not valid UTF-8 text. Check the field Programmer "
        "tool and search again.");
    row("stopped with a list that is no text",
        withoutList(stopped(banner), "Not valid UTF-8 text", EILSEQ), "The search was stopped.");
    row("stopped", stopped(banner), "The search was stopped.");
    row("stopped within the list", stopped(banner, 3),
        "The search was stopped. The list may not be whole.");
    row("stopped at the menu", stopped(menu),
        "The search was stopped. No programmer was found: none is plugged in. Plug one in and try "
        "again.");
    SearchFacts none = ended(-1, "");
    none.run.start = StartTrouble{Failure{QStringLiteral("/no/shell: No such file or directory")}};
    row("no shell", none,
        "The programmer tool was not started: /no/shell: No such file or directory. Check the "
        "environment variable SHELL, which names the shell that starts it.");
}

void TestSearchOutcome::search_isToldAs() {
    QFETCH(SearchFacts, facts);
    QTEST(judgeSearch(facts), "words");
}

void TestSearchOutcome::failure_saysWhatToDo() {
    QFETCH(SearchFacts, facts);
    const QString words = judgeSearch(facts);
    static const QRegularExpression noFailure(
        QStringLiteral("devices? found\\.$|^No device's name|^The search was stopped"));
    static const QRegularExpression advice(
        QStringLiteral("[.!] (Check|End|Enter|Install|Plug|Search|Try) "));
    if (!words.contains(noFailure))
        QVERIFY2(words.contains(advice), qPrintable(words));
}

void TestSearchOutcome::waitingSearch_isToldAs_data() {
    QTest::addColumn<RunFacts>("run");
    QTest::addColumn<QString>("words");
    const QString wait = QStringLiteral(" The tool waits for an answer that nobody can give: stop "
                                        "the search, and start it again once a programmer is "
                                        "connected.");
    const QString none = QStringLiteral("No programmer was found: none is plugged in.") + wait;
    QTest::newRow("menu") << ended(0, menu).run << none;
    QTest::newRow("menu, newer") << ended(0, newMenu).run << none;
    QTest::newRow("menu without its last line end") << ended(0, "No device found. Which database "
                                                                "do you want to display?")
                                                           .run
                                                    << none;
    QTest::newRow("another question") << ended(0, "No programmer found.\nNumber: ").run << none;
    RunFacts refused = ended(0, menu).run;
    refused.programmers = {{QStringLiteral("T76"), QStringLiteral("a466"), QStringLiteral("1a86"),
                            QStringLiteral("/dev/bus/usb/001/007"),
                            UsbProgrammer::Access::Refused}};
    QTest::newRow("no permission")
        << refused
        << QStringLiteral("No programmer was found: one is plugged in (T76), but you may not use "
                          "it.") +
               wait +
               QStringLiteral(
                   " Put this line into /etc/udev/rules.d/60-minipro.rules, run "
                   "\u201cudevadm control --reload\u201d as root and plug it in again: ") +
               udevRuleFor(refused.programmers->first());
    RunFacts unknown = ended(0, menu).run;
    unknown.programmers.reset();
    QTest::newRow("nobody knows what is plugged in")
        << unknown
        << QStringLiteral("No programmer was found. Is it plugged in, and may you use its USB "
                          "device?") +
               wait + QStringLiteral(" Plug one in, or have a udev rule let you use its device.");
}

void TestSearchOutcome::waitingSearch_isToldAs() {
    QFETCH(RunFacts, run);
    QVERIFY(findsNoProgrammer(run.report));
    QTEST(remarkOnWaitingSearch(run), "words");
}

void TestSearchOutcome::otherWords_areNoWaiting_data() {
    QTest::addColumn<QByteArray>("words");
    QTest::newRow("none") << QByteArray();
    QTest::newRow("the banner") << QByteArray(banner);
    QTest::newRow("busy") << QByteArray("\nIO error: claim_interface: LIBUSB_ERROR_BUSY\n");
}

void TestSearchOutcome::otherWords_areNoWaiting() {
    QFETCH(QByteArray, words);
    QVERIFY(!findsNoProgrammer(ended(0, words.constData()).run.report));
}

void TestSearchOutcome::silence_saysWhatToDo() {
    QCOMPARE(remarkOnSilentSearch(),
             QStringLiteral("The tool is silent: it may wait for an answer that nobody can give. "
                            "Stop the search, see that a programmer is connected and start it "
                            "again."));
}

QTEST_GUILESS_MAIN(TestSearchOutcome)
#include "tst_search_outcome.moc"

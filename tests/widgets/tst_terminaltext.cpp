// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "support/FileHelpers.h"
#include "support/Screen.h"
#include "widgets/TerminalText.h"

#include <QTest>

class TestTerminalText : public QObject {
    Q_OBJECT

private slots:
    void lines_data();
    void lines();
    void runs_data();
    void runs();
    void captures_data();
    void captures();
    void manyProgressUpdates_areOneReplacementOfALine();
    void takeUpdate_givesWholeLinesUpToTheLimit();
    void clear_replacesEverything();
    void dropPending_keepsTheNewestLines_data();
    void dropPending_keepsTheNewestLines();
    void longLine_isSplitAndLosesNothing();
    void longLine_rewrittenOften_staysCheap();
};

namespace {

/// How a text is fed, and how often the view takes what changed.
enum class Way { WholeAtOnce, UnitByUnit, UnitByUnitTakenAtTheEnd, LineByLineTaken };

/// Runs are separated by a mark that no output holds: its first unit stands for the end of one
/// run and its second for the start of the next.
constexpr QChar runEnds(0xe000);
constexpr QChar runBegins(0xe001);

void feedUnit(TerminalText &terminal, QChar unit) {
    if (unit == runBegins)
        terminal.beginRun();
    else if (unit == runEnds)
        terminal.endRun();
    else
        terminal.feed(QStringView(&unit, 1));
}

void feedWhole(TerminalText &terminal, const QString &text) {
    qsizetype start = 0;
    for (qsizetype at = 0; at <= text.size(); ++at) {
        if (at < text.size() && text[at] != runBegins && text[at] != runEnds)
            continue;
        terminal.feed(QStringView(text).sliced(start, at - start));
        if (at < text.size())
            feedUnit(terminal, text[at]);
        start = at + 1;
    }
}

QString shown(const QString &text, Way way) {
    TerminalText terminal;
    Screen screen;
    if (way == Way::WholeAtOnce || way == Way::LineByLineTaken)
        feedWhole(terminal, text);
    else
        for (const QChar unit : text) {
            feedUnit(terminal, unit);
            if (way == Way::UnitByUnit)
                screen.apply(terminal.takeUpdate());
        }
    while (terminal.hasUpdate())
        screen.apply(way == Way::LineByLineTaken ? terminal.takeUpdate(1) : terminal.takeUpdate());
    return screen.text();
}

QStringList shownInEveryWay(const QString &text) {
    return {shown(text, Way::WholeAtOnce), shown(text, Way::UnitByUnit),
            shown(text, Way::UnitByUnitTakenAtTheEnd), shown(text, Way::LineByLineTaken)};
}

QStringList fourTimes(const QString &text) {
    return {text, text, text, text};
}

QString fileText(const QString &name) {
    const QByteArray text = readWholeFile(QStringLiteral(TEST_DATA "/") + name);
    if (text.isEmpty())
        qFatal("no %s", qPrintable(name));
    return QString::fromUtf8(text);
}

} // namespace

static void addRow(const char *name, const QString &output, const QString &picture) {
    QTest::newRow(name) << output << picture;
}

static void addLineRows() {
    addRow("plain lines", QStringLiteral("one\ntwo\nthree"), QStringLiteral("one\ntwo\nthree"));
    addRow("a return overwrites what it reaches", QStringLiteral("abcdef\rXY"),
           QStringLiteral("XYcdef"));
    addRow("return and feed end a line", QStringLiteral("one\r\ntwo\r\n"),
           QStringLiteral("one\ntwo\n"));
    addRow("a feed in the middle of a line keeps the rest", QStringLiteral("abc\rX\nd"),
           QStringLiteral("Xbc\nd"));
    addRow("backspace steps back", QStringLiteral("abc\b\bX"), QStringLiteral("aXc"));
    addRow("backspace stops at the line's start", QStringLiteral("a\nb\b\b\bX"),
           QStringLiteral("a\nX"));
    addRow("bell and other controls are silent", QStringLiteral("a\a\x01\x7f\x85\vb\f"),
           QStringLiteral("ab"));
    addRow("tab is kept", QStringLiteral("a\tb"), QStringLiteral("a\tb"));
    addRow("no-break space and byte-order mark are kept", QStringLiteral("a\u00a0\ufeff"),
           QStringLiteral("a\u00a0\ufeff"));
    addRow("borders of documents are shown as unknown", QStringLiteral("a\u2029b\u2028\ufdd0"),
           QStringLiteral("a\ufffdb\ufffd\ufffd"));
    addRow("a pair is overwritten whole", QStringLiteral("\U0001f600z\rab"), QStringLiteral("abz"));
    addRow("half a pair becomes a blank", QStringLiteral("\U0001f600z\ra"), QStringLiteral("a z"));
    addRow("the second half of a pair becomes a blank", QStringLiteral("a\U0001f600\bX"),
           QStringLiteral("a X"));
}

static void addEraseRows() {
    addRow("erase to the end", QStringLiteral("abcdef\rab\x1b[K!"), QStringLiteral("ab!"));
    addRow("erase to the end, with its number", QStringLiteral("abcdef\rab\x1b[0K!"),
           QStringLiteral("ab!"));
    addRow("erase to the start", QStringLiteral("abcdef\b\b\x1b[1K"), QStringLiteral("     f"));
    addRow("erase the line, the cursor stays", QStringLiteral("abcdef\b\b\x1b[2KX"),
           QStringLiteral("    X"));
    addRow("erase by an unknown number does nothing", QStringLiteral("abc\r\x1b[9K"),
           QStringLiteral("abc"));
    addRow("erase through half a pair", QStringLiteral("\U0001f600\b\x1b[K"), QStringLiteral(" "));
    addRow("erase below", QStringLiteral("one\nabc\r\x1b[Jd"), QStringLiteral("one\nd"));
    addRow("erase above", QStringLiteral("one\ntwo\nabc\b\b\x1b[1J"), QStringLiteral("  c"));
    addRow("erase the display", QStringLiteral("one\ntwo\nabc\x1b[2Jd"), QStringLiteral("d"));
    addRow("erase what scrolled away does nothing", QStringLiteral("one\ntwo\x1b[3J"),
           QStringLiteral("one\ntwo"));
}

static void addSequenceRows() {
    addRow("colours are swallowed", QStringLiteral("\x1b[0;91mred\x1b[0m."),
           QStringLiteral("red."));
    addRow("private modes are swallowed", QStringLiteral("\x1b[?25la\x1b[?K\x1b[>1;2cb"),
           QStringLiteral("ab"));
    addRow("sequences of two and three units are swallowed",
           QStringLiteral("\x1b(Ba\x1b=\x1b"
                          "7b"),
           QStringLiteral("ab"));
    addRow("a title is swallowed to its bell", QStringLiteral("\x1b]0;title\x07text"),
           QStringLiteral("text"));
    addRow("a title is swallowed to its terminator", QStringLiteral("\x1b]0;title\x1b\\text"),
           QStringLiteral("text"));
    addRow("a control string is cut by another sequence", QStringLiteral("\x1bPabc\x1b[1mtext"),
           QStringLiteral("text"));
    addRow("a control string has an end",
           QStringLiteral("\x1b]") + QString(4096, u'x') + QStringLiteral("text\n"),
           QStringLiteral("text\n"));
    addRow("a feed inside a sequence still ends the line", QStringLiteral("a\x1b[1\n2mb"),
           QStringLiteral("a\nb"));
    addRow("cancel ends a sequence", QStringLiteral("\x1b[1\x18mab"), QStringLiteral("mab"));
    addRow("a sequence that is none ends", QStringLiteral("\x1b[1\u00e9m"),
           QStringLiteral("\u00e9m"));
    addRow("a sequence without end ends",
           QStringLiteral("\x1b[") + QString(64, u'1') + QStringLiteral("1x"),
           QStringLiteral("1x"));
    addRow("an escape before an escape is forgotten", QStringLiteral("\x1b\x1b[31mx"),
           QStringLiteral("x"));
}

void TestTerminalText::lines_data() {
    QTest::addColumn<QString>("output");
    QTest::addColumn<QString>("picture");
    addLineRows();
    addEraseRows();
    addSequenceRows();
}

void TestTerminalText::lines() {
    QFETCH(QString, output);
    QFETCH(QString, picture);
    QCOMPARE(shownInEveryWay(output), fourTimes(picture));
}

void TestTerminalText::runs_data() {
    QTest::addColumn<QString>("output");
    QTest::addColumn<QString>("picture");
    const QString begin(runBegins);
    const QString end(runEnds);
    addRow("the first run starts at the top", begin + QStringLiteral("a\n"), QStringLiteral("a\n"));
    addRow("an empty line sets a run off",
           begin + QStringLiteral("a") + end + begin + QStringLiteral("b"),
           QStringLiteral("a\n\nb"));
    addRow("an ended line sets a run off the same",
           begin + QStringLiteral("a\n") + end + begin + QStringLiteral("b"),
           QStringLiteral("a\n\nb"));
    addRow("a run without output leaves no second gap",
           QStringLiteral("a") + begin + end + begin + QStringLiteral("b"),
           QStringLiteral("a\n\nb"));
    addRow("a run does not overwrite the one before",
           begin + QStringLiteral("a") + end + begin + QStringLiteral("\rb\b\bc"),
           QStringLiteral("a\n\nc"));
    addRow("a run does not erase the one before",
           begin + QStringLiteral("a\nb") + end + begin + QStringLiteral("c\nd\x1b[2Je"),
           QStringLiteral("a\nb\n\ne"));
    addRow("what follows a run does not overwrite it",
           begin + QStringLiteral("status 0") + end + QStringLiteral("\rlate"),
           QStringLiteral("status 0late"));
    addRow("what follows a run does not erase it",
           begin + QStringLiteral("status") + end + QStringLiteral("\x1b[2K\x1b[1Kx\ny\x1b[2Jz"),
           QStringLiteral("statusz"));
    addRow("erasing above behind a run keeps its last line",
           begin + QStringLiteral("status") + end + QStringLiteral("x\nabc\b\x1b[1J"),
           QStringLiteral("status   "));
    addRow("an unfinished sequence ends with its run",
           begin + QStringLiteral("a\x1b[") + end + begin + QStringLiteral("mb"),
           QStringLiteral("a\n\nmb"));
    addRow("an unfinished control string gives its text back",
           begin + QStringLiteral("a\x1b]0;") + QStringLiteral("status 0") + end,
           QStringLiteral("a0;status 0"));
}

void TestTerminalText::runs() {
    QFETCH(QString, output);
    QFETCH(QString, picture);
    QCOMPARE(shownInEveryWay(output), fourTimes(picture));
}

void TestTerminalText::captures_data() {
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("picture");
    const QString banner =
        QStringLiteral("Found TL866II+ 04.2.132 (0x284)\nDevice code: 12345678\n"
                       "Serial code: ABCDEFGHIJKLMNOPQRST\nUSB speed: 12Mbps (USB 1.1)\n");
    const auto row = [&](const char *name, const QString &rest) {
        QTest::newRow(name) << QString::fromLatin1(name) + QStringLiteral(".stderr")
                            << banner + rest;
    };
    const QString protect = QStringLiteral("Use -P if you want to write-protect this chip.\n");
    row("read-AT28C256-ok", QStringLiteral("Reading Code...  0.13Sec  OK\n"));
    row("write-AT28C256-ok",
        protect + QStringLiteral("Erasing... 0.02Sec OK\nWriting Code...  0.97Sec  OK\n"
                                 "Reading Code...  0.14Sec  OK\nVerification OK\n"));
    row("write-AT28C256-verify-failed",
        protect + QStringLiteral("Erasing... 0.03Sec OK\nWriting Code...  0.92Sec  OK\n"
                                 "Reading Code...  0.14Sec  OK\n"
                                 "Verification failed at address 0x1234: File=0x7E, Device=0x81\n"
                                 "This chip may be write-protected. Use -u and try again.\n"));
    row("erase-AT28C256", QStringLiteral("Erasing... 0.02Sec OK\n"));
    QTest::newRow("busy") << QStringLiteral("busy.stderr")
                          << QStringLiteral("\nIO error: claim_interface: LIBUSB_ERROR_BUSY\n");
}

void TestTerminalText::captures() {
    QFETCH(QString, file);
    QFETCH(QString, picture);
    QCOMPARE(shownInEveryWay(fileText(file)), fourTimes(picture));
}

void TestTerminalText::manyProgressUpdates_areOneReplacementOfALine() {
    TerminalText terminal;
    terminal.feed(u"before\nabc");
    terminal.takeUpdate();
    for (int step = 0; step <= 1000; ++step) {
        terminal.feed(u"\r\x1b[KReading Code...  ");
        terminal.feed(QString::number(step / 10));
    }
    QCOMPARE(terminal.takeUpdate(), (TerminalUpdate{0, 0, QStringLiteral("Reading Code...  100")}));
    QVERIFY(!terminal.hasUpdate());
}

void TestTerminalText::takeUpdate_givesWholeLinesUpToTheLimit() {
    TerminalText terminal;
    terminal.feed(u"a\nbb\nccc\nd");
    QCOMPARE(terminal.takeUpdate(5), (TerminalUpdate{0, 0, QStringLiteral("a\nbb\n")}));
    QCOMPARE(terminal.pendingLength(), 4);
    QCOMPARE(terminal.takeUpdate(1), (TerminalUpdate{0, 0, QStringLiteral("ccc\n")}));
    QCOMPARE(terminal.takeUpdate(1), (TerminalUpdate{0, 0, QStringLiteral("d")}));
    terminal.feed(u"e");
    QCOMPARE(terminal.takeUpdate(), (TerminalUpdate{0, 1, QStringLiteral("e")}));
}

void TestTerminalText::clear_replacesEverything() {
    TerminalText terminal;
    Screen screen;
    terminal.feed(u"one\ntwo\x1b[");
    screen.apply(terminal.takeUpdate());
    terminal.clear();
    terminal.feed(u"mew");
    screen.apply(terminal.takeUpdate());
    QCOMPARE(screen.text(), QStringLiteral("mew"));
}

void TestTerminalText::dropPending_keepsTheNewestLines_data() {
    QTest::addColumn<qsizetype>("most");
    QTest::addColumn<qsizetype>("maxLines");
    QTest::addColumn<QString>("picture");
    const auto row = [](const char *name, qsizetype most, qsizetype lines, const QString &picture) {
        QTest::newRow(name) << most << lines << picture;
    };
    row("nothing to drop", 100, 100, QStringLiteral("old\none\ntwo\nsix\nx"));
    row("too long", 6, 100, QStringLiteral("six\nx"));
    row("too many lines", 100, 2, QStringLiteral("two\nsix\nx"));
    row("too long and too many lines", 9, 1, QStringLiteral("six\nx"));
    row("none of the finished lines stays", 0, 100, QStringLiteral("x"));
}

void TestTerminalText::dropPending_keepsTheNewestLines() {
    QFETCH(qsizetype, most);
    QFETCH(qsizetype, maxLines);
    QFETCH(QString, picture);
    TerminalText terminal;
    Screen screen;
    terminal.feed(u"old\n");
    screen.apply(terminal.takeUpdate());
    terminal.feed(u"one\ntwo\nsix\nx");
    terminal.dropPendingBeyond(most, maxLines);
    screen.apply(terminal.takeUpdate());
    QCOMPARE(screen.text(), picture);
    terminal.feed(u"\x1b[2Jnew");
    screen.apply(terminal.takeUpdate());
    QCOMPARE(screen.text(), QStringLiteral("new"));
}

void TestTerminalText::longLine_isSplitAndLosesNothing() {
    const QString line(1024 * 1024, u'x');
    QString text = shown(line, Way::WholeAtOnce);
    QCOMPARE(text.indexOf(u'\n'), TerminalText::longestLine);
    QCOMPARE(text.remove(u'\n'), line);
}

void TestTerminalText::longLine_rewrittenOften_staysCheap() {
    TerminalText terminal;
    terminal.feed(QString(1024 * 1024, u'x'));
    qsizetype handedOver = terminal.takeUpdate().text.size();
    for (int step = 0; step < 1000; ++step) {
        terminal.feed(u"\ry");
        handedOver += terminal.takeUpdate().text.size();
    }
    QVERIFY(handedOver < 1000 * (TerminalText::longestLine + 1) + 2 * 1024 * 1024);
}

QTEST_GUILESS_MAIN(TestTerminalText)
#include "tst_terminaltext.moc"

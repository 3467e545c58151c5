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

using namespace Qt::StringLiterals;

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
    addRow("plain lines", u"one\ntwo\nthree"_s, u"one\ntwo\nthree"_s);
    addRow("a return overwrites what it reaches", u"abcdef\rXY"_s, u"XYcdef"_s);
    addRow("return and feed end a line", u"one\r\ntwo\r\n"_s, u"one\ntwo\n"_s);
    addRow("a feed in the middle of a line keeps the rest", u"abc\rX\nd"_s, u"Xbc\nd"_s);
    addRow("backspace steps back", u"abc\b\bX"_s, u"aXc"_s);
    addRow("backspace stops at the line's start", u"a\nb\b\b\bX"_s, u"a\nX"_s);
    addRow("bell and other controls are silent", u"a\a\x01\x7f\x85\vb\f"_s, u"ab"_s);
    addRow("tab is kept", u"a\tb"_s, u"a\tb"_s);
    addRow("no-break space and byte-order mark are kept", u"a\u00a0\ufeff"_s, u"a\u00a0\ufeff"_s);
    addRow("borders of documents are shown as unknown", u"a\u2029b\u2028\ufdd0"_s,
           u"a\ufffdb\ufffd\ufffd"_s);
    addRow("a pair is overwritten whole", u"\U0001f600z\rab"_s, u"abz"_s);
    addRow("half a pair becomes a blank", u"\U0001f600z\ra"_s, u"a z"_s);
    addRow("the second half of a pair becomes a blank", u"a\U0001f600\bX"_s, u"a X"_s);
}

static void addEraseRows() {
    addRow("erase to the end", u"abcdef\rab\x1b[K!"_s, u"ab!"_s);
    addRow("erase to the end, with its number", u"abcdef\rab\x1b[0K!"_s, u"ab!"_s);
    addRow("erase to the start", u"abcdef\b\b\x1b[1K"_s, u"     f"_s);
    addRow("erase the line, the cursor stays", u"abcdef\b\b\x1b[2KX"_s, u"    X"_s);
    addRow("erase by an unknown number does nothing", u"abc\r\x1b[9K"_s, u"abc"_s);
    addRow("erase through half a pair", u"\U0001f600\b\x1b[K"_s, u" "_s);
    addRow("erase below", u"one\nabc\r\x1b[Jd"_s, u"one\nd"_s);
    addRow("erase above", u"one\ntwo\nabc\b\b\x1b[1J"_s, u"  c"_s);
    addRow("erase the display", u"one\ntwo\nabc\x1b[2Jd"_s, u"d"_s);
    addRow("erase what scrolled away does nothing", u"one\ntwo\x1b[3J"_s, u"one\ntwo"_s);
}

static void addSequenceRows() {
    addRow("colours are swallowed", u"\x1b[0;91mred\x1b[0m."_s, u"red."_s);
    addRow("private modes are swallowed", u"\x1b[?25la\x1b[?K\x1b[>1;2cb"_s, u"ab"_s);
    addRow("sequences of two and three units are swallowed",
           u"\x1b(Ba\x1b=\x1b"
           "7b"_s,
           u"ab"_s);
    addRow("a title is swallowed to its bell", u"\x1b]0;title\x07text"_s, u"text"_s);
    addRow("a title is swallowed to its terminator", u"\x1b]0;title\x1b\\text"_s, u"text"_s);
    addRow("a control string is cut by another sequence", u"\x1bPabc\x1b[1mtext"_s, u"text"_s);
    addRow("a control string has an end", u"\x1b]"_s + QString(4096, u'x') + u"text\n"_s,
           u"text\n"_s);
    addRow("a feed inside a sequence still ends the line", u"a\x1b[1\n2mb"_s, u"a\nb"_s);
    addRow("cancel ends a sequence", u"\x1b[1\x18mab"_s, u"mab"_s);
    addRow("a sequence that is none ends", u"\x1b[1\u00e9m"_s, u"\u00e9m"_s);
    addRow("a sequence without end ends", u"\x1b["_s + QString(64, u'1') + u"1x"_s, u"1x"_s);
    addRow("an escape before an escape is forgotten", u"\x1b\x1b[31mx"_s, u"x"_s);
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
    addRow("the first run starts at the top", begin + u"a\n"_s, u"a\n"_s);
    addRow("an empty line sets a run off", begin + u"a"_s + end + begin + u"b"_s, u"a\n\nb"_s);
    addRow("an ended line sets a run off the same", begin + u"a\n"_s + end + begin + u"b"_s,
           u"a\n\nb"_s);
    addRow("a run without output leaves no second gap", u"a"_s + begin + end + begin + u"b"_s,
           u"a\n\nb"_s);
    addRow("a run does not overwrite the one before", begin + u"a"_s + end + begin + u"\rb\b\bc"_s,
           u"a\n\nc"_s);
    addRow("a run does not erase the one before",
           begin + u"a\nb"_s + end + begin + u"c\nd\x1b[2Je"_s, u"a\nb\n\ne"_s);
    addRow("what follows a run does not overwrite it", begin + u"status 0"_s + end + u"\rlate"_s,
           u"status 0late"_s);
    addRow("what follows a run does not erase it",
           begin + u"status"_s + end + u"\x1b[2K\x1b[1Kx\ny\x1b[2Jz"_s, u"statusz"_s);
    addRow("erasing above behind a run keeps its last line",
           begin + u"status"_s + end + u"x\nabc\b\x1b[1J"_s, u"status   "_s);
    addRow("an unfinished sequence ends with its run", begin + u"a\x1b["_s + end + begin + u"mb"_s,
           u"a\n\nmb"_s);
    addRow("an unfinished control string gives its text back",
           begin + u"a\x1b]0;"_s + u"status 0"_s + end, u"a0;status 0"_s);
}

void TestTerminalText::runs() {
    QFETCH(QString, output);
    QFETCH(QString, picture);
    QCOMPARE(shownInEveryWay(output), fourTimes(picture));
}

void TestTerminalText::captures_data() {
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("picture");
    const QString banner = u"Found TL866II+ 04.2.132 (0x284)\nDevice code: 12345678\n"
                           "Serial code: ABCDEFGHIJKLMNOPQRST\nUSB speed: 12Mbps (USB 1.1)\n"_s;
    const auto row = [&](const char *name, const QString &rest) {
        QTest::newRow(name) << QString::fromLatin1(name) + u".stderr"_s << banner + rest;
    };
    const QString protect = u"Use -P if you want to write-protect this chip.\n"_s;
    row("read-AT28C256-ok", u"Reading Code...  0.13Sec  OK\n"_s);
    row("write-AT28C256-ok", protect + u"Erasing... 0.02Sec OK\nWriting Code...  0.97Sec  OK\n"
                                       "Reading Code...  0.14Sec  OK\nVerification OK\n"_s);
    row("write-AT28C256-verify-failed",
        protect + u"Erasing... 0.03Sec OK\nWriting Code...  0.92Sec  OK\n"
                  "Reading Code...  0.14Sec  OK\n"
                  "Verification failed at address 0x1234: File=0x7E, Device=0x81\n"
                  "This chip may be write-protected. Use -u and try again.\n"_s);
    row("erase-AT28C256", u"Erasing... 0.02Sec OK\n"_s);
    QTest::newRow("busy") << u"busy.stderr"_s
                          << u"\nIO error: claim_interface: LIBUSB_ERROR_BUSY\n"_s;
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
    QCOMPARE(terminal.takeUpdate(), (TerminalUpdate{0, 0, u"Reading Code...  100"_s}));
    QVERIFY(!terminal.hasUpdate());
}

void TestTerminalText::takeUpdate_givesWholeLinesUpToTheLimit() {
    TerminalText terminal;
    terminal.feed(u"a\nbb\nccc\nd");
    QCOMPARE(terminal.takeUpdate(5), (TerminalUpdate{0, 0, u"a\nbb\n"_s}));
    QCOMPARE(terminal.pendingLength(), 4);
    QCOMPARE(terminal.takeUpdate(1), (TerminalUpdate{0, 0, u"ccc\n"_s}));
    QCOMPARE(terminal.takeUpdate(1), (TerminalUpdate{0, 0, u"d"_s}));
    terminal.feed(u"e");
    QCOMPARE(terminal.takeUpdate(), (TerminalUpdate{0, 1, u"e"_s}));
}

void TestTerminalText::clear_replacesEverything() {
    TerminalText terminal;
    Screen screen;
    terminal.feed(u"one\ntwo\x1b[");
    screen.apply(terminal.takeUpdate());
    terminal.clear();
    terminal.feed(u"mew");
    screen.apply(terminal.takeUpdate());
    QCOMPARE(screen.text(), u"mew"_s);
}

void TestTerminalText::dropPending_keepsTheNewestLines_data() {
    QTest::addColumn<qsizetype>("most");
    QTest::addColumn<qsizetype>("maxLines");
    QTest::addColumn<QString>("picture");
    const auto row = [](const char *name, qsizetype most, qsizetype lines, const QString &picture) {
        QTest::newRow(name) << most << lines << picture;
    };
    row("nothing to drop", 100, 100, u"old\none\ntwo\nsix\nx"_s);
    row("too long", 6, 100, u"six\nx"_s);
    row("too many lines", 100, 2, u"two\nsix\nx"_s);
    row("too long and too many lines", 9, 1, u"six\nx"_s);
    row("none of the finished lines stays", 0, 100, u"x"_s);
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
    QCOMPARE(screen.text(), u"new"_s);
}

void TestTerminalText::longLine_isSplitAndLosesNothing() {
    const QString line(1024 * 1024, u'x');
    QString text = shown(line, Way::WholeAtOnce);
    QCOMPARE(text.indexOf(u'\n'), TerminalText::widestLine);
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
    QVERIFY(handedOver < 1000 * (TerminalText::widestLine + 1) + 2 * 1024 * 1024);
}

QTEST_GUILESS_MAIN(TestTerminalText)
#include "tst_terminaltext.moc"

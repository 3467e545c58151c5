// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/LogicReport.h"

#include "support/FileHelpers.h"
#include "support/RecordingLog.h"

#include <QTemporaryDir>
#include <QTest>

#include <unistd.h>

namespace {

const QString foundTitle = QStringLiteral("parser found Logic test row - setting peeping_at");

/// A report as a picture: its parts in the order title, headers, rows, fields between bars.
QString pictureOf(const LogicReport &report) {
    QStringList parts;
    if (report.title)
        parts.append(QStringLiteral("title ") + *report.title);
    if (report.headers)
        parts.append(QStringLiteral("headers ") + report.headers->join(u'|'));
    for (const QStringList &row : report.rows)
        parts.append(QStringLiteral("row ") + row.join(u'|'));
    return parts.join(u'\n');
}

} // namespace

class TestLogicReport : public QObject {
    Q_OBJECT

private slots:
    void lines_data();
    void lines();
    void titles_areLoggedOneByOne();
    void everyLineBreakEndsALine_data();
    void everyLineBreakEndsALine();
    void everySpaceSeparatesFields();
    void otherSpacesBelongToFields();
    void levels_shareTheirCharacters();
    void reportOfAGoodChip();
    void reportOfABadChip();
    void aLinkOfSomebodyElse_isNotReadThrough();
    void trimEmptyStrings_data();
    void trimEmptyStrings();

private:
    static QString capture(const char *name) {
        return QString::fromUtf8(
            readWholeFile(QStringLiteral(TOOL_CAPTURES "/") + QLatin1String(name)));
    }
};

void TestLogicReport::lines_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("picture");
    const auto row = [](const char *name, const char *text, const char *picture) {
        QTest::newRow(name) << QString::fromUtf8(text) << QString::fromUtf8(picture);
    };
    row("empty", "", "");
    row("only line breaks", "\n\n\r\n", "");
    row("header line", "      A   B  C", "headers A|B|C");
    row("the last header line wins", "      A B C\n       X  Y\n", "headers X|Y");
    row("header line without fields", "      ", "headers ");
    row("five spaces are no header line", "     A B", "");
    row("six other spaces are no header line", "\xc2\xa0     A", "");
    row("six spaces further on", "x      A", "");
    row("result line", "0 1 0 H L", "row 0|1|0|H|L");
    row("result line with runs of spaces", "0000:  1   0 ", "row 0000:|1|0");
    row("result lines in order", "0000: a\n0001: b\n", "row 0000:|a\nrow 0001:|b");
    row("as many fields as there are", "      1\n0 a b c\n0", "headers 1\nrow 0|a|b|c\nrow 0");
    row("one space before", " 0 1", "");
    row("another digit", "1 0 1", "");
    row("another zero", "\xef\xbc\x90 1", "");
    row("tabs before text", "\t\t\t\t\t\tA", "");
    row("tab before a result", "\t0 1", "");
    row("tabs between fields", "0\t1\t\t0", "row 0|1|0");
    row("title", "Logic test successful.", "title Logic test successful.");
    row("title after other text", "7400: Logic test failed", "title 7400: Logic test failed");
    row("title, spaces kept", "      Logic test of 0  ", "title       Logic test of 0  ");
    row("title in a result line", "0 Logic test", "title 0 Logic test");
    row("the last title wins", "Logic test a\nLogic test b", "title Logic test b");
    row("title in another case", "logic test\nLogic Test\n", "");
    row("title over two lines", "Logic\ntest", "");
    row("title with two spaces", "Logic  test", "");
    row("line ends of CR LF", "      A\r\n0 1\r\nLogic test\r\n",
        "title Logic test\nheaders A\nrow 0|1");
    row("no last line break", "0 1", "row 0|1");
    row("anything else", "Found TL866II+\nDevice code: 1\n", "");
}

void TestLogicReport::lines() {
    QFETCH(QString, text);
    QFETCH(QString, picture);
    QCOMPARE(pictureOf(parseLogicReport(text)), picture);
}

void TestLogicReport::titles_areLoggedOneByOne() {
    QCOMPARE(parseLogicReport(u"0 1\n      A").log, QStringList());
    QCOMPARE(parseLogicReport(u"Logic test a\n0\nLogic test b").log,
             QStringList({foundTitle, foundTitle}));
}

void TestLogicReport::everyLineBreakEndsALine_data() {
    QTest::addColumn<char16_t>("lineBreak");
    QTest::newRow("line feed") << u'\n';
    QTest::newRow("vertical tab") << u'\v';
    QTest::newRow("form feed") << u'\f';
    QTest::newRow("carriage return") << u'\r';
    QTest::newRow("next line") << char16_t(0x0085);
    QTest::newRow("line separator") << u'\u2028';
    QTest::newRow("paragraph separator") << u'\u2029';
}

void TestLogicReport::everyLineBreakEndsALine() {
    QFETCH(char16_t, lineBreak);
    const QString text = QStringLiteral("0 a") + QChar(lineBreak) + QStringLiteral("0 b");
    QCOMPARE(pictureOf(parseLogicReport(text)), QStringLiteral("row 0|a\nrow 0|b"));
}

void TestLogicReport::everySpaceSeparatesFields() {
    const QString spaces = QStringLiteral(" \t\u00a0\u1680\u2000\u2001\u2002\u2003\u2004\u2005"
                                          "\u2006\u2007\u2008\u2009\u200a\u202f\u205f\u3000");
    for (const QChar space : spaces)
        QCOMPARE(parseLogicReport(QStringLiteral("0") + space + space + u'1' + space).rows,
                 QList<QStringList>({{QStringLiteral("0"), QStringLiteral("1")}}));
}

void TestLogicReport::otherSpacesBelongToFields() {
    const QString others = QStringLiteral("\u001b\u001f\u200b\u2060\ufeff");
    for (const QChar other : others)
        QCOMPARE(parseLogicReport(QStringLiteral("0") + other + u'1').rows,
                 QList<QStringList>({{QStringLiteral("0") + other + u'1'}}));
}

void TestLogicReport::levels_shareTheirCharacters() {
    const auto rows = parseLogicReport(u"0000: H  0\n0001: H  0\n").rows;
    for (const int level : {1, 2})
        QCOMPARE(rows.at(0).at(level).constData(), rows.at(1).at(level).constData());
    QCOMPARE(rows.at(0).capacity(), rows.at(0).size());
}

void TestLogicReport::reportOfAGoodChip() {
    const LogicReport report = parseLogicReport(
        QString(capture("logic-7400-ok.stderr") + capture("logic-7400-ok.stdout")));
    QCOMPARE(report.log, QStringList({foundTitle}));
    QCOMPARE(pictureOf(report).remove(QStringLiteral("\u001b[0m")),
             QStringLiteral("title Logic test successful.\n"
                            "headers 1|2|3|4|5|6|7|8|9|10|11|12|13|14\n"
                            "row 0000:|0|0|H|0|0|H|G|H|0|0|H|0|0|V|\n"
                            "row 0001:|1|0|H|1|0|H|G|H|1|0|H|1|0|V|\n"
                            "row 0002:|0|1|H|0|1|H|G|H|0|1|H|0|1|V|\n"
                            "row 0003:|1|1|L|1|1|L|G|L|1|1|L|1|1|V|"));
}

void TestLogicReport::reportOfABadChip() {
    const LogicReport report = parseLogicReport(
        QString(capture("logic-7400-one-error.stdout") + capture("logic-7400-one-error.stderr")));
    QCOMPARE(report.title,
             std::optional(QStringLiteral("Logic test failed: 1 errors encountered.")));
    QCOMPARE(report.rows.size(), 4);
    QCOMPARE(report.rows.at(3).at(3), QStringLiteral("\u001b[0;91mL-"));
    QCOMPARE(report.rows.at(3).at(4), QStringLiteral("\u001b[0m1"));
}

void TestLogicReport::aLinkOfSomebodyElse_isNotReadThrough() {
    if (::geteuid() != 0)
        QSKIP("only root can give a link away");
    const QTemporaryDir folder;
    const QString other = folder.filePath(QStringLiteral("other"));
    const QString link = folder.filePath(QStringLiteral("report"));
    QVERIFY(writeWholeFile(other, "Logic test\n"));
    QVERIFY(QFile::link(other, link));
    RecordingLog log;
    QVERIFY(bool(loadLogicReport(link, log)));
    QCOMPARE(::lchown(QFile::encodeName(link).constData(), 12345, gid_t(-1)), 0);
    log.lines.clear();
    const Result<LogicReport> report = loadLogicReport(link, log);
    QVERIFY(report.failure());
    const QString reason = QStringLiteral("It is a link that belongs to somebody else");
    QCOMPARE(report.failure()->reason, reason);
    QCOMPARE(log.lines, QStringList(QStringLiteral("error reading temp file: ") + reason));
}

void TestLogicReport::trimEmptyStrings_data() {
    QTest::addColumn<QStringList>("strings");
    QTest::addColumn<QStringList>("kept");
    const auto list = [](const char *text) { return QString::fromLatin1(text).split(u','); };
    QTest::newRow("empty list") << QStringList() << QStringList();
    QTest::newRow("empty strings before and between") << list(",a,,b") << list("a,b");
    QTest::newRow("empty strings only") << list(",,") << QStringList();
    QTest::newRow("nothing to drop") << list("a,b") << list("a,b");
    QTest::newRow("a blank is kept") << list(", ,") << list(" ");
}

void TestLogicReport::trimEmptyStrings() {
    QFETCH(QStringList, strings);
    QFETCH(QStringList, kept);
    QCOMPARE(::trimEmptyStrings(strings), kept);
}

QTEST_GUILESS_MAIN(TestLogicReport)
#include "tst_logicreport.moc"

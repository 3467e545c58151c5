// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/ToolReportReader.h"

#include "language/RunJudgement.h"
#include "support/AllocatedBytes.h"
#include "support/FileHelpers.h"

#include <QDir>
#include <QTest>

/// Output is judged as it arrives: in any pieces, and in bounded memory.
class TestToolReportReader : public QObject {
    Q_OBJECT

private slots:
    void pieces_cutAnywhereMeanTheSame_data();
    void pieces_cutAnywhereMeanTheSame();
    void streams_haveLinesOfTheirOwn();
    void report_canBeAskedAtAnyTime();
    void letters_ofTwoUnitsAreKept();
    void memory_isBoundedWhateverIsSaid_data();
    void memory_isBoundedWhateverIsSaid();
};

namespace {

/// What \a report means for each operation that ends well and for each that does not.
QString meaningOf(const ToolReport &report) {
    QStringList sentences;
    RunFacts facts;
    facts.report = report;
    for (const Operation operation :
         {ReadOperation, VerifyOperation, WriteOperation, LogicOperation})
        for (const int status : {0, 1}) {
            facts.operation = operation;
            facts.status = status;
            sentences.append(judgeRun(facts).sentence);
        }
    return sentences.join(u'\n');
}

QString captured(const QString &path) {
    return QString::fromUtf8(readWholeFile(path));
}

} // namespace

void TestToolReportReader::pieces_cutAnywhereMeanTheSame_data() {
    QTest::addColumn<QString>("text");
    const QDir captures(QStringLiteral(TOOL_CAPTURES));
    for (const QString &name : captures.entryList({QStringLiteral("*.std*")}))
        QTest::newRow(qPrintable(name)) << captured(captures.filePath(name));
    QTest::newRow("a failure behind a count")
        << QStringLiteral("\r\x1b[KReading Code...  12%\r\nOvercurrent protection!\a\n");
    QTest::newRow("no line end") << QStringLiteral("\r\x1b[KReading Code...  12.3 ms  OK");
}

void TestToolReportReader::pieces_cutAnywhereMeanTheSame() {
    QFETCH(QString, text);
    ToolReportReader whole;
    whole.take(text);
    const QString meaning = meaningOf(whole.report());
    for (qsizetype cut = 0; cut <= text.size(); ++cut) {
        ToolReportReader reader;
        reader.take(QStringView(text).first(cut));
        reader.take(QStringView(text).sliced(cut));
        QCOMPARE(meaningOf(reader.report()), meaning);
    }
    ToolReportReader byUnits;
    for (const QChar unit : text)
        byUnits.take(QStringView(&unit, 1));
    QCOMPARE(meaningOf(byUnits.report()), meaning);
}

void TestToolReportReader::streams_haveLinesOfTheirOwn() {
    ToolReportReader reader;
    reader.take(u"words of a profile, and no line end", ToolStream::Output);
    reader.take(u"Verification ", ToolStream::Error);
    reader.take(u"0000: 0  H", ToolStream::Output);
    reader.take(u"OK\n", ToolStream::Error);
    QVERIFY(reader.report().verified);
    QVERIFY(!reader.report().logicTested);
}

void TestToolReportReader::report_canBeAskedAtAnyTime() {
    ToolReportReader reader;
    QCOMPARE(reader.report().lastLine, QString());
    reader.take(u"No such");
    QCOMPARE(reader.report().lastLine, QStringLiteral("No such"));
    reader.take(u" thing\nNo programmer found.");
    QVERIFY(reader.report().error.has_value());
    reader.take(u"\nIO error: claim_interface: LIBUSB_ERROR_BUSY\n");
    QVERIFY(std::holds_alternative<toolErrors::NoProgrammer>(*reader.report().error));
}

// A folder may have any name, and the tool says which file it cannot open.
void TestToolReportReader::letters_ofTwoUnitsAreKept() {
    const QString words = QString::fromUtf8("No such file: /home/\xf0\x9f\x94\xa7/rom.bin");
    ToolReportReader reader;
    for (const QChar unit : words)
        reader.take(QStringView(&unit, 1));
    QCOMPARE(reader.report().lastLine, words);
    // What nobody sees, and halves, are left out as among the other letters.
    ToolReportReader hidden;
    hidden.take(u"a\U000E0041b");
    hidden.take(QStringView(words).sliced(20, 1));
    hidden.take(u"c");
    hidden.take(QStringView(words).sliced(21, 1));
    QCOMPARE(hidden.report().lastLine, QStringLiteral("abc"));
    // A line that is too long ends with a whole one.
    ToolReportReader full;
    full.take(words.sliced(20, 2).repeated(5000).prepend(u'x'));
    QVERIFY(full.report().lastLine.isValidUtf16());
}

void TestToolReportReader::memory_isBoundedWhateverIsSaid_data() {
    QTest::addColumn<QString>("piece");
    QTest::newRow("one line without an end") << QString(1024, u'x');
    QTest::newRow("short lines") << QStringLiteral("one more line\n").repeated(64);
    QTest::newRow("an escape sequence without an end")
        << QStringLiteral("\x1b[0;") + QString(1024, u'1');
    QTest::newRow("progress") << QStringLiteral("\r\x1b[KReading Code...  12%").repeated(32);
    QTest::newRow("failures") << QStringLiteral("Device %1 not found!\n").arg(QString(900, u'X'));
    QTest::newRow("vectors") << QStringLiteral("0000: 0  H  \n").repeated(64);
}

void TestToolReportReader::memory_isBoundedWhateverIsSaid() {
    QFETCH(QString, piece);
    ToolReportReader reader;
    reader.take(piece); // what is made once and kept is there
    const qint64 before = allocatedBytes();
    for (int times = 0; times < 10000; ++times)
        reader.take(piece);
    const qint64 grown = allocatedBytes() - before;
    QVERIFY2(grown < 64 * 1024, qPrintable(QString::number(grown)));
}

QTEST_GUILESS_MAIN(TestToolReportReader)
#include "tst_tool_report_reader.moc"

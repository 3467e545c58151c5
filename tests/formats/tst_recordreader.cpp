// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "formats/RecordReader.h"

#include <QTest>

/// Files of records, good and bad, and what comes of them.
class TestRecordReader : public QObject {
    Q_OBJECT

private slots:
    void intelHex_data();
    void intelHex();
    void damagedIntelHex_data();
    void damagedIntelHex() { intelHex(); }
    void sRecords_data();
    void sRecords();
    void damagedSRecords_data();
    void damagedSRecords() { sRecords(); }
    void layout_data();
    void layout() { intelHex(); }
    void everyTurn_comesToTheSame_data() { damagedIntelHex_data(); }
    void everyTurn_comesToTheSame();
    void aTurn_readsNoMoreThanItMay();
    void manyTroubles_areCountedButNotAllKept();
    void farAddresses_takeNoMemoryBetweenThem();
    void tooManyPieces_endTheReading();
    void longLine_isPassedOverOnce();
};

namespace {

QString nameOf(TroubleKind kind) {
    static const QStringList names =
        QStringLiteral("checksum overlap count-record no-end behind-end no-record no-digit "
                       "odd-digit bad-count type past-4GiB pieces")
            .split(u' ');
    return names.value(int(kind));
}

/// "0000:AA BB, 0010:CC; entry 1234; header xy; checksum 2" with what there is of it.
QString pictureOf(const DecodedRecords &decoded) {
    QStringList pieces;
    for (const auto &[address, bytes] : decoded.bytes.pieces())
        pieces << QStringLiteral("%1:%2").arg(
            QString::number(address, 16).rightJustified(4, u'0').toUpper(),
            QString::fromLatin1(bytes.toHex(' ').toUpper()));
    QStringList parts = {pieces.join(QStringLiteral(", "))};
    if (decoded.entry)
        parts << QStringLiteral("entry ") + QString::number(*decoded.entry, 16).toUpper();
    if (!decoded.header.isEmpty())
        parts << QStringLiteral("header ") + QString::fromLatin1(decoded.header);
    for (const RecordTrouble &trouble : decoded.troubles.kept())
        parts << QStringLiteral("%1 %2").arg(nameOf(trouble.kind)).arg(trouble.line);
    return parts.join(QStringLiteral("; "));
}

QString decodedPicture(RecordFormat format, const QByteArray &text, qsizetype turn) {
    RecordReader reader(format);
    while (!reader.advance(text, turn)) {
    }
    return pictureOf(reader.decoded());
}

void addColumns() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("picture");
}

void row(const char *name, const QByteArray &text, const char *picture) {
    QTest::newRow(name) << text << QString::fromLatin1(picture);
}

} // namespace

void TestRecordReader::intelHex_data() {
    addColumns();
    const QByteArray end = ":00000001FF\n";
    row("one record", ":02001000AABB89\n" + end, "0010:AA BB");
    row("the end alone", end, "");
    row("an empty data record", ":00001000F0\n" + end, "");
    row("two records that touch", ":0100000001FE\n:0100010002FC\n" + end, "0000:01 02");
    row("two that do not", ":0100000001FE\n:0100020002FB\n" + end, "0000:01, 0002:02");
    row("in falling order", ":0100010002FC\n:0100000001FE\n" + end, "0000:01 02");
    row("a gap that is closed", ":0100000001FE\n:0100020003FA\n:0100010002FC\n" + end,
        "0000:01 02 03");
    row("a segment base", ":020000021000EC\n:01000500AA50\n" + end, "10005:AA");
    row("a segment goes round", ":020000021000EC\n:02FFFF00AABB9B\n" + end, "10000:BB, 1FFFF:AA");
    row("a segment that ends past 1 MiB", ":02000002FFFFFE\n:01FFFF00AA57\n" + end, "10FFEF:AA");
    row("a linear base", ":020000040800F2\n:01000500AA50\n" + end, "8000005:AA");
    row("linear addresses go on", ":020000040001F9\n:02FFFF00AABB9B\n" + end, "1FFFF:AA BB");
    row("the last address", ":02000004FFFFFC\n:01FFFF00AA57\n" + end, "FFFFFFFF:AA");
    row("without a base addresses go on", ":02FFFF00AABB9B\n" + end, "FFFF:AA BB");
    row("a new base ends the old", ":020000040001F9\n:020000020010EC\n:01000000AA55\n" + end,
        "0100:AA");
    row("a segmented start", ":0400000312340005AE\n" + end, "; entry 12345");
    row("a linear start", ":04000005080001C12D\n" + end, "; entry 80001C1");
    row("an end with an address", ":00123401B9\n", "");
}

void TestRecordReader::intelHex() {
    QFETCH(QByteArray, text);
    QTEST(decodedPicture(RecordFormat::IntelHex, text, text.size() + 1), "picture");
}

void TestRecordReader::damagedIntelHex_data() {
    addColumns();
    const QByteArray end = ":00000001FF\n";
    const QByteArray good = ":0100000001FE\n";
    row("nothing", "", "; no-end 1");
    row("no end", good, "0000:01; no-end 1");
    row("no end behind empty lines", good + "\n\n", "0000:01; no-end 1");
    row("a wrong checksum", good + ":01000100020D\n" + end, "0000:01 02; checksum 2");
    row("a wrong checksum at the end", good + ":00000001FE\n", "0000:01; checksum 2");
    row("an odd digit", good + ":0100010002F\n" + end, "0000:01; odd-digit 2");
    row("no digit", good + ":01000100x2FC\n" + end, "0000:01; no-digit 2");
    row("no digit at the end of an odd line", good + ":0100010002F-\n:0-\n:-\n" + end,
        "0000:01; no-digit 2; no-digit 3; no-digit 4");
    row("a blank within", good + ":01 0001 00 02 FC\n" + end, "0000:01; no-digit 2");
    row("a letter of another alphabet",
        good +
            ":01000100\xD0\xB0"
            "02FC\n" +
            end,
        "0000:01; no-digit 2");
    row("a byte of zero",
        good +
            QByteArray(":0100\0"
                       "0100\n",
                       11) +
            end,
        "0000:01; no-digit 2");
    row("a mark alone", good + ":\n" + end, "0000:01; bad-count 2");
    row("less than a record", good + ":00000000\n" + end, "0000:01; bad-count 2");
    row("fewer bytes than it says", good + ":0300010002FA\n" + end, "0000:01; bad-count 2");
    row("more bytes than it says", good + ":010001000203F9\n" + end, "0000:01; bad-count 2");
    row("more digits than any record", good + ":" + QByteArray(900, '0') + "\n" + end,
        "0000:01; bad-count 2");
    row("an end with data", good + ":0100000100FE\n" + end, "0000:01; bad-count 2");
    row("a base of three bytes", good + ":03000004000001F8\n" + end, "0000:01; bad-count 2");
    row("a start of two bytes", good + ":020000050001F8\n" + end, "0000:01; bad-count 2");
    row("a type that is none", good + ":00000006FA\n" + end, "0000:01; type 2");
    row("past the last address", ":02000004FFFFFC\n:02FFFF00AABB9B\n" + end, "; past-4GiB 2");
    row("the same bytes twice", good + good + end, "0000:01; overlap 2");
    row("other bytes over them", good + ":020000000809ED\n" + end, "0000:08 09; overlap 2");
    row("over two pieces and the gap", good + ":0100020003FA\n:04000000A0A1A2A376\n" + end,
        "0000:A0 A1 A2 A3; overlap 3");
    row("into the middle", ":0400000001020304F2\n:02000100AABB98\n" + end,
        "0000:01 AA BB 04; overlap 2");
    row("a segment that goes round over itself",
        ":020000020000FC\n" + good + ":02FFFF00AABB9B\n" + end, "0000:BB, FFFF:AA; overlap 3");
    row("a remark", "; made by hand\n" + good + end, "0000:01; no-record 1");
    row("an S-record between", good + "S9030000FC\n" + end, "0000:01; no-record 2");
    row("a record behind the end", good + end + good, "0000:01; behind-end 3");
    row("bytes behind the end", good + end + QByteArray("\0\x1A\xFF", 3), "0000:01; behind-end 3");
    row("bytes on the line of the end", good + ":00000001FF\x1A\n",
        "0000:01; no-digit 2; no-end 2");
    row("two ends", good + end + end, "0000:01; behind-end 3");
    row("more than one trouble", ":zz\n:0\n" + good + good,
        "0000:01; no-digit 1; odd-digit 2; overlap 4; no-end 4");
}

void TestRecordReader::sRecords_data() {
    addColumns();
    const QByteArray end = "S9030000FC\n";
    row("16 bits", "S1040010AA41\n" + end, "0010:AA; entry 0");
    row("24 bits", "S205123456AAB4\nS804000010EB\n", "123456:AA; entry 10");
    row("32 bits", "S30680000000AACF\nS7058000010079\n", "80000000:AA; entry 80000100");
    row("widths mixed", "S104000001FA\nS20500000102F7\nS3060000000203F4\n" + end,
        "0000:01 02 03; entry 0");
    row("a header", "S0050000686929\nS104000001FA\n" + end, "0000:01; entry 0; header hi");
    row("a header without text", "S0030000FC\n" + end, "; entry 0");
    row("data without bytes", "S1030000FC\n" + end, "; entry 0");
    row("a count", "S104000001FA\nS104000102F8\nS5030002FA\n" + end, "0000:01 02; entry 0");
    row("a count of 24 bits", "S104000001FA\nS604000001FA\n" + end, "0000:01; entry 0");
    row("a count before the data", "S5030000FC\nS104000001FA\n" + end, "0000:01; entry 0");
    row("the last address", "S306FFFFFFFFAA53\n" + end, "FFFFFFFF:AA; entry 0");
    row("small letters", QByteArray("S1050010AABB85\n" + end).toLower(), "0010:AA BB; entry 0");
    row("CR LF", "S1040010AA41\r\nS9030000FC\r\n", "0010:AA; entry 0");
    row("a byte-order mark", "\xEF\xBB\xBFS1040010AA41\n" + end, "0010:AA; entry 0");
}

void TestRecordReader::sRecords() {
    QFETCH(QByteArray, text);
    QTEST(decodedPicture(RecordFormat::SRecord, text, text.size() + 1), "picture");
}

void TestRecordReader::damagedSRecords_data() {
    addColumns();
    const QByteArray end = "S9030000FC\n";
    const QByteArray good = "S104000001FA\n";
    row("no end", good, "0000:01; no-end 1");
    row("a wrong checksum", good + "S104000102F9\n" + end, "0000:01 02; entry 0; checksum 2");
    row("an odd digit", good + "S10400010\n" + end, "0000:01; entry 0; odd-digit 2");
    row("no digit", good + "S1040001G2F8\n" + end, "0000:01; entry 0; no-digit 2");
    row("a mark alone", good + "S\n" + end, "0000:01; entry 0; bad-count 2");
    row("a type alone", good + "S1\n" + end, "0000:01; entry 0; bad-count 2");
    row("no address", good + "S10200FD\n" + end, "0000:01; entry 0; bad-count 2");
    row("fewer bytes than it says", good + "S105000102F7\n" + end, "0000:01; entry 0; bad-count 2");
    row("more bytes than it says", good + "S10400010203F5\n" + end,
        "0000:01; entry 0; bad-count 2");
    row("a count with data", good + "S504000100FA\n" + end, "0000:01; entry 0; bad-count 2");
    row("an end with data", good + "S904000000FB\n" + end, "0000:01; entry 0; bad-count 2");
    row("the reserved type", good + "S404000102F8\n" + end, "0000:01; entry 0; type 2");
    row("a letter for a type", good + "S104000102F8\nSX030000FC\n" + end,
        "0000:01 02; entry 0; type 3");
    row("a count that disagrees", good + "S5030002FA\n" + end, "0000:01; entry 0; count-record 2");
    row("a count of 24 bits that disagrees", good + "S604010001F9\n" + end,
        "0000:01; entry 0; count-record 2");
    row("a count of records that were left out", good + "S1\nS5030002FA\n" + end,
        "0000:01; entry 0; bad-count 2; count-record 3");
    row("past the last address", "S307FFFFFFFFAABB97\n" + end, "; entry 0; past-4GiB 1");
    row("the same bytes twice", good + good + end, "0000:01; entry 0; overlap 2");
    row("a record behind the end", good + end + good, "0000:01; entry 0; behind-end 3");
    row("Intel HEX between", good + ":00000001FF\n" + end, "0000:01; entry 0; no-record 2");
}

void TestRecordReader::layout_data() {
    addColumns();
    const QByteArray lines = ":01000000AA55\n:01000100BB43\n:00000001FF\n";
    row("LF", lines, "0000:AA BB");
    row("CR LF", QByteArray(lines).replace("\n", "\r\n"), "0000:AA BB");
    row("CR", QByteArray(lines).replace("\n", "\r"), "0000:AA BB");
    row("LF, then CR LF, then none", ":01000000AA55\n:01000100BB43\r\n:00000001FF", "0000:AA BB");
    row("lower case", lines.toLower(), "0000:AA BB");
    row("a byte-order mark", "\xEF\xBB\xBF" + lines, "0000:AA BB");
    row("a byte-order mark alone", "\xEF\xBB\xBF", "; no-end 1");
    row("empty lines", "\n\r\n\r" + QByteArray(lines).replace("\n", "\n\n"), "0000:AA BB");
    row("blanks around the lines", "  " + QByteArray(lines).replace("\n", " \t\n\t "),
        "0000:AA BB");
    row("lines of blanks", "  \n \t\r\n" + lines + "   \n\t", "0000:AA BB");
    row("CR LF counts as one line", "\r\n\r\n:zz\r\n", "; no-digit 3; no-end 3");
    row("CR counts as a line", "\r\r:zz\r", "; no-digit 3; no-end 3");
}

void TestRecordReader::everyTurn_comesToTheSame() {
    QFETCH(QByteArray, text);
    QFETCH(QString, picture);
    for (qsizetype turn = 1; turn <= text.size(); ++turn)
        QCOMPARE(decodedPicture(RecordFormat::IntelHex, text, turn), picture);
}

void TestRecordReader::aTurn_readsNoMoreThanItMay() {
    const QByteArray text =
        QByteArray(":01000000AA55\n").repeated(1000) + ":00000001FF\n" + QByteArray(5000, '\n');
    constexpr qsizetype turn = 64;
    constexpr qsizetype longestLine = 1024;
    RecordReader reader(RecordFormat::IntelHex);
    for (bool done = false; !done;) {
        const qsizetype before = reader.position();
        done = reader.advance(text, turn);
        QVERIFY(reader.position() > before);
        QVERIFY(reader.position() - before <= turn + longestLine);
    }
    QCOMPARE(reader.position(), text.size());
}

void TestRecordReader::manyTroubles_areCountedButNotAllKept() {
    const QByteArray text = QByteArray(":zz\n").repeated(100'000);
    RecordReader reader(RecordFormat::IntelHex);
    QVERIFY(reader.advance(text, text.size()));
    const RecordTroubles &troubles = reader.decoded().troubles;
    QCOMPARE(troubles.kept().size(), RecordTroubles::maxKept);
    QCOMPARE(troubles.kept().back().line, qint64(RecordTroubles::maxKept));
    QCOMPARE(troubles.count(TroubleKind::NoHexDigit), qint64(100'000));
    QCOMPARE(troubles.total(), qint64(100'001)); // and there is no end
}

void TestRecordReader::farAddresses_takeNoMemoryBetweenThem() {
    const QByteArray text = "S3060000000001F8\nS306FFFFFFFF02FB\nS70500000000FA\n";
    RecordReader reader(RecordFormat::SRecord);
    QVERIFY(reader.advance(text, text.size()));
    qsizetype kept = 0;
    for (const auto &[address, bytes] : reader.decoded().bytes.pieces())
        kept += bytes.capacity();
    QVERIFY2(kept < 1024, qPrintable(QString::number(kept)));
    QCOMPARE(reader.decoded().bytes.end(), qint64(1) << 32);
}

void TestRecordReader::tooManyPieces_endTheReading() {
    constexpr int more = int(RecordReader::maxPieces) + 2;
    QByteArray text;
    for (int i = 0; i < more; ++i) {
        const QByteArray body =
            QByteArray::number(0x0600000000 + 2 * qint64(i), 16).rightJustified(10, '0') + "00";
        uint sum = 0;
        for (const char byte : QByteArray::fromHex(body))
            sum += uchar(byte);
        text += "S3" + body + QByteArray::number(~sum & 0xFF, 16).rightJustified(2, '0') + '\n';
    }
    RecordReader reader(RecordFormat::SRecord);
    QVERIFY(reader.advance(text, text.size()));
    QCOMPARE(reader.decoded().troubles.kept(),
             (std::vector{
                 RecordTrouble{TroubleKind::TooManyPieces, qint64(RecordReader::maxPieces) + 1}}));
}

void TestRecordReader::longLine_isPassedOverOnce() {
    const QByteArray text = ":01000000AA55\n" + QByteArray(100'000, 'x') + "\n:00000001FF\n";
    for (const qsizetype turn : {qsizetype(10), qsizetype(5000), text.size()})
        QCOMPARE(decodedPicture(RecordFormat::IntelHex, text, turn),
                 QStringLiteral("0000:AA; no-record 2"));
}

QTEST_GUILESS_MAIN(TestRecordReader)
#include "tst_recordreader.moc"

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "formats/RecordReader.h"
#include "formats/RecordWriter.h"

#include <QTest>

/// Bytes become text of records, and the same bytes again.
class TestRecordWriter : public QObject {
    Q_OBJECT

private slots:
    void text_data();
    void text();
    void everyLength_comesBack_data();
    void everyLength_comesBack();
    void everyRecordLength_comesBack_data() { everyLength_comesBack_data(); }
    void everyRecordLength_comesBack();
    void everyTurn_writesTheSame_data() { everyLength_comesBack_data(); }
    void everyTurn_writesTheSame();
    void count_hasTheShortestRecord_data();
    void count_hasTheShortestRecord();
    void addresses_areOf32Bits();
    void textLength_isBounded_data() { everyLength_comesBack_data(); }
    void textLength_isBounded();
};

namespace {

constexpr auto intelHex = RecordFormat::IntelHex;
constexpr auto sRecord = RecordFormat::SRecord;

QByteArray written(const RecordLayout &layout, const QByteArray &bytes) {
    RecordWriter writer(layout, bytes.size());
    writer.advance(bytes, bytes.size() + 1);
    return writer.takeText();
}

/// Bytes that do not repeat soon.
QByteArray sample(qsizetype length) {
    QByteArray bytes;
    for (qsizetype i = 0; i < length; ++i)
        bytes += char(i * 7 + i / 256);
    return bytes;
}

/// What \a text gives when it is read, if nothing is wrong with it.
std::optional<AddressedBytes::Pieces> readBack(RecordFormat format, const QByteArray &text) {
    RecordReader reader(format);
    if (!reader.advance(text, text.size()) || !reader.decoded().troubles.isEmpty())
        return std::nullopt;
    return reader.decoded().bytes.pieces();
}

AddressedBytes::Pieces piecesOf(qint64 address, const QByteArray &bytes) {
    return bytes.isEmpty() ? AddressedBytes::Pieces() : AddressedBytes::Pieces{{address, bytes}};
}

} // namespace

void TestRecordWriter::text_data() {
    QTest::addColumn<RecordFormat>("format");
    QTest::addColumn<qint64>("address");
    QTest::addColumn<QByteArray>("text");
    const auto row = [](const char *name, RecordFormat format, qint64 address, const char *text) {
        QTest::newRow(name) << format << address << QByteArray(text);
    };
    row("Intel HEX", intelHex, 0, ":02000000FF01FE\n:0100020002FB\n:00000001FF\n");
    row("Intel HEX over 64 KiB", intelHex, 0xFFFF,
        ":01FFFF00FF02\n:020000040001F9\n:020000000102FB\n:00000001FF\n");
    row("Intel HEX at the end of all addresses", intelHex, 0xFFFFFFFD,
        ":02000004FFFFFC\n:02FFFD00FF0102\n:01FFFF0002FF\n:00000001FF\n");
    row("S1", sRecord, 0xFFFD,
        "S0050000686929\nS105FFFDFF01FE\nS104FFFF02FB\nS5030002FA\nS9030000FC\n");
    row("S2", sRecord, 0xFFFE,
        "S0050000686929\nS20600FFFEFF01FC\nS20501000002F7\nS5030002FA\nS804000000FB\n");
    row("S3", sRecord, 0xFFFFFE,
        "S0050000686929\nS30700FFFFFEFF01FC\nS3060100000002F6\nS5030002FA\nS70500000000FA\n");
}

void TestRecordWriter::text() {
    QFETCH(RecordFormat, format);
    QFETCH(qint64, address);
    QTEST(written({format, 2, address, "hi"}, "\xFF\x01\x02"), "text");
}

void TestRecordWriter::everyLength_comesBack_data() {
    QTest::addColumn<RecordFormat>("format");
    QTest::addColumn<qint64>("address");
    for (const qint64 address : {0LL, 0xFFF0LL, 0xFFFFF0LL, 0x80000000LL, 0xFFFFF000LL}) {
        QTest::addRow("Intel HEX at %llx", address) << intelHex << address;
        QTest::addRow("S-records at %llx", address) << sRecord << address;
    }
}

void TestRecordWriter::everyLength_comesBack() {
    QFETCH(RecordFormat, format);
    QFETCH(qint64, address);
    for (int length = 0; length <= 255; ++length)
        for (const int recordLength : {1, 16, maxRecordLength(format, address, length)}) {
            const QByteArray text = written({format, recordLength, address}, sample(length));
            QCOMPARE(readBack(format, text), piecesOf(address, sample(length)));
        }
}

void TestRecordWriter::everyRecordLength_comesBack() {
    QFETCH(RecordFormat, format);
    QFETCH(qint64, address);
    const QByteArray bytes = sample(600);
    const int longest = maxRecordLength(format, address, bytes.size());
    for (int length = 1; length <= longest; ++length) {
        const QByteArray text = written({format, length, address}, bytes);
        QCOMPARE(readBack(format, text), piecesOf(address, bytes));
    }
}

void TestRecordWriter::everyTurn_writesTheSame() {
    QFETCH(RecordFormat, format);
    QFETCH(qint64, address);
    const QByteArray bytes = sample(100);
    const QByteArray whole = written({format, 16, address}, bytes);
    for (qsizetype turn = 1; turn <= bytes.size(); ++turn) {
        RecordWriter writer({format, 16, address}, bytes.size());
        QByteArray text;
        while (!writer.advance(bytes, turn))
            text += writer.takeText();
        QCOMPARE(text + writer.takeText(), whole);
    }
}

void TestRecordWriter::count_hasTheShortestRecord_data() {
    QTest::addColumn<int>("records");
    QTest::addColumn<QByteArray>("count");
    QTest::newRow("none") << 0 << QByteArray("S5030000FC");
    QTest::newRow("16 bits") << 0xFFFF << QByteArray("S503FFFFFE");
    QTest::newRow("24 bits") << 0x10000 << QByteArray("S604010000FA");
}

void TestRecordWriter::count_hasTheShortestRecord() {
    QFETCH(int, records);
    const QByteArray text = written({sRecord, 1, 0}, QByteArray(records, 'x'));
    QTEST(text.split('\n').at(records + 1), "count");
}

void TestRecordWriter::addresses_areOf32Bits() {
    QVERIFY(fitsAddresses(0xFFFFFFFF, 1));
    QVERIFY(!fitsAddresses(0xFFFFFFFF, 2));
    QVERIFY(fitsAddresses(0x100000000, 0));
    QVERIFY(!fitsAddresses(0x100000001, 0));
    QVERIFY(!fitsAddresses(-1, 1));
}

void TestRecordWriter::textLength_isBounded() {
    QFETCH(RecordFormat, format);
    QFETCH(qint64, address);
    for (const int length : {0, 1, 100, 4000})
        for (const int recordLength : {1, 16, 250}) {
            const RecordLayout layout{format, recordLength, address, QByteArray(252, 'x')};
            const qint64 real = written(layout, sample(length)).size();
            QVERIFY(real <= maxTextLength(layout, length));
            QVERIFY(maxTextLength(layout, length) <= 15 * real / 10 + 1000);
        }
}

QTEST_GUILESS_MAIN(TestRecordWriter)
#include "tst_recordwriter.moc"

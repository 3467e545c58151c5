// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "formats/RecordFormat.h"
#include "language/ImageEncoding.h"

#include <QTest>

/// Which files are taken for text of records.
class TestRecordFormat : public QObject {
    Q_OBJECT

private slots:
    void format_data();
    void format();
    void whatTheToolDecodes_isRecognised_data();
    void whatTheToolDecodes_isRecognised();
};

namespace {

using Format = std::optional<RecordFormat>;

} // namespace

void TestRecordFormat::format_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<Format>("format");
    const auto row = [](const char *name, const QByteArray &bytes, Format format) {
        QTest::newRow(name) << bytes << format;
    };
    row("Intel HEX", ":00000001FF\n", RecordFormat::IntelHex);
    row("S-records", "S0030000FC\n", RecordFormat::SRecord);
    row("small letters", "s0030000fc\n", RecordFormat::SRecord);
    row("a byte-order mark and blanks", "\xEF\xBB\xBF \r\n\t:00000001FF", RecordFormat::IntelHex);
    row("a damaged first record", ":00zz0001FF\n", RecordFormat::IntelHex);
    row("a mark and a line end", ":\r\n", RecordFormat::IntelHex);
    row("a mark and one digit", "S1", std::nullopt);
    row("a word", "Some text\n", std::nullopt);
    row("a sentence", ": so\n", std::nullopt);
    row("nothing", "", std::nullopt);
    row("blanks alone", " \n\n", std::nullopt);
    row("bytes", QByteArray("\0\x3A\x30\x30", 4), std::nullopt);
    row("behind 64 KiB of lines", QByteArray(65536, '\n') + ":00000001FF\n", std::nullopt);
}

void TestRecordFormat::format() {
    QFETCH(QByteArray, bytes);
    QTEST(recordFormatOf(bytes), "format");
}

void TestRecordFormat::whatTheToolDecodes_isRecognised_data() {
    QTest::addColumn<QByteArray>("bytes");
    for (const char *text : {":\n", "S\r", "\r\n:A\n", ":00\r", "S9\n", "\n\n\nSabcdef\n"})
        QTest::newRow(QByteArray(text).toPercentEncoding().constData()) << QByteArray(text);
    QTest::newRow("as late as possible") << QByteArray(maxEncodingBytes - 2, '\n') + ":\n";
}

void TestRecordFormat::whatTheToolDecodes_isRecognised() {
    QFETCH(QByteArray, bytes);
    const ImageEncoding tool = encodingForTool(bytes);
    QVERIFY(tool != ImageEncoding::Raw);
    QCOMPARE(
        recordFormatOf(bytes),
        Format(tool == ImageEncoding::IntelHex ? RecordFormat::IntelHex : RecordFormat::SRecord));
}

QTEST_GUILESS_MAIN(TestRecordFormat)
#include "tst_recordformat.moc"

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "image/BytesAsText.h"

#include <QTest>

class TestBytesAsText : public QObject {
    Q_OBJECT

private slots:
    void notations_data();
    void notations();
    void manyBytes_areWrittenInLines();
};

void TestBytesAsText::notations_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<ByteNotation>("notation");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, const QByteArray &bytes, ByteNotation notation,
                        const char *text) {
        QTest::newRow(name) << bytes << notation << QString::fromUtf8(text);
    };
    const QByteArray fifteen = "ABCDEFGHIJKLMNO";
    const QByteArray sixteen = fifteen + 'P';
    const QByteArray seventeen = sixteen + 'Q';
    const QByteArray awkward("\0\"'\\\n\x7F\x80\xFF", 8);

    row("no digits", {}, ByteNotation::Hexadecimal, "");
    row("digits of a byte", "J", ByteNotation::Hexadecimal, "4A");
    row("digits of 15", fifteen, ByteNotation::Hexadecimal,
        "41 42 43 44 45 46 47 48 49 4A 4B 4C 4D 4E 4F");
    row("digits of 16", sixteen, ByteNotation::Hexadecimal,
        "41 42 43 44 45 46 47 48 49 4A 4B 4C 4D 4E 4F 50");
    row("digits of 17", seventeen, ByteNotation::Hexadecimal,
        "41 42 43 44 45 46 47 48 49 4A 4B 4C 4D 4E 4F 50\n51");
    row("digits of awkward bytes", awkward, ByteNotation::Hexadecimal, "00 22 27 5C 0A 7F 80 FF");

    row("no array", {}, ByteNotation::CArray, "");
    row("array of a byte", "J", ByteNotation::CArray,
        "const unsigned char data[1] = {\n    0x4A,\n};");
    row("array of 15", fifteen, ByteNotation::CArray,
        "const unsigned char data[15] = {\n    0x41, 0x42, 0x43, 0x44, 0x45, 0x46, 0x47, 0x48, "
        "0x49, 0x4A, 0x4B, 0x4C, 0x4D, 0x4E, 0x4F,\n};");
    row("array of 16", sixteen, ByteNotation::CArray,
        "const unsigned char data[16] = {\n    0x41, 0x42, 0x43, 0x44, 0x45, 0x46, 0x47, 0x48, "
        "0x49, 0x4A, 0x4B, 0x4C, 0x4D, 0x4E, 0x4F, 0x50,\n};");
    row("array of 17", seventeen, ByteNotation::CArray,
        "const unsigned char data[17] = {\n    0x41, 0x42, 0x43, 0x44, 0x45, 0x46, 0x47, 0x48, "
        "0x49, 0x4A, 0x4B, 0x4C, 0x4D, 0x4E, 0x4F, 0x50,\n    0x51,\n};");
    row("array of awkward bytes", awkward, ByteNotation::CArray,
        "const unsigned char data[8] = {\n    0x00, 0x22, 0x27, 0x5C, 0x0A, 0x7F, 0x80, 0xFF,\n};");

    row("no literal", {}, ByteNotation::PythonBytes, "b\"\"");
    row("literal of a byte", "J", ByteNotation::PythonBytes, "b\"J\"");
    row("literal of 15", fifteen, ByteNotation::PythonBytes, "b\"ABCDEFGHIJKLMNO\"");
    row("literal of 16", sixteen, ByteNotation::PythonBytes, "b\"ABCDEFGHIJKLMNOP\"");
    row("literal of 17", seventeen, ByteNotation::PythonBytes,
        "(\n    b\"ABCDEFGHIJKLMNOP\"\n    b\"Q\"\n)");
    row("literal of awkward bytes", awkward, ByteNotation::PythonBytes,
        R"(b"\x00\"'\\\x0A\x7F\x80\xFF")");

    row("no characters", {}, ByteNotation::Characters, "");
    row("a character", "J", ByteNotation::Characters, "J");
    row("15 characters", fifteen, ByteNotation::Characters, "ABCDEFGHIJKLMNO");
    row("16 characters", sixteen, ByteNotation::Characters, "ABCDEFGHIJKLMNOP");
    row("17 characters", seventeen, ByteNotation::Characters, "ABCDEFGHIJKLMNOPQ");
    row("awkward characters", awkward, ByteNotation::Characters, " \"'\\   \u00ff");
}

void TestBytesAsText::notations() {
    QFETCH(QByteArray, bytes);
    QFETCH(ByteNotation, notation);
    QFETCH(QString, text);
    QCOMPARE(bytesAsText(bytes, notation), text);
}

void TestBytesAsText::manyBytes_areWrittenInLines() {
    const QByteArray bytes(1000, '\xA5');
    QCOMPARE(bytesAsText(bytes, ByteNotation::Hexadecimal).count(u'\n'), 62);
    QCOMPARE(bytesAsText(bytes, ByteNotation::Hexadecimal).count(QStringLiteral("A5")), 1000);
    QCOMPARE(bytesAsText(bytes, ByteNotation::CArray).count(QStringLiteral("0xA5,")), 1000);
    QCOMPARE(bytesAsText(bytes, ByteNotation::PythonBytes).count(QStringLiteral("\\xA5")), 1000);
    QCOMPARE(bytesAsText(bytes, ByteNotation::Characters).size(), 1000);
}

QTEST_APPLESS_MAIN(TestBytesAsText)
#include "tst_bytesastext.moc"

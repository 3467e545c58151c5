// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "image/BytesAsText.h"
#include "image/PastedText.h"

#include <QTest>

using Kind = PasteTrouble::Kind;

/// What a text that was copied somewhere stands for.
class TestPastedText : public QObject {
    Q_OBJECT

private slots:
    void understood_data();
    void understood();
    void notUnderstood_data();
    void notUnderstood();
    void characters();
    void charactersThatAreNoBytes();
    void turns_changeNothing_data();
    void turns_changeNothing();
    void whatTheProgramCopies_isUnderstood_data();
    void whatTheProgramCopies_isUnderstood();
    void longText_isReadInTurns();
};

namespace {

/// "bytes in hexadecimal digits", or the trouble: "kind at line:column part".
QString outcomeOf(const PastedText &text) {
    const auto bytes = text.result();
    if (bytes)
        return QString::fromLatin1(bytes->toHex(' ').toUpper());
    const PasteTrouble &trouble = *bytes.failure();
    return QStringLiteral("%1 at %2:%3 %4")
        .arg(QString::number(int(trouble.kind)), QString::number(trouble.line),
             QString::number(trouble.column), trouble.part);
}

QString readIn(const QString &text, qsizetype turn, PastedText::As as = PastedText::As::Bytes) {
    PastedText reader(text, as);
    while (!reader.advance(turn)) {
    }
    return outcomeOf(reader);
}

QString troubleAt(Kind kind, int line, int column, const char *part) {
    return QStringLiteral("%1 at %2:%3 %4")
        .arg(QString::number(int(kind)), QString::number(line), QString::number(column),
             QString::fromUtf8(part));
}

const char *const twoRows =
    "0000  30 31 32 33 34 35 36 37 38 39 41 42 43 44 45 46  0123456789ABCDEF\n"
    "0010  47 48 49 4A XX XX XX XX XX XX XX XX XX XX XX XX  GHIJ\n";

void addRow(const char *name, const QString &text, const QString &expected) {
    QTest::newRow(name) << text << expected;
}

} // namespace

void TestPastedText::understood_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const char *text, const char *expected) {
        addRow(name, QString::fromUtf8(text), QString::fromLatin1(expected));
    };
    row("one byte", "7f", "7F");
    row("zero", "00", "00");
    row("blanks", " 48 65  6C\t6c ", "48 65 6C 6C");
    row("no blanks", "48656C6c6F", "48 65 6C 6C 6F");
    row("groups", "4865 6C6C 6F", "48 65 6C 6C 6F");
    row("commas", "48,65, 6C,", "48 65 6C");
    row("lines", "48 65\n6C\r\n6C\n", "48 65 6C 6C");
    row("a blank that does not break", "48\u00A065", "48 65");
    row("prefixes", "0x48, 0X65,0x6c", "48 65 6C");
    row("single digits behind a prefix", "0x4, 0x0", "04 00");
    row("words behind a prefix", "0x4865", "48 65");
    row("an array", "{ 0x48, 0x65 }", "48 65");
    row("an array with its declaration",
        "const unsigned char rom[2] = {\n    0x48,\n    0x65,\n};\n", "48 65");
    row("an array with its length behind it",
        "unsigned char a_bin[] = {0x01, 0xff};\nunsigned int a_bin_len = 2;\n", "01 FF");
    row("an array of C++", "std::array<uint8_t, 2> rom = {0x1, 0x2};", "01 02");
    row("an array of decimal numbers", "{0, 10, 255}", "00 0A FF");
    row("an array with comments", "/* rom */ {0x01, // one, 0x05\n/* 0x07\n} */ 0x02}", "01 02");
    row("numbers with leading zeros", "{0x0041, 0x00000042}", "41 42");
    row("a literal", "b'Hello'", "48 65 6C 6C 6F");
    row("a literal in double quotes", "B\"it's\"", "69 74 27 73");
    row("escapes of a literal", R"(b'\x00\xFfa\n\r\t\\\'\"\0\101\7')",
        "00 FF 61 0A 0D 09 5C 27 22 00 41 07");
    row("a literal with a name", "rom = b'\\x01\\x02'\n", "01 02");
    row("literals one after the other", "rom = (\n    b'\\x01'\n    b'\\x02'\n)\n", "01 02");
    row("literals joined by backslashes", "rom = b'\\x01' \\\n  b'\\x02'", "01 02");
    row("a literal that goes on in the next line", "b'a\\\nb'", "61 62");
    row("the same with line ends of two", "rom = b'\\x01' \\\r\n b'a\\\r\nb'\r\n", "01 61 62");
    row("the same with carriage returns", "b'\\x01' \\\r b'a\\\rb'\r", "01 61 62");
    row("comments with carriage returns", "// rom\r{0x01, // one\r0x02}", "01 02");
    addRow("rows with carriage returns", QString::fromLatin1(twoRows).replace(u'\n', u'\r'),
           QStringLiteral("30 31 32 33 34 35 36 37 38 39 41 42 43 44 45 46 47 48 49 4A"));
    row("rows of the grid", twoRows, "30 31 32 33 34 35 36 37 38 39 41 42 43 44 45 46 47 48 49 4A");
    row("a row from the middle",
        "12340  00 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F  b'}{', 0x, XX\n",
        "00 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F");
}

void TestPastedText::understood() {
    QFETCH(const QString, text);
    QTEST(readIn(text, text.size()), "expected");
}

void TestPastedText::notUnderstood_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const char *text, const QString &expected) {
        addRow(name, QString::fromUtf8(text), expected);
    };
    row("nothing", "", troubleAt(Kind::NoBytes, 1, 1, ""));
    row("blanks", " \n ", troubleAt(Kind::NoBytes, 2, 2, ""));
    row("words", "Hello, world", troubleAt(Kind::NoDigit, 1, 1, "Hello"));
    row("a letter that is no digit", "48 6G", troubleAt(Kind::NoDigit, 1, 5, "G"));
    row("in the third line", "48\n65\n6C zz 00", troubleAt(Kind::NoDigit, 3, 4, "zz"));
    row("behind carriage returns", "48\r65\r6C zz 00", troubleAt(Kind::NoDigit, 3, 4, "zz"));
    row("behind line ends of two", "48\r\n65\r\n6C zz", troubleAt(Kind::NoDigit, 3, 4, "zz"));
    row("an odd digit", "48 656 6C", troubleAt(Kind::OddDigit, 1, 4, "656"));
    row("an odd digit at the end", "48 6", troubleAt(Kind::OddDigit, 1, 4, "6"));
    row("an odd digit behind a prefix", "0x486", troubleAt(Kind::OddDigit, 1, 1, "0x486"));
    row("a prefix alone", "48 0x 65", troubleAt(Kind::NoDigit, 1, 4, "0x"));
    row("a long word", "zzzzzzzzzzzzzzzzzzzzzzzzzz",
        troubleAt(Kind::NoDigit, 1, 1, "zzzzzzzzzzzzzzzz"));
    row("an array that is not closed", "{0x01, 0x02", troubleAt(Kind::NoEnd, 1, 12, ""));
    row("an array that ends in a comment", "{0x01 /* }", troubleAt(Kind::NoEnd, 1, 11, ""));
    row("an empty array", "{}", troubleAt(Kind::NoBytes, 1, 3, ""));
    row("a number that is too large", "{0x01, 256}", troubleAt(Kind::NoValue, 1, 8, "256}"));
    row("a number with a leading zero", "{012}", troubleAt(Kind::NoValue, 1, 2, "012}"));
    row("a negative number", "{-1}", troubleAt(Kind::NoValue, 1, 2, "-1}"));
    row("a name in an array", "{\n0x01, END}", troubleAt(Kind::NoValue, 2, 7, "END}"));
    row("a prefix alone in an array", "{0x}", troubleAt(Kind::NoValue, 1, 2, "0x}"));
    row("two prefixes", "{0x0x41}", troubleAt(Kind::NoValue, 1, 2, "0x0x41}"));
    row("a decimal number with letters", "{0b1}", troubleAt(Kind::NoValue, 1, 2, "0b1}"));
    row("a literal that ends with a carriage return", "b'ab\r'", troubleAt(Kind::NoEnd, 1, 5, ""));
    row("an array in an array", "{{0x01}}", troubleAt(Kind::NoValue, 1, 2, "{0x01}}"));
    row("a second array", "{0x01} {0x02}", troubleAt(Kind::BehindEnd, 1, 7, ""));
    row("a literal that is not closed", "b'ab", troubleAt(Kind::NoEnd, 1, 5, ""));
    row("a literal that ends in a line", "b'ab\n'", troubleAt(Kind::NoEnd, 1, 5, ""));
    row("a literal that ends in an escape", "b'ab\\", troubleAt(Kind::NoEnd, 1, 5, "\\"));
    row("an escape of one digit", "b'\\x1'", troubleAt(Kind::NoValue, 1, 3, "\\x1'"));
    row("an escape that is none", "b'\\q'", troubleAt(Kind::NoValue, 1, 3, "\\q'"));
    row("an escape that is too large", "b'\\777'", troubleAt(Kind::NoValue, 1, 3, "\\777'"));
    row("a letter that Python refuses", "b'\u00E4'", troubleAt(Kind::NoValue, 1, 3, "\u00E4'"));
    row("a text behind a literal", "b'a' + x", troubleAt(Kind::NoValue, 1, 6, "+"));
    row("rows with something between",
        "0000  30 31 32 33 34 35 36 37 38 39 41 42 43 44 45 46  0123456789ABCDEF\nand\n",
        troubleAt(Kind::NoRow, 2, 1, "and"));
    row("rows that are apart",
        "0000  30 31 32 33 34 35 36 37 38 39 41 42 43 44 45 46  0123456789ABCDEF\n"
        "0020  30 31 32 33 34 35 36 37 38 39 41 42 43 44 45 46  0123456789ABCDEF\n",
        troubleAt(Kind::RowsApart, 2, 1, "0020"));
    row("a byte behind places without one",
        "0000  30 XX 32 33 34 35 36 37 38 39 41 42 43 44 45 46  0123456789ABCDEF\n",
        troubleAt(Kind::NoRow, 1, 1, "0000"));
}

void TestPastedText::notUnderstood() {
    understood();
}

void TestPastedText::characters() {
    const QString text = QStringLiteral("48 \u00E4\n\t");
    QCOMPARE(readIn(text, 3, PastedText::As::Characters), QStringLiteral("34 38 20 E4 0A 09"));
}

void TestPastedText::charactersThatAreNoBytes() {
    QCOMPARE(readIn(QStringLiteral("a\nb\u20AC c"), 100, PastedText::As::Characters),
             troubleAt(Kind::NoCharacter, 2, 2, "\u20AC"));
    QCOMPARE(readIn(QString(), 100, PastedText::As::Characters),
             troubleAt(Kind::NoBytes, 1, 1, ""));
}

void TestPastedText::turns_changeNothing_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    addRow("hex", QStringLiteral("4865 0x6c,0x6 c"), troubleAt(Kind::OddDigit, 1, 15, "c"));
    addRow("array", QStringLiteral("{0x01, /* x */ 0x02, 17}; "), QStringLiteral("01 02 11"));
    addRow("literal", QStringLiteral("b'a\\x01' b\"\\n\""), QStringLiteral("61 01 0A"));
    addRow("rows", QString::fromLatin1(twoRows),
           QStringLiteral("30 31 32 33 34 35 36 37 38 39 41 42 43 44 45 46 47 48 49 4A"));
}

void TestPastedText::turns_changeNothing() {
    QFETCH(const QString, text);
    for (qsizetype turn = 1; turn <= text.size() + 1; ++turn)
        QTEST(readIn(text, turn), "expected");
}

void TestPastedText::whatTheProgramCopies_isUnderstood_data() {
    QTest::addColumn<ByteNotation>("notation");
    QTest::newRow("hexadecimal") << ByteNotation::Hexadecimal;
    QTest::newRow("array") << ByteNotation::CArray;
    QTest::newRow("literal") << ByteNotation::PythonBytes;
}

void TestPastedText::whatTheProgramCopies_isUnderstood() {
    QFETCH(const ByteNotation, notation);
    QByteArray bytes;
    for (int byte = 0xFF; byte >= 0; --byte) {
        bytes += char(byte);
        PastedText reader(bytesAsText(bytes, notation));
        while (!reader.advance(1000)) {
        }
        QVERIFY(reader.result());
        QCOMPARE(*reader.result(), bytes);
    }
}

void TestPastedText::longText_isReadInTurns() {
    const qsizetype count = 100000;
    PastedText reader(QStringLiteral("a5 ").repeated(count));
    int turns = 0;
    qsizetype last = 0;
    while (!reader.advance(1000)) {
        ++turns;
        QVERIFY(reader.position() > last && reader.position() - last <= 1002);
        last = reader.position();
    }
    QVERIFY(turns >= 298);
    QVERIFY(reader.result());
    QCOMPARE(*reader.result(), QByteArray(count, '\xA5'));
}

QTEST_GUILESS_MAIN(TestPastedText)
#include "tst_pastedtext.moc"

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "grid/CellEdit.h"
#include "grid/GridColumns.h"

#include "support/AddressSpaceLimit.h"

#include <QTest>

class TestCellEdit : public QObject {
    Q_OBJECT

private slots:
    void commit_data();
    void commit();
    void commit_writesEveryByteValueButZero();
    void commit_leavesAnotherReferenceToTheBytesAlone();
    void hexDigit_hasADigitUpToFifteen();
    void hexValue_subtractsTheHighDigit();
    void hexValue_cutsTheUpperPartToSixteenBits();
    void edit_withoutMemoryLeavesTheBufferAlone_data();
    void edit_withoutMemoryLeavesTheBufferAlone();
};

namespace {

const CellEditOutcome untouched;

/// 40 bytes 0x20 to 0x47: two whole rows and half of one.
QByteArray image() {
    QByteArray bytes;
    for (char byte = ' '; byte < 'H'; ++byte)
        bytes.append(byte);
    return bytes;
}

CellEdit written(qint64 offset, qsizetype count, qsizetype grewBy = 0) {
    return {.offset = offset,
            .bytesWritten = count,
            .grewBy = grewBy,
            .replaced = image().mid(offset, count)};
}

CellEdit rejected(qint64 offset) {
    CellEdit edit = written(offset, 1);
    edit.rejected = true;
    return edit;
}

/// The bytes from \a at on, with the rest of \a before as it was.
QByteArray with(QByteArray before, qsizetype at, const QByteArray &bytes) {
    return before.replace(at, bytes.size(), bytes);
}

} // namespace

void TestCellEdit::commit_data() {
    QTest::addColumn<QString>("entry");
    QTest::addColumn<int>("column");
    QTest::addColumn<qint64>("row");
    QTest::addColumn<CellEditOutcome>("outcome");
    QTest::addColumn<QByteArray>("after");

    const QByteArray before = image();
    const auto row = [](const char *name, const QString &entry, int column, qint64 gridRow,
                        const CellEditOutcome &outcome, const QByteArray &after) {
        QTest::newRow(name) << entry << column << gridRow << outcome << after;
    };
    const auto hex = [&](const char *name, const QString &entry, const QByteArray &byte) {
        row(name, entry, 1, 0, written(0, 1), with(before, 0, byte));
    };
    const auto refused = [&](const char *name, const QString &entry) {
        row(name, entry, 1, 0, rejected(0), before);
    };
    const auto ignored = [&](const char *name, const QString &entry, int column, qint64 gridRow) {
        row(name, entry, column, gridRow, untouched, before);
    };

    hex("two hexadecimal digits are the byte", QStringLiteral("41"), "A");
    hex("the prefix 0x may stand in front", QStringLiteral("0x7f"), "\x7f");
    hex("the prefix 0X may stand in front", QStringLiteral("0X7F"), "\x7f");
    hex("white space in front is skipped", QStringLiteral(" \t\n7F"), "\x7f");
    hex("what follows the digits is ignored", QStringLiteral("7fzz"), "\x7f");
    hex("the largest byte is taken", QStringLiteral("FF"), "\xff");
    hex("the smallest byte is taken", QStringLiteral("1"), "\x01");
    hex("leading zeros do not count", QStringLiteral("00000000041"), "A");
    refused("a value above FF beeps and writes the byte back", QStringLiteral("100"));
    refused("a value beyond 32 bits beeps", QStringLiteral("100000041"));
    refused("zero beeps", QStringLiteral("0"));
    refused("two zeros beep", QStringLiteral("00"));
    refused("a word without a number beeps", QStringLiteral("zz"));
    refused("a prefix without digits beeps", QStringLiteral("0x"));
    refused("a minus sign beeps", QStringLiteral("-1"));
    refused("white space alone beeps", QStringLiteral("  "));
    refused("a space before a quote makes it no text", QStringLiteral(" 'A'"));

    row("a text in single quotes is written from the cell on", QStringLiteral("'hello'"), 1, 1,
        written(16, 5), with(before, 16, "hello"));
    row("a text in double quotes is written", QStringLiteral("\"hi\""), 16, 0, written(15, 2),
        with(before, 15, "hi"));
    row("a text needs no quote at its end", QStringLiteral("'hi"), 2, 0, written(1, 2),
        with(before, 1, "hi"));
    row("every quote of either kind at both ends goes", QStringLiteral("\"''a'b\"'\""), 1, 0,
        written(0, 3), with(before, 0, "a'b"));
    row("a text past the end makes the bytes longer", QStringLiteral("'hello'"), 6, 2,
        written(37, 5, 2), before.left(37) + "hello");
    row("a text up to the end does not make them longer", QStringLiteral("'abc'"), 6, 2,
        written(37, 3), before.left(37) + "abc");
    row("a lone quote writes nothing and counts as a commit", QStringLiteral("'"), 1, 0,
        written(0, 0), before);
    row("quotes alone write nothing and count as a commit", QStringLiteral("'\"\"'"), 8, 2,
        written(39, 0), before);
    row("Latin-1 characters are one byte each", QStringLiteral("'\u00e9\u00ff"), 1, 0,
        written(0, 2), with(before, 0, "\xe9\xff"));
    row("other characters are a question mark for each unit", QStringLiteral("'a\u20ac\U0001F600"),
        1, 0, written(0, 4), with(before, 0, "a???"));
    row("a text of digits stays a text", QStringLiteral("'41"), 1, 0, written(0, 2),
        with(before, 0, "41"));

    row("the address of a row edits the last byte above", QStringLiteral("41"), 0, 2,
        written(31, 1), with(before, 31, "A"));
    row("a text in an address goes on into its row", QStringLiteral("'ab"), 0, 1, written(15, 2),
        with(before, 15, "ab"));
    row("the last byte may be edited", QStringLiteral("41"), 8, 2, written(39, 1),
        with(before, 39, "A"));
    ignored("the first row's address takes nothing", QStringLiteral("41"), 0, 0);
    ignored("the characters take nothing", QStringLiteral("41"), charactersColumn, 0);
    ignored("the characters take no text", QStringLiteral("'41"), charactersColumn, 0);
    ignored("a cell past the end takes nothing", QStringLiteral("41"), 9, 2);
    ignored("a row past the end takes nothing", QStringLiteral("'abc"), 1, 3);
    ignored("a row far past the end takes nothing", QStringLiteral("41"), 1, 1LL << 59);
    ignored("an empty entry changes nothing", QString(), 1, 0);
}

void TestCellEdit::commit() {
    QFETCH(QString, entry);
    QFETCH(int, column);
    QFETCH(qint64, row);
    QFETCH(QByteArray, after);
    QByteArray bytes = image();
    const CellEditOutcome outcome = commitEntry(bytes, bytes.size(), entry, column, row);
    QTEST(outcome, "outcome");
    QCOMPARE(bytes, after);

    // A text that is shorter or longer than the bytes bounds the cells, or they bound themselves.
    QByteArray none;
    QCOMPARE(commitEntry(none, bytes.size(), entry, column, row), untouched);
    QCOMPARE(none, QByteArray());
    QCOMPARE(commitEntry(bytes, 0, entry, column, row), untouched);
    QCOMPARE(bytes, after);
}

void TestCellEdit::commit_writesEveryByteValueButZero() {
    for (int value = 0; value < 256; ++value) {
        QByteArray bytes("before");
        const auto outcome = commitEntry(bytes, 6, QString::number(value, 16), 3, 0);
        CellEdit expected = value == 0 ? rejected(2) : written(2, 1);
        expected.replaced = "f";
        QCOMPARE(outcome, CellEditOutcome(expected));
        QCOMPARE(bytes,
                 value == 0 ? QByteArray("before") : with("before", 2, QByteArray(1, char(value))));
    }
}

void TestCellEdit::commit_leavesAnotherReferenceToTheBytesAlone() {
    QByteArray bytes("abc");
    const QByteArray snapshot = bytes;
    commitEntry(bytes, 3, QStringLiteral("'xyz"), 1, 0);
    QCOMPARE(bytes, QByteArray("xyz"));
    QCOMPARE(snapshot, QByteArray("abc"));
}

void TestCellEdit::hexDigit_hasADigitUpToFifteen() {
    const QString digits = QStringLiteral("0123456789ABCDEF");
    for (quint16 value = 0; value <= 300; ++value)
        QCOMPARE(hexDigitFor(value), digits.mid(value, 1));
    QCOMPARE(hexDigitFor(0xffff), QString());
}

void TestCellEdit::hexValue_subtractsTheHighDigit() {
    for (quint64 value = 0; value <= 15; ++value)
        QCOMPARE(hexValue(value), QStringLiteral("0") + hexDigitFor(quint16(value)));
    QCOMPARE(hexValue(16), QStringLiteral("1F"));
    for (quint64 value = 17; value <= 255; ++value)
        QCOMPARE(hexValue(value), hexDigitFor(quint16(value / 16)));
    for (quint64 value = 256; value <= 300; ++value)
        QCOMPARE(hexValue(value), QString());
}

void TestCellEdit::hexValue_cutsTheUpperPartToSixteenBits() {
    // 0x100001 has the upper part 0x10000 and the rest 0xF0001: 0 and 1 in 16 bits.
    QCOMPARE(hexValue(0x100001), QStringLiteral("01"));
}

void TestCellEdit::edit_withoutMemoryLeavesTheBufferAlone_data() {
    QTest::addColumn<QString>("entry");
    QTest::addColumn<qint64>("row");
    QTest::newRow("a byte") << QStringLiteral("7A") << qint64(0);
    QTest::newRow("a text that lengthens the buffer")
        << QString(u'"' + QString(40, u'y')) << (qint64(128) << 20) / 16 - 1;
}

// Bytes that another buffer shares are copied before the first of them changes.
void TestCellEdit::edit_withoutMemoryLeavesTheBufferAlone() {
    if (!AddressSpaceLimit::works())
        QSKIP("the sanitizer needs the address space");
    QFETCH(const QString, entry);
    QFETCH(const qint64, row);
    const QByteArray original(qsizetype(128) << 20, 'x');
    QByteArray bytes = original;
    {
        const AddressSpaceLimit limit(rlim_t(32) << 20);
        QVERIFY_THROWS_EXCEPTION(std::bad_alloc, commitEntry(bytes, bytes.size(), entry, 1, row));
    }
    QVERIFY(bytes.constData() == original.constData());
    QCOMPARE(bytes.size(), original.size());
    QVERIFY(commitEntry(bytes, bytes.size(), entry, 1, row));
}

QTEST_GUILESS_MAIN(TestCellEdit)
#include "tst_celledit.moc"

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "inspect/BytePattern.h"

#include <QTest>

/// What a text asks for as a pattern of bytes.
class TestBytePattern : public QObject {
    Q_OBJECT

private slots:
    void patterns_data();
    void patterns();
    void troubles_data();
    void troubles();
    void length_isLimited();
    void eitherCase_isThatOfLatinLettersAlone();
    void hits_asksEveryByte_data();
    void hits_asksEveryByte();
    void telling_avoidsWhatChipsAreFullOf_data();
    void telling_avoidsWhatChipsAreFullOf();
};

namespace {

using Kind = PatternTrouble::Kind;
using Parse = PatternOutcome (*)(const QString &);

PatternOutcome text(const QString &typed) {
    return patternFromText(typed, MatchCase::Yes);
}

PatternOutcome anyCase(const QString &typed) {
    return patternFromText(typed, MatchCase::No);
}

PatternOutcome text16(const QString &typed) {
    return patternFromText16(typed, MatchCase::Yes);
}

PatternOutcome anyCase16(const QString &typed) {
    return patternFromText16(typed, MatchCase::No);
}

/// "41 6? .. 41~20": a byte, one of which only the high digit counts, any, and one where the bits
/// behind the tilde may be anything. What is no pattern is "kind: part".
QString picture(const PatternOutcome &outcome) {
    if (const PatternTrouble *trouble = outcome.failure())
        return QStringLiteral("%1: %2").arg(QString::number(int(trouble->kind)), trouble->part);
    const BytePattern &pattern = *outcome;
    const auto hex = [](int value) {
        return QStringLiteral("%1").arg(value, 2, 16, QChar(u'0')).toUpper();
    };
    QStringList bytes;
    for (qsizetype place = 0; place < pattern.size(); ++place) {
        const BytePattern::Byte byte = pattern[place];
        QString shown = hex(byte.value);
        if (byte.mask != 0xFF)
            shown += u'~' + hex(0xFF ^ byte.mask);
        bytes << shown;
    }
    return bytes.join(u' ');
}

QString pictureOfTrouble(Kind kind, const QString &part) {
    return picture(PatternTrouble{kind, part});
}

} // namespace

Q_DECLARE_METATYPE(Parse)

void TestBytePattern::patterns_data() {
    QTest::addColumn<Parse>("parse");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, Parse parse, const char16_t *typed,
                        const char *expected) {
        QTest::newRow(name) << parse << QStringView(typed).toString()
                            << QString::fromLatin1(expected);
    };
    row("no digits", patternFromHex, u"", "");
    row("blanks alone", patternFromHex, u" \t ", "");
    row("a byte", patternFromHex, u"4a", "4A");
    row("bytes in groups", patternFromHex, u"DE AD beef", "DE AD BE EF");
    row("commas and prefixes", patternFromHex, u"0x12, 0X34,0x5678", "12 34 56 78");
    row("blanks around", patternFromHex, u"  00 FF ", "00 FF");
    row("any digit", patternFromHex, u"DE ?? E? ?F", "DE 00~FF E0~0F 0F~F0");
    row("all of it anything", patternFromHex, u"0x????", "00~FF 00~FF");
    row("no text", text, u"", "");
    row("letters", text, u"aB1", "61 42 31");
    row("blanks count", text, u" a ", "20 61 20");
    row("beyond ASCII", text, u"\u00e9\u00ff", "E9 FF");
    row("either case", anyCase, u"aB1_", "41~20 42~20 31 5F");
    row("no letters beside letters", anyCase, u"@[`{", "40 5B 60 7B");
    row("either case beyond ASCII", anyCase, u"\u00e9\u00c9", "C9~20 C9~20");
    row("letters whose other case is far", anyCase, u"\u00df\u00ff\u00d7\u00f7\u00b5",
        "DF FF D7 F7 B5");
    row("two bytes a letter", text16, u"aB", "61 00 42 00");
    row("two bytes beyond Latin-1", text16, u"\u20ac", "AC 20");
    row("a pair", text16, u"\U0001F600", "3D D8 00 DE");
    row("two bytes in either case", anyCase16, u"aB", "41~20 00 42~20 00");
    row("either case is that of Latin letters", anyCase16, u"\u0430\u212a\u0178",
        "30 04 2A 21 78 01");
}

void TestBytePattern::patterns() {
    QFETCH(Parse, parse);
    QFETCH(QString, typed);
    QFETCH(QString, expected);
    QCOMPARE(picture(parse(typed)), expected);
}

void TestBytePattern::troubles_data() {
    QTest::addColumn<Parse>("parse");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("part");
    const auto row = [](const char *name, Parse parse, const char16_t *typed, Kind kind,
                        const char16_t *part) {
        QTest::newRow(name) << parse << QStringView(typed).toString() << int(kind)
                            << QStringView(part).toString();
    };
    row("half a byte", patternFromHex, u"F", Kind::HalfByte, u"F");
    row("half a byte behind bytes", patternFromHex, u"DE AD0 11", Kind::HalfByte, u"AD0");
    row("half of anything", patternFromHex, u"DE ?", Kind::HalfByte, u"?");
    row("half a byte with its prefix", patternFromHex, u"0x1", Kind::HalfByte, u"0x1");
    row("another letter", patternFromHex, u"DE G0", Kind::NoDigits, u"G0");
    row("a prefix alone", patternFromHex, u"0x", Kind::NoDigits, u"0x");
    row("a full-width digit", patternFromHex, u"\uff11\uff11", Kind::NoDigits, u"\uff11\uff11");
    row("another sign", patternFromHex, u"12;34", Kind::NoDigits, u"12;34");
    row("more than a byte", text, u"5 \u20ac", Kind::NoByte, u"\u20ac");
    row("a pair", anyCase, u"a\U0001F600", Kind::NoByte, u"\U0001F600");
}

void TestBytePattern::troubles() {
    QFETCH(Parse, parse);
    QFETCH(QString, typed);
    QFETCH(int, kind);
    QFETCH(QString, part);
    QCOMPARE(picture(parse(typed)), pictureOfTrouble(Kind(kind), part));
}

void TestBytePattern::length_isLimited() {
    const auto sizeOf = [](const PatternOutcome &outcome) { return outcome->size(); };
    const QString tooLong = pictureOfTrouble(Kind::TooLong, {});
    QCOMPARE(sizeOf(patternFromHex(QStringLiteral("A5 ").repeated(1024))), qsizetype(1024));
    QCOMPARE(picture(patternFromHex(QStringLiteral("A5 ").repeated(1025))), tooLong);
    QCOMPARE(sizeOf(text(QString(1024, u'a'))), qsizetype(1024));
    QCOMPARE(picture(text(QString(1025, u'a'))), tooLong);
    QCOMPARE(sizeOf(text16(QString(512, u'a'))), qsizetype(1024));
    QCOMPARE(picture(text16(QString(513, u'a'))), tooLong);
}

void TestBytePattern::eitherCase_isThatOfLatinLettersAlone() {
    for (int typed = 0; typed <= 0xFF; ++typed) {
        const QChar character{char16_t(typed)};
        const BytePattern pattern = *anyCase(QString(character));
        for (int byte = 0; byte <= 0xFF; ++byte) {
            const QChar other{char16_t(byte)};
            const bool alike =
                byte == typed || other == character.toLower() || other == character.toUpper();
            const auto shown = uchar(byte);
            QVERIFY2(pattern.hits(&shown) == alike,
                     qPrintable(QStringLiteral("%1 and %2").arg(typed).arg(byte)));
        }
    }
}

void TestBytePattern::hits_asksEveryByte_data() {
    QTest::addColumn<int>("size");
    for (const int size : {1, 2, 15, 16, 17, 31, 32, 40})
        QTest::addRow("%d", size) << size;
}

void TestBytePattern::hits_asksEveryByte() {
    QFETCH(int, size);
    QByteArray bytes(size, 'a');
    const BytePattern pattern = *text(QString::fromLatin1(bytes));
    const auto hits = [&] { return pattern.hits(reinterpret_cast<const uchar *>(bytes.data())); };
    QVERIFY(hits());
    for (char &byte : bytes) {
        byte = 'b';
        QVERIFY(!hits());
        byte = 'a';
    }
    QVERIFY(hits());
}

void TestBytePattern::telling_avoidsWhatChipsAreFullOf_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("one");
    QTest::addColumn<int>("other");
    QTest::newRow("a byte") << QStringLiteral("12") << 0 << 0;
    QTest::newRow("two") << QStringLiteral("12 34") << 0 << 1;
    QTest::newRow("fillers") << QStringLiteral("FF 00 12 FF 34") << 2 << 4;
    QTest::newRow("the same again") << QStringLiteral("12 12 12 34") << 0 << 3;
    QTest::newRow("all the same") << QStringLiteral("FF FF FF") << 0 << 1;
    QTest::newRow("half known") << QStringLiteral("?? 1? 22 ?? 33") << 2 << 4;
    QTest::newRow("nothing else") << QStringLiteral("?? 12") << 1 << 0;
}

void TestBytePattern::telling_avoidsWhatChipsAreFullOf() {
    QFETCH(QString, typed);
    QFETCH(int, one);
    QFETCH(int, other);
    const auto telling = patternFromHex(typed)->telling();
    QCOMPARE(QList<qsizetype>(telling.begin(), telling.end()), QList<qsizetype>({one, other}));
}

QTEST_GUILESS_MAIN(TestBytePattern)
#include "tst_bytepattern.moc"

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "image/NumberScanning.h"

#include <QTest>

#include <tuple>

class TestNumberScanning : public QObject {
    Q_OBJECT

private slots:
    void hexadecimal_data();
    void hexadecimal();
    void hexadecimal_everyByteValueInEitherCase();
    void hexadecimal_everyOtherAsciiCharacterEndsTheNumber();
    void decimal_data();
    void decimal();
    void rest_isWhatFollowsTheNumber_data();
    void rest_isWhatFollowsTheNumber();
};

namespace {

constexpr qint64 nothing = -1;
constexpr qint64 noNumber = std::numeric_limits<qint64>::min();

} // namespace

void TestNumberScanning::hexadecimal_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<qint64>("value");
    const auto row = [](const char *name, const char16_t *text, qint64 value) {
        QTest::newRow(name) << QStringView(text).toString() << value;
    };
    row("zero", u"0", 0);
    row("zeros", u"0000", 0);
    row("two digits", u"41", 0x41);
    row("decimal digits are hexadecimal", u"10", 0x10);
    row("lower case", u"ff", 0xFF);
    row("upper case", u"FF", 0xFF);
    row("mixed case", u"aBcDeF", 0xABCDEF);
    row("every digit", u"12345678", 0x12345678);
    row("prefix", u"0x7f", 0x7F);
    row("prefix in upper case", u"0X7F", 0x7F);
    row("prefix and zeros", u"0x00000010", 0x10);
    row("blank before", u" 7F", 0x7F);
    row("blanks before", u"    7F", 0x7F);
    row("tab before", u"\t7F", 0x7F);
    row("line feed before", u"\n7F", 0x7F);
    row("carriage return and line feed before", u"\r\n7F", 0x7F);
    row("mixed white space before", u" \t\r\n \v\f7F", 0x7F);
    row("no-break space before", u"\u00a07F", 0x7F);
    row("next line character before", u"\u00857F", 0x7F);
    row("line separator before", u"\u20287F", 0x7F);
    row("blank before the prefix", u" 0x10", 0x10);
    row("other letters behind", u"7fzz", 0x7F);
    row("the first other letter at once", u"1G", 1);
    row("blank inside", u"1 2", 1);
    row("blank behind", u"12 ", 0x12);
    row("point inside", u"1.5", 1);
    row("colon behind", u"100:", 0x100);
    row("prefix and other letters behind", u"0x10h", 0x10);
    row("h notation", u"10h", 0x10);
    row("second prefix", u"0x0x10", 0);
    row("prefix without digits", u"0x", 0);
    row("prefix and another letter", u"0xg", 0);
    row("prefix and blank", u"0x 10", 0);
    row("dollar notation", u"$10", nothing);
    row("x alone", u"x10", nothing);
    row("hash", u"#ff", nothing);
    row("minus", u"-1", nothing);
    row("plus", u"+1", nothing);
    row("other letters", u"zz", nothing);
    row("empty", u"", nothing);
    row("only white space", u" \t\r\n", nothing);
    row("quote behind a blank", u" 'A'", nothing);
    row("full-width digits", u"\uff11\uff12", nothing);
    row("full-width letters", u"\uff21", nothing);
    row("arabic digits behind", u"1\u0662", 1);
    row("zero-width space before", u"\u200b1", nothing);
    row("byte-order mark before", u"\ufeff1", nothing);
    row("largest", u"FFFFFFFF", 0xFFFFFFFF);
    row("one less", u"FFFFFFFE", 0xFFFFFFFE);
    row("largest with zeros before", u"0000000000FFFFFFFF", 0xFFFFFFFF);
    row("one too large", u"100000000", 0xFFFFFFFF);
    row("too large and smaller digits behind", u"1000000000", 0xFFFFFFFF);
    row("too large for 64 bits", u"123456789abcdef0123456789", 0xFFFFFFFF);
    row("too large with prefix", u"0xFFFFFFFFF", 0xFFFFFFFF);
    row("too large and other letters behind", u"FFFFFFFFFz", 0xFFFFFFFF);
    row("above a byte", u"100", 0x100);
    QTest::newRow("NUL inside") << QStringLiteral("1") + QChar(u'\0') + u'2' << qint64(1);
    QTest::newRow("a million digits") << QString(1'000'000, u'1') << qint64(0xFFFFFFFF);
    QTest::newRow("a million zeros") << QString(1'000'000, u'0') + u'1' << qint64(1);
}

void TestNumberScanning::hexadecimal() {
    QFETCH(QString, text);
    QFETCH(qint64, value);
    const std::optional<quint32> number = scanHexInt(text);
    QCOMPARE(number ? qint64(*number) : nothing, value);
}

void TestNumberScanning::hexadecimal_everyByteValueInEitherCase() {
    for (quint32 value = 0; value < 256; ++value) {
        const QString lower = QString::number(value, 16);
        QCOMPARE(scanHexInt(lower), std::optional(value));
        QCOMPARE(scanHexInt(lower.toUpper()), std::optional(value));
        QCOMPARE(scanHexInt(QStringLiteral("0x%1").arg(lower)), std::optional(value));
    }
}

void TestNumberScanning::hexadecimal_everyOtherAsciiCharacterEndsTheNumber() {
    const QString digits = QStringLiteral("0123456789abcdefABCDEF");
    for (char16_t unit = 0; unit < 128; ++unit)
        if (!digits.contains(QChar(unit)))
            QCOMPARE(scanHexInt(QStringLiteral("1") + QChar(unit) + u'2'), std::optional(1U));
}

void TestNumberScanning::decimal_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<qint64>("value");
    const auto row = [](const char *name, const char16_t *text, qint64 value) {
        QTest::newRow(name) << QStringView(text).toString() << value;
    };
    row("zero", u"0", 0);
    row("a size", u"64", 64);
    row("zeros before", u"0064", 64);
    row("plus", u"+64", 64);
    row("minus", u"-64", -64);
    row("minus zero", u"-0", 0);
    row("blank before", u" 64", 64);
    row("line end before", u"\r\n\t64", 64);
    row("blank behind the sign", u"- 64", noNumber);
    row("two signs", u"--64", noNumber);
    row("sign alone", u"-", noNumber);
    row("letters behind", u"64k", 64);
    row("hexadecimal letters behind", u"64F", 64);
    row("prefix", u"0x40", 0);
    row("point inside", u"1.5", 1);
    row("separators inside", u"1,024", 1);
    row("letters", u"abc", noNumber);
    row("empty", u"", noNumber);
    row("only white space", u" \n", noNumber);
    row("full-width digits", u"\uff11", noNumber);
    row("largest", u"2147483647", 2147483647);
    row("one too large", u"2147483648", 2147483647);
    row("far too large", u"99999999999999999999999999", 2147483647);
    row("smallest", u"-2147483648", -2147483648LL);
    row("one too small", u"-2147483649", -2147483648LL);
    row("far too small", u"-99999999999999999999999999", -2147483648LL);
}

void TestNumberScanning::decimal() {
    QFETCH(QString, text);
    QFETCH(qint64, value);
    const std::optional<qint32> number = scanInt(text);
    QCOMPARE(number ? qint64(*number) : noNumber, value);
}

void TestNumberScanning::rest_isWhatFollowsTheNumber_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("hexadecimalRest");
    QTest::addColumn<QString>("decimalRest");
    const auto row = [](const QString &text, const QString &hexadecimal, const QString &decimal) {
        QTest::addRow("\"%s\"", qPrintable(text)) << text << hexadecimal << decimal;
    };
    row({}, {}, {});
    row(QStringLiteral(" 12"), {}, {});
    row(QStringLiteral("12 "), QStringLiteral(" "), QStringLiteral(" "));
    row(QStringLiteral("1Fk"), QStringLiteral("k"), QStringLiteral("Fk"));
    row(QStringLiteral("0x10:"), QStringLiteral(":"), QStringLiteral("x10:"));
    row(QStringLiteral("0xk"), QStringLiteral("xk"), QStringLiteral("xk"));
    row(QStringLiteral("99999999999k"), QStringLiteral("k"), QStringLiteral("k"));
}

void TestNumberScanning::rest_isWhatFollowsTheNumber() {
    QFETCH(QString, text);
    QStringView rest;
    std::ignore = scanHexInt(text, &rest);
    QTEST(rest.toString(), "hexadecimalRest");
    std::ignore = scanInt(text, &rest);
    QTEST(rest.toString(), "decimalRest");
}

QTEST_GUILESS_MAIN(TestNumberScanning)
#include "tst_numberscanning.moc"

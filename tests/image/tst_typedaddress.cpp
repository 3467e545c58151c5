// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "image/TypedAddress.h"

#include <QTest>

#include <limits>

/// What a text means as an address.
class TestTypedAddress : public QObject {
    Q_OBJECT

private slots:
    void addresses_data();
    void addresses();
    void noAddress_data();
    void noAddress();
    void relative_endsAtZeroAndAt64Bits();
};

namespace {

constexpr quint64 most = std::numeric_limits<quint64>::max();
constexpr quint64 cursor = 0x100;

} // namespace

void TestTypedAddress::addresses_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<quint64>("offset"); // with the cursor at 0x100
    const auto row = [](const char *text, quint64 offset) {
        QTest::newRow(text) << QString::fromLatin1(text) << offset;
    };
    row("0", 0);
    row("10", 0x10);
    row("abCD", 0xABCD);
    row("0x1f", 0x1F);
    row("0X1F", 0x1F);
    row(" 7 ", 7);
    row("0d1024", 0xD1024);
    row("1024d", 0x1024D);
    row("FFFFFFFFFFFFFFFF", most);
    row("#0", 0);
    row("#1024", 1024);
    row("#010", 10);
    row("#18446744073709551615", most);
    row("+10", 0x110);
    row("-10", 0xF0);
    row("+0x10", 0x110);
    row("+#10", 0x10A);
    row("-#256", 0);
    row("+0", 0x100);
    row("-0", 0x100);
}

void TestTypedAddress::addresses() {
    QFETCH(QString, text);
    QFETCH(quint64, offset);
    const auto address = typedAddress(text);
    QVERIFY(address);
    QCOMPARE(address->offset(cursor), std::optional(offset));
}

void TestTypedAddress::noAddress_data() {
    QTest::addColumn<QString>("text");
    for (const char *text : {"",
                             " ",
                             "end",
                             "g",
                             "1 0",
                             "0x",
                             "#",
                             "#ff",
                             "#0x10",
                             "# 1",
                             "##1",
                             "+",
                             "-",
                             "++1",
                             "+-1",
                             "--1",
                             "#+1",
                             "#-1",
                             "0x-1",
                             "1h",
                             "1.5",
                             "10000000000000000",
                             "#18446744073709551616"})
        QTest::newRow(text) << QString::fromLatin1(text);
    QTest::newRow("full-width digits") << QStringLiteral("\uff11");
}

void TestTypedAddress::noAddress() {
    QFETCH(QString, text);
    QVERIFY(!typedAddress(text));
}

void TestTypedAddress::relative_endsAtZeroAndAt64Bits() {
    const auto forward = typedAddress(u"+10");
    const auto back = typedAddress(u"-10");
    QCOMPARE(back->offset(0x10), std::optional<quint64>(0));
    QCOMPARE(back->offset(0xF), std::nullopt);
    QCOMPARE(forward->offset(most - 0x10), std::optional(most));
    QCOMPARE(forward->offset(most - 0xF), std::nullopt);
}

QTEST_GUILESS_MAIN(TestTypedAddress)
#include "tst_typedaddress.moc"

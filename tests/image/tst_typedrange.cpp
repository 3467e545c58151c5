// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "image/TypedRange.h"

#include <QTest>

class TestTypedRange : public QObject {
    Q_OBJECT

private slots:
    void ranges_data();
    void ranges();
    void troubles_data();
    void troubles();
    void emptyImage_hasNoBytes();
};

namespace {

constexpr auto address = TypedRange::Until::Address;
constexpr auto length = TypedRange::Until::Length;

} // namespace

// Among 0x200 bytes, with the cursor at 0x80.
void TestTypedRange::ranges_data() {
    QTest::addColumn<QString>("first");
    QTest::addColumn<TypedRange::Until>("until");
    QTest::addColumn<QString>("end");
    QTest::addColumn<qint64>("offset");
    QTest::addColumn<qint64>("bytes");
    const auto row = [](const char *name, const char *first, TypedRange::Until until,
                        const char *end, QPair<qint64, qint64> expected) {
        QTest::newRow(name) << QString::fromLatin1(first) << until << QString::fromLatin1(end)
                            << expected.first << expected.second;
    };
    row("to an address", "10", address, "1F", {0x10, 0x10});
    row("one byte", "0x10", address, "10", {0x10, 1});
    row("to the last byte", "0", address, "1ff", {0, 0x200});
    row("decimal", "#16", address, "#31", {0x10, 0x10});
    row("from the cursor", "+0", address, "+10", {0x80, 0x11});
    row("to the cursor", "-10", address, "-0", {0x70, 0x11});
    row("a length", "10", length, "20", {0x10, 0x20});
    row("a decimal length", "10", length, " #20 ", {0x10, 20});
    row("a length to the last byte", "100", length, "100", {0x100, 0x100});
}

void TestTypedRange::ranges() {
    QFETCH(QString, first);
    QFETCH(TypedRange::Until, until);
    QFETCH(QString, end);
    QFETCH(qint64, offset);
    QFETCH(qint64, bytes);
    const auto outcome = bytesOf({first, end, until}, 0x80, 0x200);
    QVERIFY(outcome);
    QCOMPARE(outcome->offset, offset);
    QCOMPARE(outcome->length, bytes);
}

void TestTypedRange::troubles_data() {
    QTest::addColumn<QString>("first");
    QTest::addColumn<TypedRange::Until>("until");
    QTest::addColumn<QString>("end");
    QTest::addColumn<RangeTrouble>("trouble");
    const auto row = [](const char *name, const char *first, TypedRange::Until until,
                        const char *end, RangeTrouble trouble) {
        QTest::newRow(name) << QString::fromLatin1(first) << until << QString::fromLatin1(end)
                            << trouble;
    };
    row("nothing typed", "", address, "", RangeTrouble::FirstUnread);
    row("no address", "xyz", address, "10", RangeTrouble::FirstUnread);
    row("no last address", "0", address, "1G", RangeTrouble::LastUnread);
    row("no length", "0", length, "", RangeTrouble::LengthUnread);
    row("a length from the cursor", "0", length, "+10", RangeTrouble::LengthUnread);
    row("behind the last byte", "200", address, "201", RangeTrouble::FirstBeyond);
    row("before the first byte", "-81", address, "10", RangeTrouble::FirstBeyond);
    row("to behind the last byte", "0", address, "200", RangeTrouble::LastBeyond);
    row("far away", "0", address, "FFFFFFFFFFFFFFFF", RangeTrouble::LastBeyond);
    row("backwards", "10", address, "F", RangeTrouble::LastBeforeFirst);
    row("too long", "100", length, "101", RangeTrouble::LengthBeyond);
    row("as long as can be", "100", length, "FFFFFFFFFFFFFFFF", RangeTrouble::LengthBeyond);
    row("nothing", "100", length, "0", RangeTrouble::LengthZero);
}

void TestTypedRange::troubles() {
    QFETCH(QString, first);
    QFETCH(TypedRange::Until, until);
    QFETCH(QString, end);
    QFETCH(RangeTrouble, trouble);
    const auto outcome = bytesOf({first, end, until}, 0x80, 0x200);
    QVERIFY(!outcome);
    QCOMPARE(*outcome.failure(), trouble);
}

void TestTypedRange::emptyImage_hasNoBytes() {
    const auto outcome = bytesOf({QStringLiteral("0"), QStringLiteral("0"), address}, 0, 0);
    QVERIFY(!outcome);
    QCOMPARE(*outcome.failure(), RangeTrouble::NoBytes);
}

QTEST_APPLESS_MAIN(TestTypedRange)
#include "tst_typedrange.moc"

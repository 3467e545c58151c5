// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "exchange/RecordPart.h"

#include "support/AddressSpaceLimit.h"

#include <QTest>

namespace {

/// A byte at 0 and one 64 KiB before 3 MiB.
const QByteArray farApart = ":0100000001FE\n:02000004002FCB\n:0100000002FD\n:00000001FF\n";
constexpr qint64 farAddress = 0x2F0000;

} // namespace

class TestRecordPart : public QObject {
    Q_OBJECT

private slots:
    void text_isReadAtOnce();
    void whatMustBeAsked_isNotRead_data();
    void whatMustBeAsked_isNotRead();
    void withoutMemory_isNoEnd();
};

void TestRecordPart::text_isReadAtOnce() {
    const auto bytes = bytesOfRecordPart(farApart, RecordFormat::IntelHex, 0xAA);
    QVERIFY(bool(bytes));
    const QByteArray &image = **bytes;
    QCOMPARE(image.size(), farAddress + 1);
    QCOMPARE(image.at(0), '\1');
    QCOMPARE(image.at(1), '\xAA');
    QCOMPARE(image.at(farAddress), '\2');
}

void TestRecordPart::whatMustBeAsked_isNotRead_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("a wrong checksum") << QByteArray(":0100000001FF\n:00000001FF\n");
    QTest::newRow("no bytes") << QByteArray(":00000001FF\n");
    QTest::newRow("too large") << QByteArray(
        ":0100000001FE\n:020000040040BA\n:0100000002FD\n:00000001FF\n");
    QTest::newRow("too long") << QByteArray(":0100000001FE\n:00000001FF\n") +
                                     QByteArray(largestPartText, '\n');
}

void TestRecordPart::whatMustBeAsked_isNotRead() {
    QFETCH(QByteArray, text);
    const auto bytes = bytesOfRecordPart(text, RecordFormat::IntelHex, 0xFF);
    QVERIFY(bytes.failure());
    QCOMPARE(*bytes.failure(), PartTrouble::NeedsUser);
}

void TestRecordPart::withoutMemory_isNoEnd() {
    if (!AddressSpaceLimit::works())
        QSKIP("the sanitizer needs the address space");
    const AddressSpaceLimit limit(0);
    const auto bytes = bytesOfRecordPart(farApart, RecordFormat::IntelHex, 0xFF);
    QVERIFY(bytes.failure());
    QCOMPARE(*bytes.failure(), PartTrouble::NoMemory);
}

QTEST_GUILESS_MAIN(TestRecordPart)
#include "tst_recordpart.moc"

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "blocks/PasteWords.h"

#include <QTest>

using Kind = PasteTrouble::Kind;

/// Why a text was not understood, as it is said.
class TestPasteWords : public QObject {
    Q_OBJECT

private slots:
    void words_data();
    void words();
    void everyTrouble_hasItsOwn();
};

void TestPasteWords::words_data() {
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<QString>("expected");
    const auto row = [](Kind kind, const char *words) {
        QTest::newRow(words) << kind << QString::fromUtf8(words);
    };
    row(Kind::NoBytes, "There are no bytes in it.");
    row(Kind::TooMany, "These are more than 1 GiB.");
    row(Kind::NoDigit, "Line 1,200, character 3: \u201c%2\u201d is no byte in hexadecimal digits.");
    row(Kind::OddDigit, "Line 1,200, character 3: \u201c%2\u201d has an odd number of digits.");
    row(Kind::NoValue, "Line 1,200, character 3: \u201c%2\u201d is no byte.");
    row(Kind::NoEnd, "Line 1,200, character 3: The end is missing.");
    row(Kind::BehindEnd, "Line 1,200, character 3: There is more behind the end.");
    row(Kind::NoRow, "Line 1,200, character 3: This is no row of bytes.");
    row(Kind::RowsApart, "Line 1,200, character 3: The row at %2 does not follow the one before.");
    row(Kind::NoCharacter, "Line 1,200, character 3: \u201c%2\u201d takes more than a byte.");
}

void TestPasteWords::words() {
    QFETCH(const Kind, kind);
    QTEST(pasteTroubleWords({kind, 1200, 3, QStringLiteral("%2")}), "expected");
}

void TestPasteWords::everyTrouble_hasItsOwn() {
    QStringList all;
    for (int kind = 0; kind <= int(Kind::TooMany); ++kind)
        all << pasteTroubleWords({Kind(kind), 1, 1, {}});
    QVERIFY(!all.contains(QString()));
    QCOMPARE(all.removeDuplicates(), 0);
}

QTEST_GUILESS_MAIN(TestPasteWords)
#include "tst_pastewords.moc"

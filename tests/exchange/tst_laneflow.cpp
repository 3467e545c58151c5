// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "exchange/LaneFlow.h"

#include "exchange/OrderWords.h"

#include <QTest>

/// Which byte goes where, in words.
class TestLaneFlow : public QObject {
    Q_OBJECT

private slots:
    void words_tellOfEveryByte_data();
    void words_tellOfEveryByte();
    void bytes_haveNames();
};

Q_DECLARE_METATYPE(Arrangement)

void TestLaneFlow::words_tellOfEveryByte_data() {
    QTest::addColumn<Arrangement>("arrangement");
    QTest::addColumn<QString>("words");
    const auto row = [](const char *name, const Arrangement &arrangement, const char *words) {
        QTest::newRow(name) << arrangement << QString::fromLatin1(words);
    };
    row("nothing", {},
        "The image begins with the bytes 0 1 2 3 4 5 6 7. They become 0 1 2 3 4 5 6 7.");
    row("halves", {{}, 1, false, {2, 1}},
        "The image begins with the bytes 0 1 2 3 4 5 6 7. Of the parts, even has 0 2 4 6; odd has "
        "1 3 5 7.");
    row("swapped quarters", {{}, 2, false, {4, 1}},
        "The image begins with the bytes 0 1 2 3 4 5 6 7. Of the parts, 0 has 1 5; 1 has 0 4; 2 "
        "has 3 7; 3 has 2 6.");
    row("two of 16 bits", {{}, 1, false, {2, 2}},
        "The image begins with the bytes 0 1 2 3 4 5 6 7. Of the parts, 0 has 0 1 4 5; 1 has 2 3 6 "
        "7.");
    row("joined", {{2, 1}},
        "Of the parts, even has A0 A1 A2 A3; odd has B0 B1 B2 B3. They become A0 B0 A1 B1 A2 B2 A3 "
        "B3.");
    row("joined of four, turned round", {{4, 1}, 4},
        "Of the parts, 0 has A0 A1; 1 has B0 B1; 2 has C0 C1; 3 has D0 D1. They become D0 C0 B0 A0 "
        "D1 C1 B1 A1.");
    row("bits and repeats", {{}, 1, true, {}, 1024},
        "The image begins with the bytes 0 1 2 3 4 5 6 7. They become 0 1 2 3 4 5 6 7. The bits of "
        "each byte are turned round. All of it is repeated until the chip is full.");
}

void TestLaneFlow::words_tellOfEveryByte() {
    QFETCH(Arrangement, arrangement);
    const Lanes lanes = arrangement.joined.parts > 1 ? arrangement.joined : arrangement.split;
    QTEST(flowWords(arrangement, partNames(lanes)), "words");
}

void TestLaneFlow::bytes_haveNames() {
    QCOMPARE(byteName(flowOf({}), 5), QStringLiteral("5"));
    QCOMPARE(byteName(flowOf({{2, 1}}), 5), QStringLiteral("B1"));
    QCOMPARE(byteName(flowOf({{4, 1}}), 7), QStringLiteral("D1"));
}

QTEST_GUILESS_MAIN(TestLaneFlow)
#include "tst_laneflow.moc"

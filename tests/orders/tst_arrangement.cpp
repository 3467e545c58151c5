// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "orders/Arrangement.h"

#include "files/ByteBuffer.h"

#include <QTest>

/// What can be arranged, and what not.
class TestArrangement : public QObject {
    Q_OBJECT

private slots:
    void trouble_isFound_data();
    void trouble_isFound();
    void nothingToDo_isKnown();
};

using Why = std::optional<NoArrangement>;
Q_DECLARE_METATYPE(Arrangement)
Q_DECLARE_METATYPE(Why)

namespace {

constexpr Lanes halves{2, 1};
constexpr Lanes quarters{4, 1};
constexpr Lanes wideHalves{2, 2};

} // namespace

void TestArrangement::trouble_isFound_data() {
    QTest::addColumn<Arrangement>("arrangement");
    QTest::addColumn<QList<qint64>>("lengths");
    QTest::addColumn<Why>("why");
    const auto row = [](const char *name, const Arrangement &arrangement,
                        const QList<qint64> &lengths,
                        Why why) { QTest::newRow(name) << arrangement << lengths << why; };
    row("no bytes", {}, {0}, {});
    row("one part", {}, {7}, {});
    row("nothing to join", {halves}, {}, NoArrangement::PartsMissing);
    row("one of two", {halves}, {8}, NoArrangement::PartsMissing);
    row("three of four", {quarters}, {8, 8, 8}, NoArrangement::PartsMissing);
    row("two of one", {}, {8, 8}, NoArrangement::PartsMissing);
    row("two", {halves}, {7, 7}, {});
    row("four", {quarters}, {7, 7, 7, 7}, {});
    row("different halves", {halves}, {8, 7}, NoArrangement::DifferentLengths);
    row("different quarters", {quarters}, {8, 8, 8, 9}, NoArrangement::DifferentLengths);
    row("half a unit", {wideHalves}, {7, 7}, NoArrangement::NoWholeUnits);
    row("whole units", {wideHalves}, {6, 6}, {});
    row("swap of an odd number", {{}, 2}, {7}, NoArrangement::NoWholeGroups);
    row("swap of pairs", {{}, 2}, {6}, {});
    row("swap of pairs in fours", {{}, 4}, {6}, NoArrangement::NoWholeGroups);
    row("swap of fours", {{}, 4}, {8}, {});
    row("swap of what is joined", {halves, 4}, {2, 2}, {});
    row("split of an odd number", {{}, 1, false, halves}, {7}, NoArrangement::NoEqualParts);
    row("split in halves", {{}, 1, false, halves}, {6}, {});
    row("split in quarters", {{}, 1, false, quarters}, {6}, NoArrangement::NoEqualParts);
    row("split of half a unit", {{}, 1, false, wideHalves}, {6}, NoArrangement::NoEqualParts);
    row("repeated once", {{}, 1, false, {}, 8}, {8}, {});
    row("repeated", {{}, 1, false, {}, 24}, {8}, {});
    row("repeated in part", {{}, 1, false, {}, 20}, {8}, NoArrangement::NoWholeRepeats);
    row("repeated to be shorter", {{}, 1, false, {}, 4}, {8}, NoArrangement::NoWholeRepeats);
    row("nothing to repeat", {{}, 1, false, {}, 8}, {0}, NoArrangement::NoWholeRepeats);
    row("each half repeated", {{}, 1, false, halves, 8}, {8}, {});
    row("the largest", {}, {largestImage}, {});
    row("larger", {}, {largestImage + 1}, NoArrangement::TooLarge);
    row("larger together", {halves}, {largestImage, largestImage}, NoArrangement::TooLarge);
    row("larger by repeats", {{}, 1, false, halves, largestImage}, {8}, NoArrangement::TooLarge);
}

void TestArrangement::trouble_isFound() {
    QFETCH(Arrangement, arrangement);
    QFETCH(QList<qint64>, lengths);
    QFETCH(Why, why);
    const auto arranged = canBeArranged(arrangement, lengths);
    const NoArrangement *failure = arranged.failure();
    QVERIFY((failure ? Why(*failure) : Why()) == why);
}

void TestArrangement::nothingToDo_isKnown() {
    QVERIFY(Arrangement().changesNothing());
    for (const Arrangement &arrangement :
         {Arrangement{halves}, Arrangement{{}, 2}, Arrangement{{}, 1, true},
          Arrangement{{}, 1, false, halves}, Arrangement{{}, 1, false, {}, 1024}})
        QVERIFY(!arrangement.changesNothing());
}

QTEST_GUILESS_MAIN(TestArrangement)
#include "tst_arrangement.moc"

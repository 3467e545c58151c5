// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/PinFailures.h"

#include "language/LogicReport.h"
#include "support/FileHelpers.h"

#include <QTest>

class TestPinFailures : public QObject {
    Q_OBJECT

private slots:
    void report_namesThePins_data();
    void report_namesThePins();
    void capture_namesItsPin();
    void sentence_namesThePins_data();
    void sentence_namesThePins();
    void sentence_isBounded();
    void sentences_ofEachPin_data();
    void sentences_ofEachPin();
    void sentences_areBounded();
};

namespace {

/// Every failure as "pin/vector".
QString pictureOf(const QList<PinFailure> &failures) {
    QStringList all;
    for (const PinFailure failure : failures)
        all.append(QStringLiteral("%1/%2").arg(failure.pin).arg(failure.vector));
    return all.join(u' ');
}

/// \a pins of \a vectors, all of them failed.
QList<PinFailure> block(const QList<int> &pins, int vectors) {
    QList<PinFailure> failures;
    for (int vector = 0; vector < vectors; ++vector)
        for (const int pin : pins)
            failures.append({pin, vector});
    return failures;
}

/// The pins 1 to \a count, failed in the first vector.
QList<PinFailure> pinsUpTo(int count) {
    QList<PinFailure> failures;
    for (int pin = 1; pin <= count; ++pin)
        failures.append({pin, 0});
    return failures;
}

/// \a pin in every other one of \a vectors.
QList<PinFailure> everyOther(int pin, int vectors) {
    QList<PinFailure> failures;
    for (int vector = 0; vector < vectors; vector += 2)
        failures.append({pin, vector});
    return failures;
}

} // namespace

void TestPinFailures::report_namesThePins_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("picture");
    const auto row = [](const char *name, const char *text, const char *picture) {
        QTest::newRow(name) << QString::fromLatin1(text) << QString::fromLatin1(picture);
    };
    row("nothing", "", "");
    row("a good chip", "      1  2  \n0000: \x1b[0m0  \x1b[0mH  \x1b[0m\n", "");
    row("a colour and a sign", "      1  2  \n0000: \x1b[0m0  \x1b[0;91mH- \x1b[0m\n", "2/0");
    row("a sign alone", "      1  2  \n0000: 0  H- \n", "2/0");
    row("several lines", "      1  2  \n0000: 0- H  \n0001: 1  L- \n0002: 1- L- \n",
        "1/0 2/1 1/2 2/2");
    row("the header gives the pin", "      5  40  \n0000: 0- H  \n0041: 1  L- \n", "5/0 40/41");
    row("a header that is no number", "      VCC  2  \n0003: 0- H- \n", "1/3 2/3");
    row("a line that has lost its number", "      1  2  \n0000: 0  H  \n0x: 0- H  \n", "1/1");
    row("fields beyond the header", "      1  \n0000: 0  H- L- \n", "");
    row("no header", "0000: 0- H- \n", "");
    row("a lone sign is a level", "      1  2  \n0000: -  H  \n", "");
}

void TestPinFailures::report_namesThePins() {
    QFETCH(QString, text);
    QTEST(pictureOf(pinFailures(parseLogicReport(text))), "picture");
}

void TestPinFailures::capture_namesItsPin() {
    const QByteArray table =
        readWholeFile(QStringLiteral(TOOL_CAPTURES "/logic-7400-one-error.stdout"));
    const LogicReport report = parseLogicReport(QString::fromUtf8(table));
    QCOMPARE(wordsFor(pinFailures(report), report.headers->size()),
             QStringLiteral("Failed: pin 3 in vector 3."));
    QCOMPARE(sentencesFor(pinFailures(report)),
             QStringList(QStringLiteral("Pin 3, vector 3: low expected")));
}

void TestPinFailures::sentence_namesThePins_data() {
    QTest::addColumn<QList<PinFailure>>("failures");
    QTest::addColumn<int>("pins");
    QTest::addColumn<QString>("sentence");
    const auto row = [](const char *name, const QList<PinFailure> &failures, int pins,
                        const char *sentence) {
        QTest::newRow(name) << failures << pins << QString::fromLatin1(sentence);
    };
    row("none", {}, 40, "");
    row("one", {{18, 3}}, 17, "Failed: pin 18 in vector 3.");
    row("a pin beyond the grid", {{18, 3}}, 18,
        "Failed: pin 18 in vector 3. The table has room for pins 1 to 17 only.");
    row("pins in their order", {{18, 3}, {2, 4}}, 14,
        "Failed: pin 2 in vector 4; pin 18 in vector 3.");
    row("a pin in two vectors", {{3, 1}, {3, 3}}, 14, "Failed: pin 3 in vectors 1 and 3.");
    row("a pin in three vectors", {{3, 1}, {3, 3}, {3, 5}}, 14,
        "Failed: pin 3 in vectors 1, 3 and 5.");
    row("a pin in two neighbours", {{3, 1}, {3, 2}}, 14, "Failed: pin 3 in vectors 1 and 2.");
    row("a pin in a run of vectors", block({3}, 5), 14, "Failed: pin 3 in vectors 0 to 4.");
    row("a run and one more", block({3}, 6) + QList<PinFailure>{{3, 7}}, 14,
        "Failed: pin 3 in vectors 0 to 5 and 7.");
    row("runs and pairs",
        block({3}, 3) + QList<PinFailure>{{3, 5}, {3, 6}, {3, 8}, {3, 9}, {3, 10}}, 14,
        "Failed: pin 3 in vectors 0 to 2, 5, 6 and 8 to 10.");
    row("lines out of order, and one twice", {{3, 2}, {3, 0}, {3, 1}, {3, 2}}, 14,
        "Failed: pin 3 in vectors 0 to 2.");
    row("pins that fail alike", block({2, 18, 40}, 20), 20,
        "Failed: pins 2, 18 and 40 in vectors 0 to 19. The table has room for pins 1 to 17 only.");
    row("pins that fail alike, and another", block({1, 2, 3, 4}, 30) + QList<PinFailure>{{5, 29}},
        14, "Failed: pins 1 to 4 in vectors 0 to 29; pin 5 in vector 29.");
    row("as many vectors as are named", everyOther(3, 24), 14,
        "Failed: pin 3 in vectors 0, 2, 4, 6, 8, 10, 12, 14, 16, 18, 20 and 22.");
    row("more vectors than are named", everyOther(3, 200), 14,
        "Failed: pin 3 in vectors 0, 2, 4, 6, 8, 10, 12, 14, 16, 18, 20, 22 and 88 more.");
    row("a pin more than are named", pinsUpTo(41), 41,
        "Failed: pins 1 to 40 in vector 0; and one more pin. The table has room for pins 1 to 17 "
        "only.");
    row("more pins than are named", QList<PinFailure>{{1, 1}} + pinsUpTo(52), 52,
        "Failed: pin 1 in vectors 0 and 1; pins 2 to 40 in vector 0; and 12 more pins. The table "
        "has room for pins 1 to 17 only.");
}

void TestPinFailures::sentence_namesThePins() {
    QFETCH(QList<PinFailure>, failures);
    QFETCH(int, pins);
    QTEST(wordsFor(failures, pins), "sentence");
}

// Each pin fails in vectors of its own.
void TestPinFailures::sentence_isBounded() {
    constexpr int count = 200;
    QList<PinFailure> failures;
    for (int pin = 1; pin <= count; ++pin)
        failures.append(everyOther(pin, count * pin));
    const QString words = wordsFor(failures, count);
    QVERIFY2(words.contains(u"; and 160 more pins."), qPrintable(words));
    QVERIFY(words.size() < 5000);
}

void TestPinFailures::sentences_ofEachPin_data() {
    QTest::addColumn<QList<PinFailure>>("failures");
    QTest::addColumn<QString>("sentences");
    const auto row = [](const char *name, const QList<PinFailure> &failures,
                        const char *sentences) {
        QTest::newRow(name) << failures << QString::fromLatin1(sentences);
    };
    row("none", {}, "");
    row("low", {{3, 1, u'L'}}, "Pin 3, vector 1: low expected");
    row("high", {{3, 1, u'H'}}, "Pin 3, vector 1: high expected");
    row("off", {{3, 1, u'Z'}}, "Pin 3, vector 1: high impedance expected");
    row("another letter", {{3, 1, u'X'}}, "Pin 3, vector 1: X expected");
    row("no letter", {{3, 1}}, "Pin 3, vector 1");
    row("two vectors", {{3, 5, u'L'}, {3, 1, u'L'}}, "Pin 3, vectors 1 and 5: low expected");
    row("two levels", {{3, 1, u'L'}, {3, 0, u'H'}, {3, 2, u'L'}},
        "Pin 3, vector 0: high expected; vectors 1 and 2: low expected");
    row("two levels in vectors of one number", {{3, 0, u'H'}, {3, 0, u'L'}},
        "Pin 3, vector 0: low expected; vector 0: high expected");
    row("pins in their order", {{11, 0, u'L'}, {2, 1, u'H'}},
        "Pin 2, vector 1: high expected\nPin 11, vector 0: low expected");
    row("a long run", block({3}, 200), "Pin 3, vectors 0 to 199");
    row("as many as are named", everyOther(3, 24),
        "Pin 3, vectors 0, 2, 4, 6, 8, 10, 12, 14, 16, 18, 20 and 22");
    row("more than are named", everyOther(3, 48),
        "Pin 3, vectors 0, 2, 4, 6, 8, 10, 12, 14, 16, 18, 20, 22 and 12 more");
}

void TestPinFailures::sentences_ofEachPin() {
    QFETCH(QList<PinFailure>, failures);
    QTEST(sentencesFor(failures).join(u'\n'), "sentences");
}

void TestPinFailures::sentences_areBounded() {
    constexpr int pins = 1000;
    QList<PinFailure> failures;
    for (int pin = 1; pin <= pins; ++pin)
        failures.append(everyOther(pin, pins));
    const QStringList sentences = sentencesFor(failures);
    QCOMPARE(sentences.size(), 41);
    QCOMPARE(sentences.last(), QStringLiteral("And 960 more pins"));
    QVERIFY(sentences.join(u'\n').size() < 10000);
}

QTEST_GUILESS_MAIN(TestPinFailures)
#include "tst_pin_failures.moc"

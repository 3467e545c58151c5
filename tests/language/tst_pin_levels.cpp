// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/LogicField.h"
#include "language/PinLevels.h"

#include "language/LogicReport.h"
#include "support/FileHelpers.h"
#include "support/PinPicture.h"

#include <QTest>

/// What a report says of each pin, as values.
class TestPinLevels : public QObject {
    Q_OBJECT

private slots:
    void fields_haveALetterAndAMark_data();
    void fields_haveALetterAndAMark();
    void capture_hasTheWorstOfEachPin_data();
    void capture_hasTheWorstOfEachPin();
    void capture_hasThePinsOfAVector();
    void pins_areNumberedByTheirHeaders();
    void shortLine_leavesPinsUnchecked();
    void packages_haveTwoEqualRowsOfPins_data();
    void packages_haveTwoEqualRowsOfPins();
    void legend_explainsEveryLetter();
    void plainTable_isTheCaptureWithoutColours();
};

namespace {

LogicReport captured(const QString &name) {
    return parseLogicReport(
        QString::fromUtf8(readWholeFile(QStringLiteral(TOOL_CAPTURES "/") + name)));
}

} // namespace

void TestPinLevels::fields_haveALetterAndAMark_data() {
    QTest::addColumn<QString>("field");
    QTest::addColumn<QChar>("letter");
    QTest::addColumn<bool>("failed");
    const auto row = [](const char *name, const char *field, QChar letter, bool failed) {
        QTest::newRow(name) << QString::fromLatin1(field) << letter << failed;
    };
    row("good", "\x1b[0mH", u'H', false);
    row("bad", "\x1b[0;91mL-", u'L', true);
    row("no colour", "Z", u'Z', false);
    row("a sign alone", "1-", u'1', true);
    row("a colour behind", "V\x1b[0m", u'V', false);
    row("a colour alone", "\x1b[0m", QChar(), false);
    row("a broken colour", "\x1b", QChar(), false);
    row("no letter of the tool", "q-", QChar(), true);
    row("a lone sign", "-", QChar(), false);
    row("nothing", "", QChar(), false);
}

void TestPinLevels::fields_haveALetterAndAMark() {
    QFETCH(QString, field);
    QTEST(pinLevel(field).letter, "letter");
    QTEST(pinLevel(field).failed, "failed");
}

void TestPinLevels::capture_hasTheWorstOfEachPin_data() {
    QTest::addColumn<QString>("capture");
    QTest::addColumn<QString>("picture");
    QTest::newRow("good") << QStringLiteral("logic-7400-ok.stdout")
                          << QStringLiteral("1 2 3+ 4 5 6+ 7G 8+ 9 10 11+ 12 13 14V");
    QTest::newRow("one error") << QStringLiteral("logic-7400-one-error.stdout")
                               << QStringLiteral("1 2 3- 4 5 6+ 7G 8+ 9 10 11+ 12 13 14V");
}

void TestPinLevels::capture_hasTheWorstOfEachPin() {
    QFETCH(QString, capture);
    QTEST(pictureOf(worstOfPins(captured(capture))), "picture");
}

void TestPinLevels::capture_hasThePinsOfAVector() {
    const LogicReport report = captured(QStringLiteral("logic-7400-one-error.stdout"));
    QCOMPARE(pictureOf(pinsInVector(report, 2)),
             QStringLiteral("10 21 3H+ 40 51 6H+ 7G 8H+ 90 101 11H+ 120 131 14V"));
    QCOMPARE(pictureOf(pinsInVector(report, 3)),
             QStringLiteral("11 21 3L- 41 51 6L+ 7G 8L+ 91 101 11L+ 121 131 14V"));
}

void TestPinLevels::pins_areNumberedByTheirHeaders() {
    const LogicReport report = parseLogicReport(u"      5  VCC 40\n0007: 0 H Z\n0x: 0 H L-\n");
    QCOMPARE(pictureOf(worstOfPins(report)), QStringLiteral("50 2H+ 40-"));
    QCOMPARE(vectorNumber(report, 0), 7);
    QCOMPARE(vectorNumber(report, 1), 1);
}

void TestPinLevels::shortLine_leavesPinsUnchecked() {
    const LogicReport report = parseLogicReport(u"      1  2  3\n0000:\n0001: 0\n0002: 0 H L-\n");
    QCOMPARE(pictureOf(pinsInVector(report, 0)), QStringLiteral("1 2 3"));
    QCOMPARE(pictureOf(pinsInVector(report, 1)), QStringLiteral("10 2 3"));
    QCOMPARE(pictureOf(worstOfPins(report)), QStringLiteral("1 2+ 3-"));
    QVERIFY(worstOfPins(LogicReport()).isEmpty());
}

void TestPinLevels::packages_haveTwoEqualRowsOfPins_data() {
    QTest::addColumn<int>("pins");
    QTest::addColumn<bool>("isPackage");
    QTest::newRow("none") << 0 << false;
    QTest::newRow("too few") << 6 << false;
    QTest::newRow("the fewest") << 8 << true;
    QTest::newRow("odd") << 15 << false;
    QTest::newRow("the most") << 40 << true;
    QTest::newRow("too many") << 42 << false;
}

void TestPinLevels::packages_haveTwoEqualRowsOfPins() {
    QFETCH(int, pins);
    LogicReport report;
    report.headers = QStringList(pins, QStringLiteral("1"));
    QVERIFY(!tellsOfPackage(report)); // there is no vector
    report.rows = {{QStringLiteral("0000:")}};
    QTEST(tellsOfPackage(report), "isPackage");
    report.headers.reset();
    QVERIFY(!tellsOfPackage(report));
}

void TestPinLevels::legend_explainsEveryLetter() {
    QString letters;
    for (const QString &line : levelLegend()) {
        QVERIFY2(line.indexOf(QStringLiteral(": ")) == 1, qPrintable(line));
        letters += line.front();
    }
    QCOMPARE(letters, QStringLiteral("01LHCZXGV"));
}

void TestPinLevels::plainTable_isTheCaptureWithoutColours() {
    const LogicReport report = captured(QStringLiteral("logic-7400-one-error.stdout"));
    QCOMPARE(plainTable(report),
             QStringLiteral("      1  2  3  4  5  6  7  8  9  10 11 12 13 14\n"
                            "0000: 0  0  H  0  0  H  G  H  0  0  H  0  0  V\n"
                            "0001: 1  0  H  1  0  H  G  H  1  0  H  1  0  V\n"
                            "0002: 0  1  H  0  1  H  G  H  0  1  H  0  1  V\n"
                            "0003: 1  1  L- 1  1  L  G  L  1  1  L  1  1  V\n"));
}

QTEST_GUILESS_MAIN(TestPinLevels)
#include "tst_pin_levels.moc"

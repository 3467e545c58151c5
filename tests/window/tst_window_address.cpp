// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/EditingSteps.h"

/// Going to a byte by its address.
class TestWindowAddress : public QObject {
    Q_OBJECT

private slots:
    void address_movesTheCursorAndGivesTheGridTheKeyboard_data();
    void address_movesTheCursorAndGivesTheGridTheKeyboard();
    void address_farAwayComesIntoView();
    void noAddress_isSaidAndNothingMoves_data();
    void noAddress_isSaidAndNothingMoves();
    void emptyImage_hasNoAddresses();
    void logicResults_haveNoAddresses();
    void shortcut_leadsToTheField();
};

namespace {

void goTo(WindowFixture &velm, const QString &address) {
    velm.controls().findBar->findAddress();
    QLineEdit &field = velm.controls().findBar->addressField();
    field.setText(address);
    QTest::keyClick(&field, Qt::Key_Return);
}

QPair<int, int> cursor(WindowFixture &velm) {
    const QModelIndex index = velm.controls().tableview->currentIndex();
    return {index.row(), index.column()};
}

} // namespace

void TestWindowAddress::address_movesTheCursorAndGivesTheGridTheKeyboard_data() {
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("column");
    QTest::newRow("the first byte") << QStringLiteral("0") << 0 << 1;
    QTest::newRow("the last byte") << QStringLiteral("13") << 1 << 4;
    QTest::newRow("with its prefix and blanks") << QStringLiteral(" 0x0f ") << 0 << 16;
    QTest::newRow("decimal") << QStringLiteral("#19") << 1 << 4;
    QTest::newRow("further on") << QStringLiteral("+a") << 0 << 16; // from 5 on
    QTest::newRow("further on by a decimal number") << QStringLiteral("+#11") << 1 << 1;
    QTest::newRow("back") << QStringLiteral("-5") << 0 << 1;
}

void TestWindowAddress::address_movesTheCursorAndGivesTheGridTheKeyboard() {
    QFETCH(QString, address);
    QFETCH(int, row);
    QFETCH(int, column);
    WindowFixture velm;
    showTwentyBytes(velm);
    goTo(velm, QStringLiteral("5"));
    goTo(velm, address);
    QCOMPARE(cursor(velm), qMakePair(row, column));
    QVERIFY(velm.controls().tableview->hasFocus());
}

void TestWindowAddress::address_farAwayComesIntoView() {
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::pad_to, QStringLiteral("1024"));
    velm.settings().setValue(settingsKeys::pad, true);
    showTwentyBytes(velm);
    goTo(velm, QStringLiteral("ABCDE"));
    GridView *grid = velm.controls().tableview;
    QCOMPARE(cursor(velm), qMakePair(0xABCD, 0xE + 1));
    QVERIFY(grid->viewport()->rect().contains(grid->visualRect(grid->currentIndex())));
}

void TestWindowAddress::noAddress_isSaidAndNothingMoves_data() {
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("sentence");
    QTest::newRow("just past the end")
        << QStringLiteral("14")
        << QStringLiteral("There is no byte at 14: the last one is at 0013.");
    QTest::newRow("beyond every image")
        << QStringLiteral("FFFFFFFFFFFFFFFF")
        << QStringLiteral("There is no byte at FFFFFFFFFFFFFFFF: the last one is at 0013.");
    QTest::newRow("beyond 64 bits")
        << QStringLiteral("10000000000000000")
        << QStringLiteral("\u201c10000000000000000\u201d is no address: it takes hexadecimal "
                          "digits, or decimal ones "
                          "behind #.");
    QTest::newRow("decimal, just past the end")
        << QStringLiteral("#20")
        << QStringLiteral("There is no byte at #20: the last one is at 0013.");
    QTest::newRow("before the first byte")
        << QStringLiteral("-6")
        << QStringLiteral("There is no byte at -6: the last one is at 0013.");
    QTest::newRow("further than the last byte")
        << QStringLiteral("+F")
        << QStringLiteral("There is no byte at +F: the last one is at 0013.");
    QTest::newRow("a word")
        << QStringLiteral("end")
        << QStringLiteral(
               "\u201cend\u201d is no address: it takes hexadecimal digits, or decimal ones "
               "behind #.");
    QTest::newRow("a place for another text")
        << QStringLiteral("1%2x")
        << QStringLiteral(
               "\u201c1%2x\u201d is no address: it takes hexadecimal digits, or decimal ones "
               "behind #.");
    QTest::newRow("nothing")
        << QString()
        << QStringLiteral(
               "\u201c\u201d is no address: it takes hexadecimal digits, or decimal ones "
               "behind #.");
}

void TestWindowAddress::noAddress_isSaidAndNothingMoves() {
    QFETCH(QString, address);
    QFETCH(QString, sentence);
    WindowFixture velm;
    showTwentyBytes(velm);
    goTo(velm, QStringLiteral("5"));
    goTo(velm, address);
    QVERIFY2(velm.message().contains(sentence), qPrintable(velm.message()));
    QCOMPARE(cursor(velm), qMakePair(0, 6));
    QVERIFY(velm.controls().findBar->addressField().hasFocus());
    goTo(velm, QStringLiteral("6"));
    QVERIFY2(!velm.message().contains(sentence), qPrintable(velm.message()));
}

void TestWindowAddress::emptyImage_hasNoAddresses() {
    WindowFixture velm;
    velm.start();
    goTo(velm, QStringLiteral("0"));
    QVERIFY2(velm.message().contains(u"There are no bytes to go to."), qPrintable(velm.message()));
}

void TestWindowAddress::logicResults_haveNoAddresses() {
    WindowFixture velm;
    showTwentyBytes(velm);
    velm.controls().tabview->selectTabViewItem(logicTabIdentifier());
    goTo(velm, QStringLiteral("0"));
    QVERIFY2(velm.message().contains(u"There are no addresses among the logic test results."),
             qPrintable(velm.message()));
}

void TestWindowAddress::shortcut_leadsToTheField() {
    WindowFixture velm;
    showTwentyBytes(velm);
    velm.controls().tableview->setFocus();
    QTest::keyClick(&velm.velm().window(), Qt::Key_G, Qt::ControlModifier);
    QTRY_VERIFY(velm.controls().findBar->addressField().hasFocus());
}

QTEST_MAIN(TestWindowAddress)
#include "tst_window_address.moc"

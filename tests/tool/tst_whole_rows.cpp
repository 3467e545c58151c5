// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "tool/WholeRows.h"

#include <QTest>

class TestWholeRows : public QObject {
    Q_OBJECT

private slots:
    void errors_waitWhileARowIsOpen();
    void errorLine_comesBeforeTheNextRow();
    void tooManyErrors_passUntilThereIsOutput();
};

void TestWholeRows::errors_waitWhileARowIsOpen() {
    WholeRows rows;
    QVERIFY(!rows.errorsMustWait());
    rows.note("0000: H L", ToolStream::Output);
    QVERIFY(rows.errorsMustWait());
    rows.keep("one ");
    rows.keep("two\n");
    QVERIFY(rows.errorsMustWait());
    rows.note(" X\n", ToolStream::Output);
    QVERIFY(!rows.errorsMustWait());
    QCOMPARE(rows.release(), QByteArray("one two\n"));
    QCOMPARE(rows.release(), QByteArray());
}

void TestWholeRows::errorLine_comesBeforeTheNextRow() {
    WholeRows rows;
    QVERIFY(!rows.errorLineComesFirst());
    rows.note("Logic test", ToolStream::Error);
    QVERIFY(rows.errorLineComesFirst());
    rows.note(" failed.\n", ToolStream::Error);
    QVERIFY(!rows.errorLineComesFirst());
    rows.note("Logic test", ToolStream::Error);
    rows.note("0000:", ToolStream::Output);
    QVERIFY(!rows.errorLineComesFirst());
}

void TestWholeRows::tooManyErrors_passUntilThereIsOutput() {
    WholeRows rows;
    rows.note("0000:", ToolStream::Output);
    rows.keep(QByteArray(WholeRows::maxWaiting, 'e'));
    QVERIFY(rows.errorsMustWait());
    rows.keep("e");
    QVERIFY(!rows.errorsMustWait());
    QCOMPARE(rows.release().size(), WholeRows::maxWaiting + 1);
    QVERIFY(!rows.errorsMustWait());
    rows.note(" H", ToolStream::Output);
    QVERIFY(rows.errorsMustWait());
}

QTEST_GUILESS_MAIN(TestWholeRows)
#include "tst_whole_rows.moc"

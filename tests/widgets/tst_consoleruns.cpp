// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "widgets/ConsoleView.h"

#include "support/ShownConsole.h"

#include <QAction>
#include <QScrollBar>
#include <QTest>
#include <QTextBlock>

/// The console finds the place where a run begins.
class TestConsoleRuns : public QObject {
    Q_OBJECT

private slots:
    void showRun_scrollsToWhereItBegins_data();
    void showRun_scrollsToWhereItBegins();
    void showRun_countsTheRowsOfWrappedLines();
    void showRun_leavesWhatWaitsToItsTurns();
    void showRun_thatIsGoneShowsTheFirstLine();
    void showRun_isForgottenWithTheText();
};

void TestConsoleRuns::showRun_scrollsToWhereItBegins_data() {
    QTest::addColumn<QString>("output");
    QTest::newRow("lines") << QStringLiteral("a line\n").repeated(50);
    QTest::newRow("a count") << QStringLiteral("\r\x1b[KReading Code...  12%").repeated(50);
    QTest::newRow("nothing") << "";
    QTest::newRow("lines taken back")
        << QStringLiteral("a line\n").repeated(50) + QStringLiteral("\x1b[2Jleft\n").repeated(2);
    QTest::newRow("a long line") << QString(3 * TerminalText::longestLine, u'x');
}

void TestConsoleRuns::showRun_scrollsToWhereItBegins() {
    QFETCH(QString, output);
    ConsoleView view;
    showView(view);
    for (int run = 0; run < 4; ++run) {
        view.beginRun();
        view.appendText(QStringLiteral("run %1\n").arg(run));
        view.endRun();
        view.appendText(output);
    }
    for (const int run : {2, 0, 3, 1}) {
        view.showRun(run);
        view.flush();
        QCOMPARE(view.textCursor().block().text(), QStringLiteral("run %1").arg(run));
        QVERIFY(view.viewport()->rect().intersects(view.cursorRect()));
    }
}

void TestConsoleRuns::showRun_countsTheRowsOfWrappedLines() {
    ConsoleView view;
    showView(view);
    view.wrapAction()->setChecked(true);
    for (int run = 0; run < 3; ++run) {
        view.beginRun();
        view.appendText(QStringLiteral("run %1\n").arg(run) +
                        QString(200, u'x').append(u'\n').repeated(5));
        view.endRun();
    }
    view.showRun(1);
    view.flush();
    QCOMPARE(view.textCursor().block().text(), QStringLiteral("run 1"));
    QVERIFY(view.cursorRect().top() >= 0);
    QVERIFY(view.cursorRect().top() < view.cursorRect().height());
}

// Output that comes within the gathering time of the first piece waits for a turn of the event
// loop.
void TestConsoleRuns::showRun_leavesWhatWaitsToItsTurns() {
    ConsoleView view;
    showView(view);
    view.beginRun();
    view.appendText(QStringLiteral("run 0\n"));
    view.beginRun();
    view.appendText(QStringLiteral("run 1\n") + numberedLines(20000));
    view.showRun(1);
    QCOMPARE(view.toPlainText(), QStringLiteral("run 0\n"));
    QTRY_COMPARE(view.textCursor().block().text(), QStringLiteral("run 1"));
    QVERIFY(view.viewport()->rect().intersects(view.cursorRect()));
    QVERIFY(view.toPlainText().endsWith(u"\n19999\n"));
}

void TestConsoleRuns::showRun_thatIsGoneShowsTheFirstLine() {
    ConsoleView view(nullptr, 4096);
    showView(view);
    view.beginRun();
    view.appendText(QStringLiteral("run 0\n") + QStringLiteral("a line\n").repeated(2000));
    view.beginRun();
    view.appendText(QStringLiteral("run 1\n"));
    view.showRun(1);
    view.flush();
    QCOMPARE(view.textCursor().block().text(), QStringLiteral("run 1"));
    view.showRun(0);
    view.flush();
    QCOMPARE(view.textCursor().blockNumber(), 0);
    view.clearAll();
    view.beginRun();
    view.appendText(QStringLiteral("run 2\nits words\n"));
    view.showRun(1);
    view.flush();
    QCOMPARE(view.textCursor().blockNumber(), 0);
    view.showRun(2);
    view.flush();
    QCOMPARE(view.textCursor().block().text(), QStringLiteral("run 2"));
}

void TestConsoleRuns::showRun_isForgottenWithTheText() {
    ConsoleView view;
    showView(view);
    view.beginRun();
    view.appendText(QStringLiteral("run 0\n"));
    view.appendText(QStringLiteral("its words\n"));
    view.showRun(0);
    view.clearAll();
    view.followOutputAction()->setChecked(true);
    view.appendText(numberedLines(100));
    view.flush();
    QVERIFY(showsEnd(view));
}

QTEST_MAIN(TestConsoleRuns)
#include "tst_consoleruns.moc"

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/EditingSteps.h"

#include <QPointer>
#include <QPushButton>

/// Ending the program with edits that are in no file.
class TestWindowClosing : public QObject {
    Q_OBJECT

private slots:
    void closedWindow_isNotRaisedAgain();
    void closing_withEditsInNoFileTakesTwoTimes();
    void closing_afterTheEditsWereSavedTakesOne();
    void closing_withReplacedEditsTakesTwoTimes();
    void endingBySignal_giveUpEditsAtTheSecond();
    void endingWithoutClosing_endsAnOpenEntryFirst();
};

void TestWindowClosing::closing_withEditsInNoFileTakesTwoTimes() {
    WindowFixture velm;
    showTwentyBytes(velm);
    enter(velm, 0, 1, QStringLiteral("7A"));
    QVERIFY(!velm.velm().window().close());
    QVERIFY2(velm.message().contains(u"1 hand edit is in no file."), qPrintable(velm.message()));
    // Another edit makes it another question.
    enter(velm, 0, 2, QStringLiteral("7A"));
    QVERIFY(!velm.velm().window().close());
    QVERIFY2(velm.message().contains(u"2 hand edits are in no file."), qPrintable(velm.message()));
    velm.velm().askToEnd();
    QVERIFY(!velm.velm().window().isVisible());
}

void TestWindowClosing::closing_afterTheEditsWereSavedTakesOne() {
    WindowFixture velm;
    showTwentyBytes(velm);
    enter(velm, 0, 1, QStringLiteral("7A"));
    QVERIFY(!velm.velm().window().close());
    velm.panels.answer = velm.path(QStringLiteral("saved.bin"));
    velm.click(velm.controls().messageLine->findChild<QPushButton *>()); // Save data to burn
    QVERIFY2(!velm.message().contains(u"in no file"), qPrintable(velm.message()));
    QVERIFY(velm.velm().window().close());
}

void TestWindowClosing::closing_withReplacedEditsTakesTwoTimes() {
    WindowFixture velm;
    showTwentyBytes(velm);
    enter(velm, 0, 1, QStringLiteral("7A"));
    velm.controls().startAddTextField->setText(QStringLiteral("2"));
    QVERIFY(!velm.velm().window().close());
    QVERIFY2(velm.message().contains(u"1 hand edit that was replaced is in no file."),
             qPrintable(velm.message()));
    QVERIFY(velm.velm().window().close());
}

void TestWindowClosing::endingBySignal_giveUpEditsAtTheSecond() {
    WindowFixture velm;
    showTwentyBytes(velm);
    QApplication::setDoubleClickInterval(1'000'000); // a signal is no slip of the hand
    enter(velm, 0, 1, QStringLiteral("7A"));
    velm.velm().askToEnd();
    QVERIFY(velm.velm().window().isVisible());
    QVERIFY(!velm.velm().window().close());
    velm.velm().askToEnd();
    QVERIFY(!velm.velm().window().isVisible());
}

// The grid would ask the controller for its cells, which has gone by then.
void TestWindowClosing::endingWithoutClosing_endsAnOpenEntryFirst() {
    QPointer<CellEditor> editor;
    {
        WindowFixture velm;
        showTwentyBytes(velm);
        GridView *grid = velm.controls().tableview;
        grid->setFocus();
        grid->setCurrentIndex(grid->model()->index(0, 1));
        QTest::keyClick(grid, Qt::Key_F2);
        editor = grid->entries().editor();
        QVERIFY(editor);
        editor->setText(QStringLiteral("7A"));
        QVERIFY(velm.velm().window().isVisible());
    }
    QVERIFY(!editor);
}

// A second start may ask at the very moment in which the first one ends.
void TestWindowClosing::closedWindow_isNotRaisedAgain() {
    WindowFixture velm;
    velm.start();
    velm.velm().raise();
    QVERIFY(velm.velm().window().isVisible());
    QVERIFY(velm.velm().window().close());
    velm.velm().raise();
    QVERIFY(!velm.velm().window().isVisible());
}

QTEST_MAIN(TestWindowClosing)
#include "tst_window_closing.moc"

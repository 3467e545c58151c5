// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/EditingSteps.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

/// Taking back edits made by hand, and making them again.
class TestWindowUndo : public QObject {
    Q_OBJECT

private slots:
    void edits_areTakenBackOneByOneAndMadeAgain();
    void aText_isTakenBackWhole();
    void growth_isTakenBackToo();
    void entriesThatChangeNothing_areNoEdits_data();
    void entriesThatChangeNothing_areNoEdits();
    void whatIsBeingTyped_isTakenBack();
    void undo_showsThePlaceFromAnotherTab();
    void aNewImage_hasNothingToTakeBack();
    void editsTakenBack_areNotCountedAsReplaced();
    void duringARun_nothingIsTakenBack();
    void rejectedEntry_isSaidUntilTheNextOne();
};

namespace {

QAction *entry(WindowFixture &velm, const QString &text) {
    for (QAction *action : velm.velm().window().menuBar()->findChildren<QAction *>())
        if (action->text() == text)
            return action;
    qFatal("no entry %s", qPrintable(text));
}

QAction *undoEntry(WindowFixture &velm) {
    return entry(velm, QStringLiteral("&Undo edit"));
}

QAction *redoEntry(WindowFixture &velm) {
    return entry(velm, QStringLiteral("&Redo edit"));
}

void undo(WindowFixture &velm) {
    QTest::keyClick(&velm.velm().window(), Qt::Key_Z, Qt::ControlModifier);
    velm.settle();
}

void redo(WindowFixture &velm) {
    QTest::keyClick(&velm.velm().window(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    velm.settle();
}

QByteArray image(WindowFixture &velm) {
    return *velm.state().output_data;
}

} // namespace

void TestWindowUndo::edits_areTakenBackOneByOneAndMadeAgain() {
    WindowFixture velm;
    showTwentyBytes(velm);
    enter(velm, 0, 1, QStringLiteral("7A"));
    enter(velm, 1, 2, QStringLiteral("79"));
    QCOMPARE(image(velm), QByteArray("z123456789ABCDEFGyIJ"));
    undo(velm);
    QCOMPARE(image(velm), QByteArray("z123456789ABCDEFGHIJ"));
    QCOMPARE(onDisk(velm), image(velm));
    QCOMPARE(velm.controls().tableview->currentIndex(),
             velm.controls().tableview->model()->index(1, 2));
    undo(velm);
    QCOMPARE(image(velm), QByteArray("0123456789ABCDEFGHIJ"));
    QCOMPARE(velm.cell(0, 1), QStringLiteral("30"));
    QVERIFY(!undoEntry(velm)->isEnabled());
    undo(velm);
    QCOMPARE(image(velm), QByteArray("0123456789ABCDEFGHIJ"));
    redo(velm);
    redo(velm);
    QCOMPARE(image(velm), QByteArray("z123456789ABCDEFGyIJ"));
    QCOMPARE(onDisk(velm), image(velm));
    QCOMPARE(velm.cell(1, 2), QStringLiteral("79"));
    QVERIFY(!redoEntry(velm)->isEnabled());
}

void TestWindowUndo::aText_isTakenBackWhole() {
    WindowFixture velm;
    showTwentyBytes(velm);
    enter(velm, 0, 3, QStringLiteral("'hello"));
    QCOMPARE(image(velm), QByteArray("01hello789ABCDEFGHIJ"));
    undo(velm);
    QCOMPARE(image(velm), QByteArray("0123456789ABCDEFGHIJ"));
}

void TestWindowUndo::growth_isTakenBackToo() {
    WindowFixture velm;
    showTwentyBytes(velm);
    enter(velm, 1, 4, QStringLiteral("'a longer text"));
    QCOMPARE(image(velm), QByteArray("0123456789ABCDEFGHIa longer text"));
    undo(velm);
    QCOMPARE(image(velm), QByteArray("0123456789ABCDEFGHIJ"));
    QCOMPARE(onDisk(velm), image(velm));
    QCOMPARE(velm.cell(1, 5), QStringLiteral("XX"));
    redo(velm);
    QCOMPARE(image(velm), QByteArray("0123456789ABCDEFGHIa longer text"));
}

void TestWindowUndo::entriesThatChangeNothing_areNoEdits_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("beeps");
    QTest::newRow("a rejected value") << QStringLiteral("00") << 1;
    QTest::newRow("the same value in another form") << QStringLiteral("0x30") << 0;
    QTest::newRow("the same text") << QStringLiteral("'0123") << 0;
    QTest::newRow("no text") << QStringLiteral("'") << 0;
}

void TestWindowUndo::entriesThatChangeNothing_areNoEdits() {
    QFETCH(QString, text);
    QFETCH(int, beeps);
    WindowFixture velm;
    showTwentyBytes(velm);
    enter(velm, 0, 1, text);
    QCOMPARE(velm.beeps, beeps);
    QCOMPARE(image(velm), QByteArray("0123456789ABCDEFGHIJ"));
    QVERIFY(!undoEntry(velm)->isEnabled());
}

void TestWindowUndo::whatIsBeingTyped_isTakenBack() {
    WindowFixture velm;
    showTwentyBytes(velm);
    GridView *grid = velm.controls().tableview;
    grid->setFocus();
    grid->setCurrentIndex(grid->model()->index(0, 1));
    QTest::keyClick(grid, Qt::Key_7);
    QVERIFY(grid->entries().editor());
    velm.delegate().edits().undo();
    QVERIFY(!grid->entries().editor());
    QCOMPARE(image(velm), QByteArray("0123456789ABCDEFGHIJ"));
}

void TestWindowUndo::undo_showsThePlaceFromAnotherTab() {
    WindowFixture velm;
    showTwentyBytes(velm);
    enter(velm, 1, 2, QStringLiteral("79"));
    velm.controls().tabview->selectTabViewItem(readTabIdentifier());
    undo(velm);
    QCOMPARE(velm.controls().tabview->selectedTabViewItem().identifier, burnTabIdentifier());
    QCOMPARE(velm.cell(1, 2), QStringLiteral("48"));
}

void TestWindowUndo::aNewImage_hasNothingToTakeBack() {
    WindowFixture velm;
    showTwentyBytes(velm);
    enter(velm, 0, 1, QStringLiteral("7A"));
    QVERIFY(undoEntry(velm)->isEnabled());
    velm.click(velm.controls().btn_pad_00);
    velm.settle();
    QVERIFY(!undoEntry(velm)->isEnabled());
    undo(velm);
    QCOMPARE(image(velm), QByteArray("0123456789ABCDEFGHIJ"));
}

void TestWindowUndo::editsTakenBack_areNotCountedAsReplaced() {
    WindowFixture velm;
    showTwentyBytes(velm);
    enter(velm, 0, 1, QStringLiteral("7A"));
    enter(velm, 0, 2, QStringLiteral("7A"));
    undo(velm);
    velm.click(velm.controls().btn_pad_00);
    velm.settle();
    QVERIFY2(velm.message().contains(u"1 hand edit was replaced."), qPrintable(velm.message()));
}

void TestWindowUndo::duringARun_nothingIsTakenBack() {
    WindowFixture velm;
    velm.useTool("echo started; read line\n");
    showTwentyBytes(velm);
    enter(velm, 0, 1, QStringLiteral("7A"));
    bool enabled = true;
    QByteArray during;
    velm.whileBusy([&] {
        enabled = undoEntry(velm)->isEnabled();
        velm.delegate().edits().undo();
        during = image(velm);
        velm.click(velm.controls().btn_stop);
    });
    velm.click(velm.controls().btn_verify);
    QVERIFY(!enabled);
    QCOMPARE(during, QByteArray("z123456789ABCDEFGHIJ"));
    QVERIFY(undoEntry(velm)->isEnabled());
}

void TestWindowUndo::rejectedEntry_isSaidUntilTheNextOne() {
    WindowFixture velm;
    showTwentyBytes(velm);
    enter(velm, 0, 1, QStringLiteral("1FF"));
    const QString sentence = QStringLiteral("\u201c1FF\u201d was not taken");
    QVERIFY2(velm.message().contains(sentence), qPrintable(velm.message()));
    enter(velm, 0, 1, QStringLiteral("1F"));
    QVERIFY2(!velm.message().contains(sentence), qPrintable(velm.message()));
}

QTEST_MAIN(TestWindowUndo)
#include "tst_window_undo.moc"

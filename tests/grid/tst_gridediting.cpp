// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "support/ShownGrid.h"

#include <QAction>
#include <QVBoxLayout>

class TestGridEditing : public QObject {
    Q_OBJECT

private slots:
    void typing_replacesTheCell();
    void keysThatArriveTogether_endUpEachInItsCell();
    void f2_opensTheCellWithItsValue();
    void doubleClick_opensTheCell();
    void cellsThatMayNotBeEdited_doNotOpen();
    void address_opensEmpty();
    void untouchedEntry_commitsNothing_data();
    void untouchedEntry_commitsNothing();
    void escape_cancels();
    void leaving_commitsAChangedEntryOnce();
    void beepedEntry_isCommittedOnce();
    void cursor_data();
    void cursor();
    void sameValueTypedAgain_movesOnWithoutACommit();
    void twoDigits_endTheEntryWhereThatIsChosen();
    void twoDigits_thatAreRefusedLetTheCursorStay();
    void twoDigits_ofTheValueThatIsThereMoveOn();
    void twoDigits_areAnEntryLikeAnyOtherElsewhere_data();
    void twoDigits_areAnEntryLikeAnyOtherElsewhere();
    void arrowKeys_commitAndMove();
    void commit_takesTheEntry();
    void commit_ofAnUntouchedEntryOnlyCloses();
    void growingEdit_keepsScrollAndShowsTheNewRow();
    void editor_liesOverItsCellAndWidens();
    void editor_goesWithItsCell();
    void reload_closesTheEditor();
    void entry_isToldBeforeItIsCarriedOut();
    void entryThatIsLeft_closesOnly();
};

/// 40 bytes "AAAA…": two whole rows and half of one.
static QByteArray image() {
    return QByteArray(40, 'A');
}

void TestGridEditing::typing_replacesTheCell() {
    ShownGrid grid(image(), true);
    QVERIFY(grid.shown);
    grid.setCursor(1, 2);
    grid.type(QStringLiteral("4"));
    QCOMPARE(grid.typed(), QStringLiteral("4"));
    grid.type(QStringLiteral("2"));
    grid.press(Qt::Key_Return);
    QTRY_COMPARE(grid.source.entries, QStringList{QStringLiteral("2 1 42")});
    QCOMPARE(grid.source.bytes, image().replace(17, 1, "B"));
    QVERIFY(!grid.view.entries().editor());
    QVERIFY(grid.view.hasFocus());
}

void TestGridEditing::keysThatArriveTogether_endUpEachInItsCell() {
    ShownGrid grid(image(), true);
    grid.setCursor(0, 1);
    // Nothing is processed between the keys, as when a quick hand is ahead of a slow machine.
    for (const QString &entry :
         {QStringLiteral("42"), QStringLiteral("43"), QStringLiteral("44")}) {
        grid.type(entry);
        grid.press(entry == QStringLiteral("43") ? Qt::Key_Enter : Qt::Key_Return);
    }
    QCOMPARE(grid.source.bytes, image().replace(0, 3, "BCD"));
    QCOMPARE(grid.cursor(), qMakePair(0, 4));
}

void TestGridEditing::f2_opensTheCellWithItsValue() {
    ShownGrid grid(image(), true);
    grid.setCursor(0, 1);
    grid.press(Qt::Key_F2);
    QCOMPARE(grid.typed(), QStringLiteral("41"));
    QCOMPARE(grid.view.entries().editor()->selectedText(), QStringLiteral("41"));
}

void TestGridEditing::doubleClick_opensTheCell() {
    ShownGrid grid(image(), true);
    grid.click(2, 3);
    grid.doubleClick(2, 3);
    QCOMPARE(grid.typed(), QStringLiteral("41"));
    QVERIFY(grid.view.entries().editor()->hasFocus());
}

void TestGridEditing::cellsThatMayNotBeEdited_doNotOpen() {
    ShownGrid grid(image(), false);
    grid.click(0, 1);
    grid.press(Qt::Key_F2);
    QVERIFY(!grid.view.entries().editor());
    grid.doubleClick(0, 1);
    QVERIFY(!grid.view.entries().editor());
    grid.type(QStringLiteral("4"));
    QVERIFY(!grid.view.entries().editor());
}

void TestGridEditing::address_opensEmpty() {
    ShownGrid grid(image(), true);
    grid.setCursor(2, 0);
    grid.press(Qt::Key_F2);
    QVERIFY(grid.view.entries().editor());
    QCOMPARE(grid.typed(), QString());
    grid.type(QStringLiteral("42"));
    grid.press(Qt::Key_Return);
    QTRY_COMPARE(grid.source.bytes, image().replace(31, 1, "B"));
    QCOMPARE(grid.cursor(), qMakePair(2, 1));
}

void TestGridEditing::untouchedEntry_commitsNothing_data() {
    QTest::addColumn<int>("key");
    QTest::newRow("by Enter") << int(Qt::Key_Return);
    QTest::newRow("by Tab") << int(Qt::Key_Tab);
    QTest::newRow("by Escape") << int(Qt::Key_Escape);
    QTest::newRow("by an arrow key") << int(Qt::Key_Down);
}

void TestGridEditing::untouchedEntry_commitsNothing() {
    QFETCH(int, key);
    for (const int column : {0, 1, 16, 17}) {
        ShownGrid grid(image(), true);
        grid.setCursor(1, column);
        grid.press(Qt::Key_F2);
        QVERIFY(grid.view.entries().editor());
        grid.press(key);
        QTRY_VERIFY(!grid.view.entries().editor());
        QCOMPARE(grid.source.entries, QStringList());
    }
}

void TestGridEditing::escape_cancels() {
    ShownGrid grid(image(), true);
    grid.setCursor(1, 1);
    grid.type(QStringLiteral("42"));
    grid.press(Qt::Key_Escape);
    QTRY_VERIFY(!grid.view.entries().editor());
    QCOMPARE(grid.source.entries, QStringList());
    QCOMPARE(grid.cursor(), qMakePair(1, 1));
}

void TestGridEditing::leaving_commitsAChangedEntryOnce() {
    GridSourceDouble source(image());
    source.editable = true;
    QWidget window;
    auto *layout = new QVBoxLayout(&window);
    auto *view = new GridView;
    auto *field = new QLineEdit;
    layout->addWidget(view);
    layout->addWidget(field);
    view->setSource(source);
    window.show();
    view->setFocus();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    view->setCurrentIndex(view->gridModel()->index(0, 5));
    QTest::keyClick(view, '4');
    QTest::keyClick(view->entries().editor(), '2');
    field->setFocus();
    QTRY_COMPARE(source.entries, QStringList{QStringLiteral("5 0 42")});
    QVERIFY(!view->entries().editor());
    QVERIFY(field->hasFocus());
    QCOMPARE(view->currentIndex(), view->gridModel()->index(0, 5));
}

void TestGridEditing::beepedEntry_isCommittedOnce() {
    ShownGrid grid(image(), true);
    grid.setCursor(0, 1);
    grid.type(QStringLiteral("100"));
    grid.press(Qt::Key_Return);
    QTRY_VERIFY(!grid.view.entries().editor());
    QCOMPARE(grid.source.entries, QStringList{QStringLiteral("1 0 100")});
    QCOMPARE(grid.source.bytes, image());
}

void TestGridEditing::cursor_data() {
    QTest::addColumn<QString>("entry");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("rowAfter");
    QTest::addColumn<int>("columnAfter");
    const auto row = [](const char *name, const char *entry, QPair<int, int> from,
                        QPair<int, int> to, Qt::Key key = Qt::Key_Return) {
        QTest::newRow(name) << QString::fromLatin1(entry) << from.first << from.second << int(key)
                            << to.first << to.second;
    };
    row("a byte moves on by one", "42", {0, 1}, {0, 2});
    row("the last byte of a row moves to the next row's first", "42", {0, 16}, {1, 1});
    row("a text moves on by its length", "'hello", {0, 1}, {0, 6});
    row("a text moves on across rows", "'hello", {0, 14}, {1, 3});
    row("a text past the end moves behind the new bytes", "'hello", {2, 7}, {2, 12});
    row("a text to the end of a new row moves to the row below", "'0123456789", {2, 7}, {3, 1});
    row("the last byte moves to the place behind it", "42", {2, 8}, {2, 9});
    row("an address moves to the row's first byte", "42", {1, 0}, {1, 1});
    row("a lone quote stays", "'", {0, 5}, {0, 5});
    row("a refused entry stays", "zz", {0, 5}, {0, 5});
    row("a cleared entry stays", "", {0, 5}, {0, 5});
    row("an entry where no byte is stays", "42", {2, 12}, {2, 12});
    row("an entry in the characters stays", "42", {0, 17}, {0, 17});
    row("Tab moves on as Enter does", "'abc", {0, 15}, {1, 2}, Qt::Key_Tab);
    row("Tab stays at a refused entry", "0", {0, 5}, {0, 5}, Qt::Key_Tab);
    row("Shift and Tab move back", "42", {0, 5}, {0, 4}, Qt::Key_Backtab);
    row("Shift and Tab move back across rows", "42", {1, 1}, {0, 16}, Qt::Key_Backtab);
    row("Shift and Tab stay at the first byte", "42", {0, 1}, {0, 1}, Qt::Key_Backtab);
}

void TestGridEditing::cursor() {
    QFETCH(QString, entry);
    QFETCH(int, row);
    QFETCH(int, column);
    QFETCH(int, key);
    QFETCH(int, rowAfter);
    QFETCH(int, columnAfter);
    ShownGrid grid(image(), true);
    grid.setCursor(row, column);
    grid.press(Qt::Key_F2);
    QVERIFY(grid.view.entries().editor());
    grid.press(Qt::Key_Delete);
    grid.type(entry);
    grid.press(key);
    QTRY_VERIFY(!grid.view.entries().editor());
    QCOMPARE(grid.source.entries.size(), 1);
    QCOMPARE(grid.cursor(), qMakePair(rowAfter, columnAfter));
    QVERIFY(grid.view.hasFocus());
    QCOMPARE(grid.view.selection().rowCount(), 1);
    QVERIFY(grid.view.selectionModel()->isSelected(grid.view.currentIndex()));
}

void TestGridEditing::sameValueTypedAgain_movesOnWithoutACommit() {
    ShownGrid grid(image(), true);
    grid.setCursor(0, 16);
    grid.type(QStringLiteral("41"));
    grid.press(Qt::Key_Return);
    QTRY_COMPARE(grid.cursor(), qMakePair(1, 1));
    QCOMPARE(grid.source.entries, QStringList());

    // An entry that was only looked at stays.
    grid.press(Qt::Key_F2);
    grid.press(Qt::Key_Return);
    QTRY_VERIFY(!grid.view.entries().editor());
    QCOMPARE(grid.cursor(), qMakePair(1, 1));
}

void TestGridEditing::twoDigits_endTheEntryWhereThatIsChosen() {
    ShownGrid grid(image(), true);
    grid.setCursor(0, 15);
    grid.type(QStringLiteral("42"));
    QCOMPARE(grid.typed(), QStringLiteral("42"));
    grid.press(Qt::Key_Escape);
    grid.view.entries().moveOnAction()->setChecked(true);
    // Into the next row, and nothing is processed between the keys.
    grid.type(QStringLiteral("424344"));
    QCOMPARE(grid.source.bytes, image().replace(14, 3, "BCD"));
    QCOMPARE(grid.cursor(), qMakePair(1, 2));
    QVERIFY(!grid.view.entries().editor());
    grid.type(QStringLiteral("5"));
    QCOMPARE(grid.typed(), QStringLiteral("5"));
    grid.press(Qt::Key_Return);
    QCOMPARE(grid.source.bytes, image().replace(14, 4, "BCD\5"));
}

void TestGridEditing::twoDigits_thatAreRefusedLetTheCursorStay() {
    ShownGrid grid(image(), true);
    grid.view.entries().moveOnAction()->setChecked(true);
    grid.setCursor(0, 3);
    grid.type(QStringLiteral("00"));
    QCOMPARE(grid.source.entries, QStringList{QStringLiteral("3 0 00")});
    QVERIFY(!grid.view.entries().editor());
    QCOMPARE(grid.cursor(), qMakePair(0, 3));
}

void TestGridEditing::twoDigits_ofTheValueThatIsThereMoveOn() {
    ShownGrid grid(image(), true);
    grid.view.entries().moveOnAction()->setChecked(true);
    grid.setCursor(0, 3);
    grid.type(QStringLiteral("41"));
    QCOMPARE(grid.source.entries, QStringList());
    QCOMPARE(grid.cursor(), qMakePair(0, 4));
}

void TestGridEditing::twoDigits_areAnEntryLikeAnyOtherElsewhere_data() {
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("opening");
    QTest::addColumn<QString>("typed");
    QTest::newRow("opened by F2") << 3 << QStringLiteral("F2") << QStringLiteral("42");
    QTest::newRow("opened by a double-click")
        << 3 << QStringLiteral("click") << QStringLiteral("42");
    QTest::newRow("behind a quote") << 3 << QString() << QStringLiteral("'42");
    QTest::newRow("digits of no byte") << 3 << QString() << QStringLiteral("x4");
    QTest::newRow("pasted") << 3 << QStringLiteral("paste") << QString();
    QTest::newRow("characters") << 17 << QString() << QStringLiteral("42");
}

void TestGridEditing::twoDigits_areAnEntryLikeAnyOtherElsewhere() {
    QFETCH(int, column);
    QFETCH(QString, opening);
    QFETCH(QString, typed);
    ShownGrid grid(image(), true);
    grid.view.entries().moveOnAction()->setChecked(true);
    grid.setCursor(0, column);
    if (opening == u"F2")
        grid.press(Qt::Key_F2);
    if (opening == u"click")
        grid.doubleClick(0, column);
    if (opening == u"paste") {
        grid.type(QStringLiteral("4"));
        grid.view.entries().editor()->selectAll();
        grid.view.entries().editor()->insert(QStringLiteral("42"));
    }
    grid.type(typed);
    QVERIFY(grid.view.entries().editor());
    QCOMPARE(grid.source.entries, QStringList());
    QCOMPARE(grid.typed(), opening == u"paste" ? QStringLiteral("42") : typed);
}

void TestGridEditing::arrowKeys_commitAndMove() {
    ShownGrid grid(image(), true);
    grid.setCursor(0, 3);
    grid.type(QStringLiteral("42"));
    grid.press(Qt::Key_Down);
    QCOMPARE(grid.source.entries, QStringList{QStringLiteral("3 0 42")});
    QCOMPARE(grid.cursor(), qMakePair(1, 3));
    QTRY_VERIFY(!grid.view.entries().editor());
}

void TestGridEditing::commit_takesTheEntry() {
    ShownGrid grid(image(), true);
    QVERIFY(!grid.view.entries().commit());
    grid.setCursor(0, 3);
    grid.type(QStringLiteral("42"));
    QVERIFY(grid.view.entries().commit());
    QCOMPARE(grid.source.entries, QStringList{QStringLiteral("3 0 42")});
    QVERIFY(!grid.view.entries().editor());
    QVERIFY(!grid.view.entries().commit());
    QCOMPARE(grid.source.entries.size(), 1);
}

void TestGridEditing::commit_ofAnUntouchedEntryOnlyCloses() {
    ShownGrid grid(image(), true);
    grid.setCursor(0, 0);
    grid.press(Qt::Key_F2);
    QVERIFY(grid.view.entries().commit());
    QVERIFY(!grid.view.entries().editor());
    QCOMPARE(grid.source.entries, QStringList());
}

void TestGridEditing::growingEdit_keepsScrollAndShowsTheNewRow() {
    ShownGrid grid(QByteArray(1000, 'A'), true);
    grid.press(Qt::Key_End, Qt::ControlModifier);
    const int rows = grid.view.gridModel()->rowCount();
    grid.setCursor(rows - 1, 8);
    grid.type(QStringLiteral("'0123456789"));
    grid.press(Qt::Key_Return);
    QTRY_COMPARE(grid.view.gridModel()->rowCount(), rows + 1);
    QTRY_COMPARE(grid.cursor(), qMakePair(rows, 2));
    QVERIFY(grid.view.viewport()->rect().contains(grid.view.visualRect(grid.view.currentIndex())));
}

void TestGridEditing::editor_liesOverItsCellAndWidens() {
    ShownGrid grid(image(), true);
    grid.setCursor(1, 4);
    grid.press(Qt::Key_F2);
    const QRect cell = grid.view.visualRect(grid.cell(1, 4));
    QVERIFY(grid.view.entries().editor()->geometry().contains(cell));
    QCOMPARE(grid.view.entries().editor()->geometry().topLeft(), cell.topLeft());
    QCOMPARE(grid.view.entries().editor()->height(), cell.height());
    const int width = grid.view.entries().editor()->width();
    grid.type(QStringLiteral("'hello, programmer"));
    QVERIFY(grid.view.entries().editor()->width() > width);
    grid.type(QString(200, u'x'));
    QCOMPARE(grid.view.entries().editor()->geometry().right(), grid.view.viewport()->width() - 1);
}

void TestGridEditing::editor_goesWithItsCell() {
    ShownGrid grid(QByteArray(6000, 'A'), true);
    grid.setCursor(3, 4);
    grid.press(Qt::Key_F2);
    grid.view.scrollTo(grid.cell(2, 0), QAbstractItemView::PositionAtTop);
    QCOMPARE(grid.view.entries().editor()->pos(), grid.view.visualRect(grid.cell(3, 4)).topLeft());
    grid.view.scrollTo(grid.cell(300, 0));
    QVERIFY(grid.view.entries().editor());
    QVERIFY(!grid.view.entries().editor()->geometry().intersects(grid.view.viewport()->rect()));
    grid.view.scrollTo(grid.cell(3, 0));
    QCOMPARE(grid.view.entries().editor()->pos(), grid.view.visualRect(grid.cell(3, 4)).topLeft());
}

void TestGridEditing::reload_closesTheEditor() {
    ShownGrid grid(image(), true);
    grid.setCursor(0, 3);
    grid.type(QStringLiteral("4"));
    grid.view.reloadData();
    QVERIFY(!grid.view.entries().editor());
    QVERIFY(!grid.view.entries().commit());
    QCOMPARE(grid.source.entries, QStringList());
}

void TestGridEditing::entry_isToldBeforeItIsCarriedOut() {
    ShownGrid grid(image(), true);
    QStringList told;
    const auto tell = [&](const char *what) {
        told << QStringLiteral("%1 %2").arg(grid.source.entries.size()).arg(QLatin1String(what));
    };
    connect(&grid.view.entries(), &GridEntries::entryBegins, &grid.view, [&] { tell("begins"); });
    connect(&grid.view.entries(), &GridEntries::entryEnds, &grid.view, [&] { tell("ends"); });
    connect(&grid.view.entries(), &GridEntries::entryCloses, &grid.view, [&] { tell("closes"); });
    grid.setCursor(0, 1);
    grid.type(QStringLiteral("42"));
    grid.press(Qt::Key_Return);
    QCOMPARE(told, QStringList({QStringLiteral("0 begins"), QStringLiteral("0 ends"),
                                QStringLiteral("1 closes")}));
}

void TestGridEditing::entryThatIsLeft_closesOnly() {
    ShownGrid grid(image(), true);
    int begun = 0;
    int ended = 0;
    int closed = 0;
    connect(&grid.view.entries(), &GridEntries::entryBegins, &grid.view, [&] { ++begun; });
    connect(&grid.view.entries(), &GridEntries::entryEnds, &grid.view, [&] { ++ended; });
    connect(&grid.view.entries(), &GridEntries::entryCloses, &grid.view, [&] { ++closed; });
    grid.setCursor(0, 1);
    grid.press(Qt::Key_F2);
    grid.press(Qt::Key_Return); // nothing was typed
    grid.type(QStringLiteral("42"));
    grid.press(Qt::Key_Escape);
    QCOMPARE(begun, 2);
    QCOMPARE(closed, 2);
    QCOMPARE(ended, 0);
    grid.setCursor(0, charactersColumn); // which takes no entry
    grid.press(Qt::Key_F2);
    QVERIFY(grid.view.entries().editor());
    QCOMPARE(begun, 2);
}

QTEST_MAIN(TestGridEditing)
#include "tst_gridediting.moc"

#include "grid/CellEditor.h"
#include "grid/GridView.h"
#include "support/GridSourceDouble.h"

#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QScrollBar>
#include <QTest>

#include "grid/GridAccessible.h"

namespace {

/// A shown grid over a source.
struct Shown {
    explicit Shown(const QByteArray &bytes, bool editable = false) : source(bytes) {
        source.editable = editable;
        view.resize(900, 400);
        view.setAccessibleName(QStringLiteral("Bytes"));
        view.setSource(source);
        view.show();
        view.setFocus();
    }

    void go(int row, int column) { view.setCurrentIndex(view.gridModel()->index(row, column)); }
    /// The cursor as "row column".
    QString cursor() const {
        const QModelIndex current = view.currentIndex();
        return QStringLiteral("%1 %2").arg(current.row()).arg(current.column());
    }
    void type(const QString &text) {
        QTest::keyClicks(&view, text.left(1));
        QVERIFY(view.openEditor());
        QTest::keyClicks(view.openEditor(), text.mid(1));
    }

    GridSourceDouble source;
    GridView view;
};

// Press, release and the second press, as a mouse sends them.
void doubleClick(Shown &grid) {
    const QPoint place = grid.view.visualRect(grid.view.currentIndex()).center();
    QTest::mouseClick(grid.view.viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(grid.view.viewport(), Qt::LeftButton, {}, place);
}

QByteArray pages() {
    return QByteArray(16 * 1000, 'x');
}

} // namespace

class TestGridView : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { installGridAccessibility(); }
    void keys_moveTheCursor_data();
    void keys_moveTheCursor();
    void firstPaint_asksForTheVisibleRowsOnly();
    void hugeContent_scrollsToItsEnd();
    void reload_keepsItsPlace();
    void reload_ofAShorterContentKeepsWhatIsLeft();
    void showAddress_goesToTheByte();
    void editing_opensWhereTheSourceAllowsIt_data();
    void editing_opensWhereTheSourceAllowsIt();
    void editing_untouchedCommitsNothing();
    void editing_escapeCommitsNothing();
    void editing_losingTheFocusCommitsWhatChanged();
    void editing_movesOnPastTheBytesWritten();
    void editing_staysAfterARejectedEntry();
    void editing_wrapsToTheNextRow();
    void commitOpenEditor_commitsOnce();
    void copy_givesTheSelectedRows();
    void accessible_isATableOfCells();
    void accessible_readsTheContentOfTheMoment();
    void accessible_opensAnEditorByAction();
    void accessible_saysWhatFailed();
};

void TestGridView::keys_moveTheCursor_data() {
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("control");
    QTest::addColumn<QString>("cursor");
    QTest::newRow("up") << int(Qt::Key_Up) << false << QStringLiteral("4 5");
    QTest::newRow("down") << int(Qt::Key_Down) << false << QStringLiteral("6 5");
    QTest::newRow("left") << int(Qt::Key_Left) << false << QStringLiteral("5 4");
    QTest::newRow("right") << int(Qt::Key_Right) << false << QStringLiteral("5 6");
    QTest::newRow("home") << int(Qt::Key_Home) << false << QStringLiteral("5 0");
    QTest::newRow("end") << int(Qt::Key_End) << false << QStringLiteral("5 17");
    QTest::newRow("control home") << int(Qt::Key_Home) << true << QStringLiteral("0 0");
    QTest::newRow("control end") << int(Qt::Key_End) << true << QStringLiteral("1000 17");
}

void TestGridView::keys_moveTheCursor() {
    QFETCH(int, key);
    QFETCH(bool, control);
    Shown grid(pages());
    grid.go(5, 5);
    QTest::keyClick(&grid.view, Qt::Key(key), control ? Qt::ControlModifier : Qt::NoModifier);
    QTEST(grid.cursor(), "cursor");
    QVERIFY(
        grid.view.viewport()->rect().intersects(grid.view.visualRect(grid.view.currentIndex())));
}

void TestGridView::firstPaint_asksForTheVisibleRowsOnly() {
    qint64 questions[2] = {};
    const qint64 lengths[2] = {qint64(1) << 20, qint64(64) << 20};
    for (int i = 0; i < 2; ++i) {
        Shown grid{QByteArray()};
        grid.source.pretendedLength = lengths[i];
        grid.view.reloadData();
        grid.source.questions = 0;
        grid.view.grab();
        questions[i] = grid.source.questions;
    }
    QVERIFY(questions[0] > 0);
    QCOMPARE(questions[1], questions[0]);
    QVERIFY2(questions[0] < 18 * 100, qPrintable(QString::number(questions[0])));
}

void TestGridView::hugeContent_scrollsToItsEnd() {
    Shown grid{QByteArray()};
    grid.source.pretendedLength = qint64(1) << 30;
    grid.view.reloadData();
    QCOMPARE(grid.view.gridModel()->rowCount(), (1 << 26) + 1);
    grid.go(0, 1);
    QTest::keyClick(&grid.view, Qt::Key_End, Qt::ControlModifier);
    grid.view.grab();
    QCOMPARE(grid.cursor(), QStringLiteral("67108864 17"));
    const QRect last = grid.view.visualRect(grid.view.gridModel()->index(1 << 26, 1));
    QVERIFY(grid.view.viewport()->rect().contains(last));
    QCOMPARE(grid.view.indexAt(last.center()).row(), 1 << 26);
}

void TestGridView::reload_keepsItsPlace() {
    Shown grid(pages());
    grid.go(500, 3);
    const int scrolled = grid.view.verticalScrollBar()->value();
    QVERIFY(scrolled > 0);
    grid.view.reloadData();
    QCOMPARE(grid.cursor(), QStringLiteral("500 3"));
    QCOMPARE(grid.view.verticalScrollBar()->value(), scrolled);
}

void TestGridView::reload_ofAShorterContentKeepsWhatIsLeft() {
    Shown grid(pages());
    grid.go(500, 3);
    grid.source.bytes = QByteArray(40, 'y');
    grid.view.reloadData();
    QCOMPARE(grid.view.gridModel()->rowCount(), 3);
    QCOMPARE(grid.view.verticalScrollBar()->maximum(), 0);
    grid.view.grab();
}

void TestGridView::showAddress_goesToTheByte() {
    Shown grid(pages());
    QVERIFY(grid.view.showAddress(0x123));
    QCOMPARE(grid.cursor(), QStringLiteral("18 4"));
    QVERIFY(!grid.view.showAddress(qint64(1) << 40));
    QCOMPARE(grid.cursor(), QStringLiteral("18 4"));
}

void TestGridView::editing_opensWhereTheSourceAllowsIt_data() {
    QTest::addColumn<QString>("way");
    for (const char *way : {"typing", "F2", "double-click"})
        QTest::newRow(way) << QString::fromLatin1(way);
}

void TestGridView::editing_opensWhereTheSourceAllowsIt() {
    QFETCH(QString, way);
    for (const bool editable : {false, true}) {
        Shown grid("ABC", editable);
        grid.go(0, 2);
        if (way == QStringLiteral("typing"))
            QTest::keyClick(&grid.view, Qt::Key_7);
        else if (way == QStringLiteral("F2"))
            QTest::keyClick(&grid.view, Qt::Key_F2);
        else
            doubleClick(grid);
        QCOMPARE(grid.view.openEditor() != nullptr, editable);
    }
}

void TestGridView::editing_untouchedCommitsNothing() {
    Shown grid("ABC", true);
    grid.go(0, 2);
    QTest::keyClick(&grid.view, Qt::Key_F2);
    QCOMPARE(grid.view.openEditor()->text(), QStringLiteral("42"));
    QTest::keyClick(grid.view.openEditor(), Qt::Key_Return);
    QCOMPARE(grid.source.entries, QStringList());
}

void TestGridView::editing_escapeCommitsNothing() {
    Shown grid("ABC", true);
    grid.go(0, 2);
    grid.type(QStringLiteral("7a"));
    QTest::keyClick(grid.view.openEditor(), Qt::Key_Escape);
    QVERIFY(!grid.view.openEditor());
    QCOMPARE(grid.source.entries, QStringList());
    QCOMPARE(grid.cursor(), QStringLiteral("0 2"));
}

void TestGridView::editing_losingTheFocusCommitsWhatChanged() {
    QWidget window;
    Shown grid("ABC", true);
    QLineEdit elsewhere(&window);
    window.show();
    grid.go(0, 2);
    grid.type(QStringLiteral("7a"));
    QFocusEvent leaving(QEvent::FocusOut, Qt::TabFocusReason);
    QApplication::sendEvent(grid.view.openEditor(), &leaving);
    QCOMPARE(grid.source.entries, QStringList(QStringLiteral("2 0 7a")));
}

void TestGridView::editing_movesOnPastTheBytesWritten() {
    Shown grid("0123456789", true);
    grid.go(0, 2);
    grid.type(QStringLiteral("'abc'"));
    QTest::keyClick(grid.view.openEditor(), Qt::Key_Return);
    QTRY_COMPARE(grid.source.bytes, QByteArray("0abc456789"));
    QTRY_COMPARE(grid.cursor(), QStringLiteral("0 5"));
}

void TestGridView::editing_staysAfterARejectedEntry() {
    Shown grid("0123456789", true);
    grid.go(0, 2);
    grid.type(QStringLiteral("zz"));
    QTest::keyClick(grid.view.openEditor(), Qt::Key_Return);
    QTRY_VERIFY(!grid.view.openEditor());
    QCOMPARE(grid.cursor(), QStringLiteral("0 2"));
}

void TestGridView::editing_wrapsToTheNextRow() {
    Shown grid(QByteArray(40, 'x'), true);
    grid.go(0, 16);
    grid.type(QStringLiteral("7a"));
    QTest::keyClick(grid.view.openEditor(), Qt::Key_Return);
    QTRY_COMPARE(grid.cursor(), QStringLiteral("1 1"));
}

void TestGridView::commitOpenEditor_commitsOnce() {
    Shown grid("ABC", true);
    QVERIFY(!grid.view.commitOpenEditor());
    grid.go(0, 2);
    grid.type(QStringLiteral("7a"));
    QVERIFY(grid.view.commitOpenEditor());
    QVERIFY(!grid.view.openEditor());
    QCoreApplication::processEvents();
    QCOMPARE(grid.source.entries, QStringList(QStringLiteral("2 0 7a")));
}

void TestGridView::copy_givesTheSelectedRows() {
    Shown grid(QByteArray("0123456789ABCDEFxyz"));
    grid.view.selectAll();
    QTest::keySequence(&grid.view, QKeySequence::Copy);
    const QString copied = QGuiApplication::clipboard()->text();
    const QStringList lines = copied.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    QCOMPARE(lines.size(), 2);
    QVERIFY2(lines.at(0).startsWith(QStringLiteral("0000")) &&
                 lines.at(0).endsWith(QStringLiteral("0123456789ABCDEF")),
             qPrintable(copied));
    QVERIFY2(lines.at(1).contains(QStringLiteral("78 79 7A")), qPrintable(copied));
}

void TestGridView::accessible_isATableOfCells() {
    Shown grid("ABC");
    QAccessibleInterface *table = QAccessible::queryAccessibleInterface(&grid.view);
    QVERIFY(table);
    QCOMPARE(table->role(), QAccessible::Table);
    QCOMPARE(table->text(QAccessible::Name), QStringLiteral("Bytes"));
    QAccessibleTableInterface *cells = table->tableInterface();
    QVERIFY(cells);
    QCOMPARE(cells->rowCount(), 1);
    QCOMPARE(cells->columnCount(), gridColumns);
    QAccessibleInterface *cell = cells->cellAt(0, 2);
    QVERIFY(cell && cell->isValid());
    QCOMPARE(cell->text(QAccessible::Name), QStringLiteral("42"));
    QCOMPARE(cell->tableCellInterface()->columnIndex(), 2);
    QCOMPARE(cell->parent(), table);
    QCOMPARE(table->child(table->indexOfChild(cell)), cell);
    QVERIFY(!cells->cellAt(7, 0));
    QVERIFY(cell->rect().isValid());
}

void TestGridView::accessible_readsTheContentOfTheMoment() {
    Shown grid("ABC");
    QAccessibleTableInterface *cells =
        QAccessible::queryAccessibleInterface(&grid.view)->tableInterface();
    QCOMPARE(cells->cellAt(0, 1)->text(QAccessible::Name), QStringLiteral("41"));
    grid.source.bytes = QByteArray(40, 'z');
    grid.view.reloadData();
    QCOMPARE(cells->rowCount(), 3);
    QCOMPARE(cells->cellAt(0, 1)->text(QAccessible::Name), QStringLiteral("7A"));
}

void TestGridView::accessible_opensAnEditorByAction() {
    Shown grid("ABC", true);
    QAccessibleInterface *cell =
        QAccessible::queryAccessibleInterface(&grid.view)->tableInterface()->cellAt(0, 3);
    QAccessibleActionInterface *actions = cell->actionInterface();
    QVERIFY(actions && !actions->actionNames().isEmpty());
    for (const QString &name : actions->actionNames())
        actions->doAction(name);
    QTRY_VERIFY(grid.view.openEditor());
    QCOMPARE(grid.cursor(), QStringLiteral("0 3"));
}

void TestGridView::accessible_saysWhatFailed() {
    Shown grid{QByteArray()};
    grid.source.report = {{{QStringLiteral("")}, {QStringLiteral("1")}},
                          {{QStringLiteral("0000:")}, {QStringLiteral("H"), true}}};
    grid.view.reloadData();
    QAccessibleInterface *cell =
        QAccessible::queryAccessibleInterface(&grid.view)->tableInterface()->cellAt(1, 1);
    QCOMPARE(cell->text(QAccessible::Name), QStringLiteral("H"));
    const QString description = cell->text(QAccessible::Description);
    QVERIFY2(description.contains(QStringLiteral("fail"), Qt::CaseInsensitive),
             qPrintable(description));
}

QTEST_MAIN(TestGridView)
#include "tst_gridview.moc"

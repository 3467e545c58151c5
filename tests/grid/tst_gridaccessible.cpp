// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "grid/GridAccessible.h"
#include "support/ShownGrid.h"

#include <QAccessible>
#include <QHeaderView>

class TestGridAccessible : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void grid_isATableWithItsName();
    void cells_tellTheirContents();
    void cells_tellTheirPlace();
    void cells_tellTheirState();
    void children_areTheCellsAndThenTheTitles();
    void children_ofTheLargestImageAreCounted();
    void titles_areColumnHeaders();
    void childAt_findsCellsAndTitles();
    void selection_isOfRows();
    void largeSelection_isListedInPart();
    void block_isOfCells();
    void cells_stayGoodAcrossReloads();
    void cells_areMadeAnewWhenThereWereMany();
    void cursor_isTheFocusedChild();
    void pressing_opensTheEditor();
    void pressing_whereNothingMayBeEditedDoesNothing();
    void pressing_whileNoCellMayOpenDoesNothing();
    void entry_canBeMadeByAssistiveTechnologyAlone();
};

namespace {

struct AccessibleGrid : ShownGrid {
    using ShownGrid::ShownGrid;

    QAccessibleInterface *interface() { return QAccessible::queryAccessibleInterface(&view); }
    QAccessibleTableInterface *table() { return interface()->tableInterface(); }
    QAccessibleInterface *at(int row, int column) { return table()->cellAt(row, column); }
    QString name(int row, int column) { return at(row, column)->text(QAccessible::Name); }
    void act(int row, int column, const QString &action) {
        at(row, column)->actionInterface()->doAction(action);
    }
};

} // namespace

void TestGridAccessible::initTestCase() {
    installGridAccessibility();
}

void TestGridAccessible::grid_isATableWithItsName() {
    AccessibleGrid grid("AB");
    grid.view.setAccessibleName(QStringLiteral("Bytes"));
    QCOMPARE(grid.interface()->role(), QAccessible::Table);
    QCOMPARE(grid.interface()->text(QAccessible::Name), QStringLiteral("Bytes"));
    QVERIFY(grid.interface()->state().focusable);
    QVERIFY(grid.interface()->state().multiSelectable);
    QCOMPARE(grid.table()->rowCount(), 1);
    QCOMPARE(grid.table()->columnCount(), 18);
    QCOMPARE(grid.table()->columnDescription(0), QStringLiteral("Address"));
    QCOMPARE(grid.table()->columnDescription(17), QStringLiteral("Characters"));
    QCOMPARE(grid.table()->columnDescription(18), QString());
    QCOMPARE(grid.table()->rowDescription(0), QStringLiteral("0000"));
    QCOMPARE(grid.table()->rowDescription(1), QString());
}

void TestGridAccessible::cells_tellTheirContents() {
    AccessibleGrid grid("AB");
    QStringList names;
    for (int column = 0; column < gridColumns; ++column)
        names.append(grid.name(0, column));
    QCOMPARE(names.join(u' '),
             QStringLiteral("0000 41 42 XX XX XX XX XX XX XX XX XX XX XX XX XX XX AB"));
    QCOMPARE(grid.at(0, 3)->text(QAccessible::Description), QStringLiteral("no byte"));
    QCOMPARE(grid.at(0, 2)->text(QAccessible::Description), QString());
    QCOMPARE(grid.at(1, 0), nullptr);
    QCOMPARE(grid.at(0, 18), nullptr);
    QCOMPARE(grid.at(-1, 0), nullptr);

    grid.source.report = {{{QStringLiteral("0000:")}, {QStringLiteral("H"), true}}};
    QCOMPARE(grid.name(0, 1), QStringLiteral("H"));
    QCOMPARE(grid.at(0, 1)->text(QAccessible::Description), QStringLiteral("failed"));
}

void TestGridAccessible::cells_tellTheirPlace() {
    AccessibleGrid grid(QByteArray(100, 'A'));
    QAccessibleInterface *cell = grid.at(3, 5);
    const QRect inView = grid.view.visualRect(grid.cell(3, 5));
    QCOMPARE(cell->rect(),
             QRect(grid.view.viewport()->mapToGlobal(inView.topLeft()), inView.size()));
    QCOMPARE(cell->parent(), grid.interface());
    QAccessibleTableCellInterface *place = cell->tableCellInterface();
    QCOMPARE(qMakePair(place->rowIndex(), place->columnIndex()), qMakePair(3, 5));
    QCOMPARE(place->table(), grid.interface());
    QCOMPARE(place->columnHeaderCells().value(0)->text(QAccessible::Name), QStringLiteral("4"));
    QCOMPARE(place->rowHeaderCells().value(0)->text(QAccessible::Name), QStringLiteral("0030"));
}

void TestGridAccessible::cells_tellTheirState() {
    AccessibleGrid grid(QByteArray(6000, 'A'), true);
    grid.click(1, 2);
    const QAccessible::State current = grid.at(1, 2)->state();
    QVERIFY(current.focusable && current.focused && current.selectable && current.selected);
    QVERIFY(current.editable && !current.readOnly && !current.offscreen);
    const QAccessible::State neighbour = grid.at(1, 3)->state();
    QVERIFY(!neighbour.focused && neighbour.selected);
    const QAccessible::State far = grid.at(300, 3)->state();
    QVERIFY(!far.focused && !far.selected && far.offscreen);
    grid.source.editable = false;
    QVERIFY(!grid.at(1, 2)->state().editable && grid.at(1, 2)->state().readOnly);
    grid.view.setEnabled(false);
    QVERIFY(grid.at(1, 2)->state().disabled);
}

void TestGridAccessible::children_areTheCellsAndThenTheTitles() {
    AccessibleGrid grid(QByteArray(20, 'A'));
    QAccessibleInterface *table = grid.interface();
    QCOMPARE(table->childCount(), 3 * 18);
    for (int index = 0; index < table->childCount(); ++index) {
        QVERIFY(table->child(index));
        QCOMPARE(table->indexOfChild(table->child(index)), index);
    }
    QCOMPARE(table->child(18 + 4), grid.at(1, 4));
    QCOMPARE(table->child(36)->text(QAccessible::Name), QStringLiteral("Address"));
    QCOMPARE(table->child(-1), nullptr);
    QCOMPARE(table->child(54), nullptr);
    QCOMPARE(table->indexOfChild(nullptr), -1);
}

void TestGridAccessible::children_ofTheLargestImageAreCounted() {
    AccessibleGrid grid({}, false, qint64(1) << 30);
    QCOMPARE(grid.table()->rowCount(), 67108865);
    QCOMPARE(grid.interface()->childCount(), 67108866 * 18);
    QCOMPARE(grid.name(67108864, 0), QStringLiteral("40000000"));
    QCOMPARE(grid.interface()->indexOfChild(grid.at(67108864, 17)), 67108865 * 18 - 1);
}

void TestGridAccessible::titles_areColumnHeaders() {
    AccessibleGrid grid("A");
    QAccessibleInterface *title = grid.interface()->child(18 + 17);
    QCOMPARE(title->role(), QAccessible::ColumnHeader);
    QCOMPARE(title->parent(), grid.interface());
    QVERIFY(title->rect().isValid());
    grid.view.setHeading(GridHeading::Pins);
    QCOMPARE(title->text(QAccessible::Name), QStringLiteral("Pin 17"));
}

void TestGridAccessible::childAt_findsCellsAndTitles() {
    AccessibleGrid grid(QByteArray(100, 'A'), true);
    QAccessibleInterface *table = grid.interface();
    const auto under = [&](QAccessibleInterface *child) {
        return table->childAt(child->rect().center().x(), child->rect().center().y());
    };
    QCOMPARE(under(grid.at(2, 4)), grid.at(2, 4));
    QCOMPARE(under(table->child(7 * 18 + 3)), table->child(7 * 18 + 3));
    const QRect below = grid.at(6, 4)->rect().translated(0, 2 * grid.view.rowHeight());
    QCOMPARE(table->childAt(below.center().x(), below.center().y()), nullptr);
    QCOMPARE(table->childAt(-1000, -1000), nullptr);
}

void TestGridAccessible::selection_isOfRows() {
    AccessibleGrid grid(QByteArray(100, 'A'));
    QVERIFY(grid.table()->selectRow(1));
    QVERIFY(grid.table()->selectRow(4));
    QCOMPARE(grid.table()->selectedRows(), QList<int>({1, 4}));
    QCOMPARE(grid.table()->selectedRowCount(), 2);
    QCOMPARE(grid.table()->selectedCellCount(), 36);
    QCOMPARE(grid.table()->selectedCells().value(18), grid.at(4, 0));
    QVERIFY(grid.table()->isRowSelected(4));
    QVERIFY(grid.at(4, 9)->tableCellInterface()->isSelected());
    QVERIFY(grid.table()->unselectRow(1));
    QCOMPARE(grid.table()->selectedRows(), QList<int>({4}));
    QVERIFY(!grid.table()->selectRow(7));
    QVERIFY(!grid.table()->selectColumn(3));
    QVERIFY(!grid.table()->unselectColumn(3));
    QCOMPARE(grid.table()->selectedColumnCount(), 0);
    QCOMPARE(grid.table()->selectedColumns(), QList<int>());
    QVERIFY(!grid.table()->isColumnSelected(3));
}

void TestGridAccessible::largeSelection_isListedInPart() {
    AccessibleGrid grid({}, false, qint64(1) << 30);
    grid.view.selectionModel()->select(QItemSelection(grid.cell(0, 0), grid.cell(67108864, 17)),
                                       QItemSelectionModel::ClearAndSelect);
    QCOMPARE(grid.table()->selectedRowCount(), 67108865);
    QVERIFY(grid.table()->selectedRows().size() < 10000);
    QVERIFY(grid.table()->selectedCells().size() < 10000);
    grid.view.selectAll();
    QCOMPARE(grid.table()->selectedCellCount(), 1 << 30);
    QVERIFY(grid.table()->selectedCells().size() < 10000);
}

void TestGridAccessible::block_isOfCells() {
    AccessibleGrid grid(QByteArray(100, 'A'));
    grid.view.selection().select({30, 4});
    QCOMPARE(grid.table()->selectedRowCount(), 0);
    QCOMPARE(grid.table()->selectedCellCount(), 4);
    QCOMPARE(grid.table()->selectedCells(), QList<QAccessibleInterface *>({
                                                grid.at(1, 15),
                                                grid.at(1, 16),
                                                grid.at(2, 1),
                                                grid.at(2, 2),
                                            }));
    QVERIFY(grid.at(1, 15)->state().selected && grid.at(2, 2)->state().selected);
    QVERIFY(!grid.at(1, 14)->state().selected && !grid.at(2, 3)->state().selected);
    QVERIFY(!grid.at(1, 0)->state().selected);
    // Rows that assistive technology selects take its place.
    QVERIFY(grid.table()->selectRow(4));
    QVERIFY(!grid.view.selection().hasBlock());
    QCOMPARE(grid.table()->selectedRows(), QList<int>({4}));
}

void TestGridAccessible::cells_stayGoodAcrossReloads() {
    AccessibleGrid grid(QByteArray(20, 'A'));
    QAccessibleInterface *first = grid.at(0, 1);
    QAccessibleInterface *last = grid.at(1, 1);
    grid.source.bytes = "B";
    grid.view.reloadData();
    QCOMPARE(first->text(QAccessible::Name), QStringLiteral("42"));
    QVERIFY(!last->isValid());
    QCOMPARE(last->text(QAccessible::Name), QString());
    QVERIFY(last->state().invalid);
    QCOMPARE(grid.interface()->indexOfChild(last), -1);
    grid.source.bytes = QByteArray(20, 'C');
    grid.view.reloadData();
    QVERIFY(last->isValid());
    QCOMPARE(last->text(QAccessible::Name), QStringLiteral("43"));
    QCOMPARE(grid.at(1, 1), last);
}

void TestGridAccessible::cells_areMadeAnewWhenThereWereMany() {
    AccessibleGrid grid({}, false, 1 << 20);
    const QAccessible::Id id = QAccessible::uniqueId(grid.at(0, 0));
    for (int row = 0; row < 2000; ++row)
        for (int column = 0; column < gridColumns; ++column)
            QVERIFY(grid.at(row, column)->isValid());
    QCOMPARE(QAccessible::accessibleInterface(id), nullptr);
    QCOMPARE(grid.name(0, 0), QStringLiteral("0000"));
}

void TestGridAccessible::cursor_isTheFocusedChild() {
    AccessibleGrid grid("ABCD");
    grid.click(0, 1);
    QCOMPARE(grid.interface()->focusChild(), grid.at(0, 1));
    grid.press(Qt::Key_Right);
    QCOMPARE(grid.interface()->focusChild(), grid.at(0, 2));
}

void TestGridAccessible::pressing_opensTheEditor() {
    AccessibleGrid grid("ABCD", true);
    const QString press = QAccessibleActionInterface::pressAction();
    QVERIFY(grid.at(0, 2)->actionInterface()->actionNames().contains(press));
    QVERIFY(!grid.at(0, 2)->actionInterface()->keyBindingsForAction(press).isEmpty());
    grid.act(0, 2, press);
    QCOMPARE(grid.cursor(), qMakePair(0, 2));
    QCOMPARE(grid.typed(), QStringLiteral("42"));

    // The editor is reached through the table, and leads back to it.
    QAccessibleInterface *editor = grid.interface()->focusChild();
    QCOMPARE(editor->object(), grid.view.entries().editor());
    QAccessibleInterface *area = grid.interface()->child(grid.interface()->childCount() - 1);
    QCOMPARE(area->object(), grid.view.viewport());
    QCOMPARE(grid.interface()->indexOfChild(area), grid.interface()->childCount() - 1);
    QCOMPARE(area->child(0), editor);
    QCOMPARE(editor->parent(), area);
    QCOMPARE(area->parent(), grid.interface());
}

void TestGridAccessible::pressing_whereNothingMayBeEditedDoesNothing() {
    AccessibleGrid grid("ABCD", false);
    const QString press = QAccessibleActionInterface::pressAction();
    QVERIFY(!grid.at(0, 2)->actionInterface()->actionNames().contains(press));
    grid.setCursor(0, 1);
    grid.act(0, 2, press);
    QVERIFY(!grid.view.entries().editor());
    QCOMPARE(grid.cursor(), qMakePair(0, 1));
    grid.act(0, 2, QAccessibleActionInterface::setFocusAction());
    QCOMPARE(grid.cursor(), qMakePair(0, 2));
}

void TestGridAccessible::pressing_whileNoCellMayOpenDoesNothing() {
    AccessibleGrid grid("ABC", true);
    const QString press = QAccessibleActionInterface::pressAction();
    grid.view.setEditTriggers(QAbstractItemView::NoEditTriggers);
    QVERIFY(!grid.at(0, 2)->actionInterface()->actionNames().contains(press));
    QVERIFY(!grid.at(0, 2)->state().editable);
    grid.act(0, 2, press);
    QVERIFY(!grid.view.entries().editor());
    grid.view.setEditTriggers(GridView::usualEditTriggers);
    grid.act(0, 2, press);
    QVERIFY(grid.view.entries().editor());
}

void TestGridAccessible::entry_canBeMadeByAssistiveTechnologyAlone() {
    AccessibleGrid grid("ABCD", true);
    grid.act(0, 2, QAccessibleActionInterface::pressAction());
    grid.interface()->focusChild()->setText(QAccessible::Value, QStringLiteral("5A"));
    grid.act(0, 4, QAccessibleActionInterface::setFocusAction());
    QCOMPARE(grid.source.entries, QStringList{QStringLiteral("2 0 5A")});
    QCOMPARE(grid.name(0, 2), QStringLiteral("5A"));
    QVERIFY(!grid.view.entries().editor());
}

QTEST_MAIN(TestGridAccessible)
#include "tst_gridaccessible.moc"

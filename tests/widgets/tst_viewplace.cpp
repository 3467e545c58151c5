// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "widgets/ViewPlace.h"

#include <QScrollBar>
#include <QStandardItemModel>
#include <QTableView>
#include <QTest>

#include <algorithm>

class TestViewPlace : public QObject {
    Q_OBJECT

private slots:
    void place_outlivesAReset();
    void place_ofRowsThatAreGoneIsLost();
    void wholeRows_areThoseThatExist_data();
    void wholeRows_areThoseThatExist();
};

namespace {

/// A table that shows a few cells of its many, and can be reset.
struct Table {
    Table() : model(200, 40) {
        view.setModel(&model);
        view.setSelectionBehavior(QTableView::SelectRows);
        view.setSelectionMode(QTableView::ExtendedSelection);
        view.resize(300, 200);
        view.show();
        shown = QTest::qWaitForWindowExposed(&view);
    }

    void select(int first, int last) {
        view.selectionModel()->select(wholeRows(model, first, last), QItemSelectionModel::Select);
    }
    void reset(int rows) {
        model.clear();
        model.setRowCount(rows);
        model.setColumnCount(40);
        QCoreApplication::processEvents(); // the table's scroll bars follow later
    }
    QList<int> selectedRows() const {
        QList<int> rows;
        for (const QModelIndex &index : view.selectionModel()->selectedRows())
            rows.append(index.row());
        std::sort(rows.begin(), rows.end());
        return rows;
    }

    QStandardItemModel model;
    QTableView view;
    bool shown = false;
};

} // namespace

void TestViewPlace::place_outlivesAReset() {
    Table table;
    QVERIFY(table.shown);
    table.view.setCurrentIndex(table.model.index(50, 7));
    table.select(99, 100);
    table.view.horizontalScrollBar()->setValue(11);
    table.view.verticalScrollBar()->setValue(90);
    const ViewPlace place = placeOf(table.view);
    table.reset(150);
    QVERIFY(!table.view.currentIndex().isValid());

    returnTo(place, table.view);
    QCOMPARE(table.view.currentIndex(), table.model.index(50, 7));
    QCOMPARE(table.selectedRows(), QList<int>({50, 99, 100}));
    QCOMPARE(table.view.horizontalScrollBar()->value(), 11);
    QCOMPARE(table.view.verticalScrollBar()->value(), 90);
}

void TestViewPlace::place_ofRowsThatAreGoneIsLost() {
    Table table;
    table.view.setCurrentIndex(table.model.index(150, 7));
    table.select(97, 101);
    const ViewPlace place = placeOf(table.view);
    table.reset(100);

    returnTo(place, table.view);
    QVERIFY(!table.view.currentIndex().isValid());
    QCOMPARE(table.selectedRows(), QList<int>({97, 98, 99}));
}

void TestViewPlace::wholeRows_areThoseThatExist_data() {
    QTest::addColumn<qint64>("first");
    QTest::addColumn<qint64>("last");
    QTest::addColumn<int>("top");
    QTest::addColumn<int>("height");
    QTest::newRow("one") << qint64(2) << qint64(2) << 2 << 1;
    QTest::newRow("all") << qint64(0) << qint64(4) << 0 << 5;
    QTest::newRow("more than there are") << -(qint64(1) << 40) << (qint64(1) << 40) << 0 << 5;
    QTest::newRow("beyond the last") << qint64(5) << qint64(7) << -1 << 0;
    QTest::newRow("before the first") << qint64(-7) << qint64(-1) << -1 << 0;
}

void TestViewPlace::wholeRows_areThoseThatExist() {
    QFETCH(const qint64, first);
    QFETCH(const qint64, last);
    QFETCH(const int, top);
    QFETCH(const int, height);
    const QStandardItemModel model(5, 3);
    const QItemSelection rows = wholeRows(model, first, last);
    QCOMPARE(rows.size(), height == 0 ? 0 : 1);
    if (rows.isEmpty())
        return;
    QCOMPARE(rows.first().top(), top);
    QCOMPARE(rows.first().height(), height);
    QCOMPARE(rows.first().width(), 3);
}

QTEST_MAIN(TestViewPlace)
#include "tst_viewplace.moc"

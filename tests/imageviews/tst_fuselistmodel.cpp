// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "imageviews/FuseListModel.h"

#include <QAbstractItemModelTester>
#include <QTest>

/// Fuses as a table.
class TestFuseListModel : public QObject {
    Q_OBJECT

private slots:
    void table_showsEachLine();
    void copy_takesRowsInTheirOrder();
    void otherLines_replaceThem();

private:
    static QString picture(const FuseListModel &model);
};

// The rows, their cells separated by "|".
QString TestFuseListModel::picture(const FuseListModel &model) {
    QStringList rows;
    for (int row = 0; row < model.rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < model.columnCount(); ++column)
            cells << model.index(row, column).data().toString();
        rows << cells.join(u'|');
    }
    return rows.join(u'\n');
}

void TestFuseListModel::table_showsEachLine() {
    FuseListModel model;
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.setLines(readFuseText("fuses_lo = 0x62\nwhat is this?\nword=0x3ff0\n"));
    QCOMPARE(picture(model), QStringLiteral("fuses_lo|0x62|0110 0010\nwhat is this?|says no fuse|\n"
                                            "word|0x3FF0|0011 1111 1111 0000"));
    QVERIFY(model.index(0, 0).data(Qt::ToolTipRole).isNull());
    QVERIFY(model.index(1, 0).data(Qt::ToolTipRole).toString().contains(u"what is this?"));
    QStringList headings;
    for (int column = 0; column < model.columnCount(); ++column)
        headings << model.headerData(column, Qt::Horizontal).toString();
    QCOMPARE(headings, (QStringList{QStringLiteral("Name"), QStringLiteral("Hexadecimal"),
                                    QStringLiteral("Binary")}));
}

void TestFuseListModel::copy_takesRowsInTheirOrder() {
    FuseListModel model;
    model.setLines(readFuseText("a=0x1\n?\nb=0x2\nc=0x3\n"));
    const QModelIndexList chosen = {model.index(2, 0), model.index(1, 0), model.index(2, 1),
                                    model.index(0, 0)};
    QCOMPARE(model.textOf(chosen), QStringLiteral("a\t0x1\t0001\n?\nb\t0x2\t0010\n"));
    QCOMPARE(model.textOf({}), QString());
}

void TestFuseListModel::otherLines_replaceThem() {
    FuseListModel model;
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.setLines(readFuseText("a=0x1\nb=0x2\n"));
    model.setLines(readFuseText("c=0x3\n"));
    QCOMPARE(picture(model), QStringLiteral("c|0x3|0011"));
    model.setLines({});
    QCOMPARE(model.rowCount(), 0);
}

QTEST_MAIN(TestFuseListModel)
#include "tst_fuselistmodel.moc"

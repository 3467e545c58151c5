// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "grid/GridModel.h"
#include "support/GridSourceDouble.h"
#include "support/MarksDouble.h"

#include <QAbstractItemModelTester>
#include <QMimeData>
#include <QSignalSpy>
#include <QTest>

class TestGridModel : public QObject {
    Q_OBJECT

private slots:
    void columns_haveTheirIdentifiers();
    void columnNumber_data();
    void columnNumber();
    void cells_areAskedFromTheSource();
    void bytes_areCountedToTheFirstThatIsMissing_data();
    void bytes_areCountedToTheFirstThatIsMissing();
    void rows_areTakenAtAReload();
    void reload_resets();
    void edit_changesDataWithoutAReset();
    void edit_thatGrowsTheBytesInsertsRows();
    void edit_ofACellThatMayNotBeEditedIsRefused();
    void address_opensEmpty();
    void descriptions_tellFailuresAndMissingBytes();
    void marks_belongToBytesAlone();
    void titles_followTheHeading();
    void drops_areAnsweredByTheSourceAndNeverTaken();
    void everyQuestionOfTheTesterIsAnswered();
};

void TestGridModel::columns_haveTheirIdentifiers() {
    for (int column = 0; column < gridColumns; ++column) {
        QCOMPARE(columnIdentifier(column), QString::number(column));
        QCOMPARE(::columnNumber(columnIdentifier(column)), column);
    }
}

void TestGridModel::columnNumber_data() {
    QTest::addColumn<QString>("identifier");
    QTest::addColumn<int>("number");
    QTest::newRow("no number is 0") << QStringLiteral("address") << 0;
    QTest::newRow("nothing is 0") << QString() << 0;
    QTest::newRow("the leading number counts") << QStringLiteral(" 12th") << 12;
    QTest::newRow("a sign counts") << QStringLiteral("-3") << -3;
    QTest::newRow("too large a number is held at the limit")
        << QStringLiteral("99999999999999999999999") << 2147483647;
    QTest::newRow("too small a number is held at the limit")
        << QStringLiteral("-99999999999999999999999") << -2147483647 - 1;
}

void TestGridModel::columnNumber() {
    QFETCH(QString, identifier);
    QTEST(::columnNumber(identifier), "number");
}

void TestGridModel::cells_areAskedFromTheSource() {
    GridSourceDouble source("ABC");
    QObject table;
    GridModel model(source, &table);
    model.reloadData();
    QCOMPARE(model.data(model.index(0, 0)), QVariant(QStringLiteral("0000")));
    QCOMPARE(model.data(model.index(0, 1)), QVariant(QStringLiteral("41")));
    QCOMPARE(model.data(model.index(0, 4)), QVariant(QStringLiteral("XX")));
    QCOMPARE(model.data(model.index(0, 17)), QVariant(QStringLiteral("ABC")));
    QCOMPARE(model.data(model.index(0, 1), Qt::EditRole), QVariant(QStringLiteral("41")));
    QCOMPARE(source.asker, &table);
    source.bytes = "Z";
    QCOMPARE(model.data(model.index(0, 1)), QVariant(QStringLiteral("5A")));
}

void TestGridModel::bytes_areCountedToTheFirstThatIsMissing_data() {
    QTest::addColumn<int>("length");
    for (const int length : {0, 1, 15, 16, 17, 31, 32, 1000})
        QTest::addRow("%d", length) << length;
}

void TestGridModel::bytes_areCountedToTheFirstThatIsMissing() {
    QFETCH(int, length);
    GridSourceDouble source(QByteArray(length, 'A'));
    GridModel model(source, nullptr);
    QCOMPARE(model.byteCount(), 0);
    model.reloadData();
    QCOMPARE(model.byteCount(), length);
    model.setHeading(GridHeading::Pins);
    QCOMPARE(model.byteCount(), 0);
}

void TestGridModel::rows_areTakenAtAReload() {
    GridSourceDouble source(QByteArray(40, 'A'));
    GridModel model(source, nullptr);
    QCOMPARE(model.rowCount(), 0);
    model.reloadData();
    QCOMPARE(model.rowCount(), 3);
    source.bytes.clear();
    QCOMPARE(model.rowCount(), 3);
    model.reloadData();
    QCOMPARE(model.rowCount(), 1);
    source.pretendedLength = qint64(1) << 30;
    model.reloadData();
    QCOMPARE(model.rowCount(), 67108865);
}

void TestGridModel::reload_resets() {
    GridSourceDouble source("A");
    GridModel model(source, nullptr);
    QSignalSpy resets(&model, &GridModel::modelReset);
    model.reloadData();
    model.reloadData();
    QCOMPARE(resets.count(), 2);
}

namespace {

/// What a model announced, in order.
QStringList announcements(GridModel &model, const std::function<void()> &action) {
    QStringList heard;
    QObject context;
    QObject::connect(&model, &GridModel::modelReset, &context,
                     [&] { heard.append(QStringLiteral("reset")); });
    QObject::connect(&model, &GridModel::rowsInserted, &context,
                     [&](const QModelIndex &, int first, int last) {
                         heard.append(QStringLiteral("rows %1 to %2").arg(first).arg(last));
                     });
    QObject::connect(&model, &GridModel::dataChanged, &context,
                     [&](const QModelIndex &first, const QModelIndex &last) {
                         heard.append(QStringLiteral("data %1,%2 to %3,%4")
                                          .arg(first.row())
                                          .arg(first.column())
                                          .arg(last.row())
                                          .arg(last.column()));
                     });
    action();
    return heard;
}

/// A source that reloads the model after an entry, as a controller without a view would.
class EditedSource final : public GridSource {
public:
    quint64 numberOfRowsInTableView(QObject *) override { return rows; }
    CellValue tableView_objectValueForTableColumn_row(QObject *, const QString &, qint64) override {
        return {value};
    }
    bool tableView_shouldEditTableColumn_row(QObject *, const QString &column, qint64) override {
        return column != u"3";
    }
    void tableView_setObjectValue_forTableColumn_row(QObject *, const QString &text,
                                                     const QString &, qint64 row) override {
        value = text;
        rows = rowsAfterEdit;
        model->showChange({row * bytesInRow, 1});
    }
    bool tableView_shouldSelectRow(QObject *, qint64) override { return true; }
    bool tableView_shouldSelectTableColumn(QObject *, const QString &) override { return false; }
    DragOperation tableView_validateDrop_proposedRow_proposedDropOperation(QObject *,
                                                                           const QMimeData *,
                                                                           qint64, int) override {
        return DragOperation::None;
    }

    GridModel *model = nullptr;
    quint64 rows = 2;
    quint64 rowsAfterEdit = 2;
    QString value = QStringLiteral("before");
};

} // namespace

void TestGridModel::edit_changesDataWithoutAReset() {
    EditedSource source;
    GridModel model(source, nullptr);
    source.model = &model;
    model.reloadData();
    const auto heard = announcements(
        model, [&] { QVERIFY(model.setData(model.index(1, 2), QStringLiteral("after"))); });
    QCOMPARE(heard, QStringList({QStringLiteral("data 1,0 to 1,17")}));
    QCOMPARE(model.data(model.index(1, 2)), QVariant(QStringLiteral("after")));
}

void TestGridModel::edit_thatGrowsTheBytesInsertsRows() {
    EditedSource source;
    source.rowsAfterEdit = 4;
    GridModel model(source, nullptr);
    source.model = &model;
    model.reloadData();
    const auto heard =
        announcements(model, [&] { model.setData(model.index(1, 2), QStringLiteral("long")); });
    QCOMPARE(heard,
             QStringList({QStringLiteral("rows 2 to 3"), QStringLiteral("data 1,0 to 1,17")}));
    QCOMPARE(model.rowCount(), 4);
}

void TestGridModel::edit_ofACellThatMayNotBeEditedIsRefused() {
    EditedSource source;
    GridModel model(source, nullptr);
    source.model = &model;
    model.reloadData();
    QVERIFY(!model.flags(model.index(0, 3)).testFlag(Qt::ItemIsEditable));
    QVERIFY(!model.setData(model.index(0, 3), QStringLiteral("after")));
    QVERIFY(!model.setData(model.index(0, 2), QStringLiteral("after"), Qt::DisplayRole));
    QCOMPARE(source.value, QStringLiteral("before"));
}

void TestGridModel::address_opensEmpty() {
    GridSourceDouble source("A");
    GridModel model(source, nullptr);
    model.reloadData();
    QCOMPARE(model.data(model.index(0, 0), Qt::EditRole), QVariant(QString()));
}

void TestGridModel::descriptions_tellFailuresAndMissingBytes() {
    GridSourceDouble source("A");
    GridModel model(source, nullptr);
    model.reloadData();
    const auto description = [&](int column) {
        return model.data(model.index(0, column), Qt::AccessibleDescriptionRole).toString();
    };
    QCOMPARE(description(1), QString());
    QCOMPARE(description(2), QStringLiteral("no byte"));

    source.report = {
        {{QStringLiteral("0000:")}, {QStringLiteral("H"), true}, {QStringLiteral("XX")}}};
    QCOMPARE(description(0), QString());
    QCOMPARE(description(1), QStringLiteral("failed"));
    QCOMPARE(description(2), QString()); // the text of a result, whatever it reads
    QCOMPARE(model.data(model.index(0, 1), GridModel::FailedRole), QVariant(true));
    QCOMPARE(model.data(model.index(0, 0), GridModel::FailedRole), QVariant(false));
}

void TestGridModel::marks_belongToBytesAlone() {
    MarksDouble marks;
    MarksDouble others;
    GridSourceDouble source(QByteArray(20, 'A'));
    GridModel model(source, nullptr);
    model.reloadData();
    marks.marks[17].differs = true;
    QCOMPARE(model.mark(1, 2), ByteMark());
    model.addMarks(marks);
    QCOMPARE(model.mark(1, 2), marks.marks[17]);
    QCOMPARE(model.mark(1, 3), ByteMark());
    QCOMPARE(model.data(model.index(1, 2), Qt::ToolTipRole), QStringLiteral("mark 17"));
    QCOMPARE(model.data(model.index(1, 2), Qt::AccessibleDescriptionRole),
             QStringLiteral("mark 17"));
    // The address cell of the row above has the number of the byte before the first in its row.
    marks.marks[0].differs = true;
    QCOMPARE(model.mark(0, charactersColumn), ByteMark());
    marks.marks[15].differs = true;
    QCOMPARE(model.mark(1, addressColumn), ByteMark());
    others.marks[17].found = true;
    model.addMarks(others);
    QCOMPARE(model.mark(1, 2), (ByteMark{.differs = true, .found = true}));
    others.marks[17] = {.edited = true};
    QCOMPARE(model.mark(1, 2), (ByteMark{.differs = true, .edited = true}));
    QCOMPARE(model.data(model.index(1, 2), Qt::ToolTipRole), QStringLiteral("mark 17, mark 17"));
    model.setHeading(GridHeading::Pins);
    QCOMPARE(model.mark(1, 2), ByteMark());
    QVERIFY(model.data(model.index(1, 2), Qt::ToolTipRole).toString().isEmpty());
}

void TestGridModel::titles_followTheHeading() {
    GridSourceDouble source("A");
    GridModel model(source, nullptr);
    QSignalSpy changes(&model, &GridModel::headerDataChanged);
    const auto titles = [&](int role) {
        QStringList all;
        for (int column = 0; column < gridColumns; ++column)
            all.append(model.headerData(column, Qt::Horizontal, role).toString());
        return all.join(u'|');
    };
    QCOMPARE(titles(Qt::DisplayRole),
             QStringLiteral("Address|0|1|2|3|4|5|6|7|8|9|A|B|C|D|E|F|Characters"));
    QCOMPARE(titles(Qt::AccessibleTextRole), titles(Qt::DisplayRole));
    model.setHeading(GridHeading::Pins);
    model.setHeading(GridHeading::Pins);
    QCOMPARE(changes.count(), 1);
    QCOMPARE(titles(Qt::DisplayRole), QStringLiteral("Vector|Pin||||||||||||||||"));
    QVERIFY(titles(Qt::AccessibleTextRole).startsWith(u"Vector|Pin 1|Pin 2|"));
    QVERIFY(titles(Qt::AccessibleTextRole).endsWith(u"|Pin 17"));
    QCOMPARE(model.headerData(18, Qt::Horizontal), QVariant());
    QCOMPARE(model.headerData(0, Qt::Vertical), QVariant());
}

void TestGridModel::drops_areAnsweredByTheSourceAndNeverTaken() {
    GridSourceDouble source("A");
    GridModel model(source, nullptr);
    model.reloadData();
    QMimeData drag;
    QVERIFY(!model.canDropMimeData(&drag, Qt::CopyAction, 0, 0, QModelIndex()));
    source.dropAnswer = DragOperation::Generic;
    QVERIFY(model.canDropMimeData(&drag, Qt::CopyAction, 0, 0, QModelIndex()));
    QVERIFY(!model.dropMimeData(&drag, Qt::CopyAction, 0, 0, QModelIndex()));
}

void TestGridModel::everyQuestionOfTheTesterIsAnswered() {
    GridSourceDouble source(QByteArray(100, 'A'));
    source.editable = true;
    GridModel model(source, nullptr);
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.reloadData();
    source.bytes.append(QByteArray(100, 'B'));
    model.reloadData();
    source.bytes.clear();
    model.reloadData();

    EditedSource edited;
    edited.rowsAfterEdit = 5;
    GridModel growing(edited, nullptr);
    edited.model = &growing;
    QAbstractItemModelTester second(&growing,
                                    QAbstractItemModelTester::FailureReportingMode::QtTest);
    growing.reloadData();
    growing.setData(growing.index(0, 1), QStringLiteral("after"));
    QCOMPARE(growing.rowCount(), 5);
}

QTEST_MAIN(TestGridModel)
#include "tst_gridmodel.moc"

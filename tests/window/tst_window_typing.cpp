#include "window/EditingSteps.h"

#include <QAccessible>
#include <QWheelEvent>

/// What is being typed when the user turns to something else.
class TestWindowTyping : public QObject {
    Q_OBJECT

private slots:
    void changingTheTab_commitsAnOpenCell_data();
    void changingTheTab_commitsAnOpenCell();
    void changingTheTab_commitsAField_data();
    void changingTheTab_commitsAField();
};

namespace {

/// Opens the first cell of the data to burn and types 7A into it.
void beginEntry(WindowFixture &velm) {
    GridView *grid = velm.controls().tableview;
    grid->setFocus();
    grid->setCurrentIndex(grid->model()->index(0, firstByteColumn));
    QTest::keyClick(grid, Qt::Key_7);
    QVERIFY(grid->openEditor());
    QTest::keyClicks(grid->openEditor(), QStringLiteral("a"));
}

/// Leaves the data to burn for another tab, in one of the ways that wayRows() names.
void changeTab(WindowFixture &velm, const QString &way) {
    TabView *tabs = velm.controls().tabview;
    if (way == QStringLiteral("click")) {
        QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(0).center());
    } else if (way == QStringLiteral("arrow")) {
        QTest::keyClick(tabs, Qt::Key_Left);
    } else if (way == QStringLiteral("shortcut")) {
        QTest::keyClick(&velm.velm().window(), Qt::Key_1, Qt::ControlModifier);
    } else if (way == QStringLiteral("wheel")) {
        const QPointF place = tabs->rect().center();
        QWheelEvent up(place, tabs->mapToGlobal(place), {}, {0, 120}, {}, {}, Qt::NoScrollPhase,
                       false);
        QCoreApplication::sendEvent(tabs, &up);
    } else if (way == QStringLiteral("assistive technology")) {
        QAccessible::queryAccessibleInterface(tabs)->child(0)->actionInterface()->doAction(
            QAccessibleActionInterface::pressAction());
    } else {
        QTest::keyClick(&velm.velm().window(), Qt::Key_F8);
    }
}

void wayRows() {
    QTest::addColumn<QString>("way");
    for (const char *way :
         {"click", "arrow", "shortcut", "wheel", "assistive technology", "logic test's key"})
        QTest::newRow(way) << QString::fromLatin1(way);
}

} // namespace

void TestWindowTyping::changingTheTab_commitsAnOpenCell_data() {
    wayRows();
}

void TestWindowTyping::changingTheTab_commitsAnOpenCell() {
    QFETCH(QString, way);
    WindowFixture velm;
    velm.useTool(":\n");
    showTwentyBytes(velm);
    beginEntry(velm);
    changeTab(velm, way);
    QTRY_VERIFY(velm.controls().tabview->selectedTabViewItem().identifier != burnTabIdentifier());
    QCOMPARE(*velm.state().output_data, QByteArray("z123456789ABCDEFGHIJ"));
    QCOMPARE(onDisk(velm), *velm.state().output_data);
    QVERIFY(!velm.controls().tableview->openEditor());
    velm.controls().tabview->selectTabViewItem(burnTabIdentifier());
    QCOMPARE(velm.cell(0, 1), QStringLiteral("7A"));
}

void TestWindowTyping::changingTheTab_commitsAField_data() {
    wayRows();
}

void TestWindowTyping::changingTheTab_commitsAField() {
    QFETCH(QString, way);
    WindowFixture velm;
    velm.useTool(":\n");
    showTwentyBytes(velm);
    QLineEdit *field = velm.controls().startAddTextField;
    field->setFocus();
    field->selectAll();
    QTest::keyClicks(field, QStringLiteral("2"));
    changeTab(velm, way);
    QTRY_VERIFY(velm.controls().tabview->selectedTabViewItem().identifier != burnTabIdentifier());
    QCOMPARE(velm.state().output_data->size(), 22);
}

QTEST_MAIN(TestWindowTyping)
#include "tst_window_typing.moc"

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/SearchSteps.h"

#include "settings/SettingsKeys.h"
#include "support/DoubleClick.h"

/// How the device search panel is worked by the keyboard, and when it confirms.
class TestWindowSearchKeys : public QObject {
    Q_OBJECT

private slots:
    void down_fromTheTermSelectsTheFirstName();
    void down_fromTheTermStaysWhereNothingIsListed();
    void firstStep_inTheListSelectsARow_data();
    void firstStep_inTheListSelectsARow();
    void enter_inAListWithoutSelectionKeepsThePanelOpen();
    void question_standsWhenANameIsSelected();
    void ok_withoutSelectionLeavesTheDevice_data();
    void ok_withoutSelectionLeavesTheDevice();
    void doubleClick_confirmsATurnLater();
    void device_isStoredATurnAfterTheConfirmation();
};

namespace {

/// Starts with the names A, B and C in the panel's list.
struct ThreeNames {
    ThreeNames() { panel.searchFor(QStringLiteral("x")); }

    QString selected() { return searcher().selectedItem(nullptr).value_or(QString()); }
    device_searcher &searcher() { return *velm.delegate().outlets.devicesearcher; }
    QString device() { return velm.settings().stringValue(settingsKeys::device); }

    WindowFixture velm;
    Panel panel{started(velm)};

private:
    static WindowFixture &started(WindowFixture &velm) {
        velm.useTool("printf 'A\\nB\\nC\\n'\n");
        velm.start();
        return velm;
    }
};

} // namespace

void TestWindowSearchKeys::down_fromTheTermSelectsTheFirstName() {
    ThreeNames names;
    QCOMPARE(QApplication::focusWidget(), names.panel.term);
    QTest::keyClick(names.panel.term, Qt::Key_Down);
    QCOMPARE(QApplication::focusWidget(), names.panel.list);
    QCOMPARE(names.selected(), QStringLiteral("A"));
    QTest::keyClick(names.panel.list, Qt::Key_Down);
    QCOMPARE(names.selected(), QStringLiteral("B"));
    QTest::keyClick(names.panel.list, Qt::Key_Return);
    names.velm.settle();
    QCOMPARE(names.device(), QStringLiteral("B"));
}

void TestWindowSearchKeys::down_fromTheTermStaysWhereNothingIsListed() {
    WindowFixture velm;
    velm.start();
    const Panel panel(velm);
    QTRY_COMPARE(QApplication::focusWidget(), panel.term);
    QTest::keyClick(panel.term, Qt::Key_Down);
    QCOMPARE(QApplication::focusWidget(), panel.term);
}

void TestWindowSearchKeys::firstStep_inTheListSelectsARow_data() {
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("cursor");
    QTest::addColumn<QString>("selected");
    QTest::newRow("down") << int(Qt::Key_Down) << -1 << QStringLiteral("A");
    QTest::newRow("up") << int(Qt::Key_Up) << -1 << QStringLiteral("A");
    QTest::newRow("home") << int(Qt::Key_Home) << -1 << QStringLiteral("A");
    QTest::newRow("end") << int(Qt::Key_End) << -1 << QStringLiteral("C");
    QTest::newRow("end, with the cursor there") << int(Qt::Key_End) << 2 << QStringLiteral("C");
    QTest::newRow("down from a row that is not selected any more")
        << int(Qt::Key_Down) << 1 << QStringLiteral("B");
}

void TestWindowSearchKeys::firstStep_inTheListSelectsARow() {
    QFETCH(int, key);
    QFETCH(int, cursor);
    ThreeNames names;
    names.panel.list->setFocus(Qt::TabFocusReason);
    if (cursor >= 0)
        names.panel.select(cursor);
    names.panel.list->clearSelection();
    QTest::keyClick(names.panel.list, Qt::Key(key));
    QTEST(names.selected(), "selected");
}

void TestWindowSearchKeys::enter_inAListWithoutSelectionKeepsThePanelOpen() {
    ThreeNames names;
    names.panel.list->setFocus(Qt::TabFocusReason);
    QTest::keyClick(names.panel.list, Qt::Key_Return);
    names.velm.settle();
    QVERIFY(names.panel.dialog->isVisible());
    QCOMPARE(names.panel.remark->text(), QStringLiteral("Select a device first."));
    QTest::keyClick(names.panel.list, Qt::Key_Down);
    QCOMPARE(names.panel.remark->text(), QStringLiteral("3 devices found."));
    QTest::keyClick(names.panel.list, Qt::Key_Return);
    QVERIFY(!names.panel.dialog->isVisible());
}

void TestWindowSearchKeys::question_standsWhenANameIsSelected() {
    ThreeNames names;
    names.velm.setTool(QStringLiteral("true; :"));
    QTest::keyClick(names.panel.list, Qt::Key_Return);
    names.panel.searchFor(QStringLiteral("x"));
    const QString said = names.panel.remark->text();
    QVERIFY2(said.endsWith(u"Press Search again to run it."), qPrintable(said));
    names.panel.select(0);
    QCOMPARE(names.panel.remark->text(), said);
}

void TestWindowSearchKeys::ok_withoutSelectionLeavesTheDevice_data() {
    QTest::addColumn<int>("cursor");
    QTest::newRow("no row is current") << -1;
    QTest::newRow("a row is current") << 1;
}

void TestWindowSearchKeys::ok_withoutSelectionLeavesTheDevice() {
    QFETCH(int, cursor);
    ThreeNames names;
    if (cursor >= 0)
        names.panel.select(cursor);
    names.panel.list->clearSelection();
    QCOMPARE(names.panel.list->currentIndex().row(), cursor);
    names.velm.click(names.panel.ok);
    QVERIFY(!names.panel.dialog->isVisible());
    names.velm.settle();
    QCOMPARE(names.device(), QStringLiteral("W27C512@DIP28"));
}

void TestWindowSearchKeys::doubleClick_confirmsATurnLater() {
    ThreeNames names;
    DeviceListView *list = names.panel.list;
    doubleClick(list->viewport(), list->visualRect(list->model()->index(2, 0)).center());
    QCOMPARE(names.velm.log.count(QStringLiteral("doubleClick:")), 1);
    QVERIFY(names.panel.dialog->isVisible());
    names.velm.settle();
    QVERIFY(!names.panel.dialog->isVisible());
    QTRY_COMPARE(names.device(), QStringLiteral("C"));
}

void TestWindowSearchKeys::device_isStoredATurnAfterTheConfirmation() {
    ThreeNames names;
    names.panel.select(1);
    names.velm.click(names.panel.ok);
    QVERIFY(!names.panel.dialog->isVisible());
    QCOMPARE(names.device(), QStringLiteral("W27C512@DIP28"));
    names.velm.settle();
    QCOMPARE(names.device(), QStringLiteral("B"));
}

QTEST_MAIN(TestWindowSearchKeys)
#include "tst_window_searchkeys.moc"

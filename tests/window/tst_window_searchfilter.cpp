// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/SearchSteps.h"

#include "settings/SettingsKeys.h"

#include <QAccessible>

/// The list of the device search panel, narrowed while one types.
class TestWindowSearchFilter : public QObject {
    Q_OBJECT

private slots:
    void words_leaveTheNamesThatHoldThem();
    void down_entersTheNamesThatAreLeft();
    void nameThatIsLeft_isTheOneThatIsTaken();
    void filter_isKeptOverASearchAndSaid();
    void filter_beforeAnySearchSaysNothing();
    void panelShownAnew_hasTheWholeList();
    void field_isFound();
};

namespace {

/// Starts with four names in the panel's list.
struct FourNames {
    FourNames() { panel.searchFor(QStringLiteral("x")); }

    QString shown() const { return panel.names().join(u' '); }
    device_searcher &searcher() { return *velm.delegate().outlets.devicesearcher; }

    WindowFixture velm;
    Panel panel{started(velm)};

private:
    static WindowFixture &started(WindowFixture &velm) {
        velm.useTool("printf 'M27C512@DIP28\\nAM27C256@DIP28\\nAM27C256@PLCC32\\n7400\\n'\n");
        velm.start();
        return velm;
    }
};

} // namespace

void TestWindowSearchFilter::words_leaveTheNamesThatHoldThem() {
    FourNames names;
    names.panel.filter->setFocus();
    QTest::keyClicks(names.panel.filter, QStringLiteral("27c256"));
    QCOMPARE(names.shown(), QStringLiteral("AM27C256@DIP28 AM27C256@PLCC32"));
    QCOMPARE(names.panel.remark->text(),
             QStringLiteral("4 devices found. 2 of them pass the filter."));
    QTest::keyClicks(names.panel.filter, QStringLiteral(" dip"));
    QCOMPARE(names.shown(), QStringLiteral("AM27C256@DIP28"));
    names.panel.filter->clear();
    QCOMPARE(names.shown(), QStringLiteral("M27C512@DIP28 AM27C256@DIP28 AM27C256@PLCC32 7400"));
    QCOMPARE(names.panel.remark->text(), QStringLiteral("4 devices found."));
    QCOMPARE(names.searcher().numberOfRowsInTableView(nullptr), 4);
}

void TestWindowSearchFilter::down_entersTheNamesThatAreLeft() {
    FourNames names;
    names.panel.filter->setFocus();
    QTest::keyClicks(names.panel.filter, QStringLiteral("plcc"));
    QTest::keyClick(names.panel.filter, Qt::Key_Down);
    QCOMPARE(QApplication::focusWidget(), names.panel.list);
    QCOMPARE(names.searcher().selectedItem(nullptr).value_or(QString()),
             QStringLiteral("AM27C256@PLCC32"));
    names.panel.filter->setFocus();
    QTest::keyClicks(names.panel.filter, QStringLiteral("none"));
    QVERIFY(!names.searcher().selectedItem(nullptr));
    QTest::keyClick(names.panel.filter, Qt::Key_Down);
    QCOMPARE(QApplication::focusWidget(), names.panel.filter);
}

void TestWindowSearchFilter::nameThatIsLeft_isTheOneThatIsTaken() {
    FourNames names;
    names.panel.filter->setText(QStringLiteral("7400"));
    names.panel.select(0);
    QCOMPARE(names.panel.list->currentIndex().data(Qt::AccessibleTextRole).toString(),
             QStringLiteral("7400"));
    names.velm.click(names.panel.ok);
    names.velm.settle();
    QCOMPARE(names.velm.settings().stringValue(settingsKeys::device), QStringLiteral("7400"));
}

void TestWindowSearchFilter::filter_isKeptOverASearchAndSaid() {
    FourNames names;
    names.panel.filter->setText(QStringLiteral("dip"));
    names.velm.useTool("printf 'AT28C64@PLCC32\\nAT28C64\\n'\n");
    names.panel.searchFor(QStringLiteral("28"));
    QCOMPARE(names.shown(), QString());
    QCOMPARE(names.panel.remark->text(),
             QStringLiteral("2 devices found. 0 of them pass the filter."));
}

void TestWindowSearchFilter::filter_beforeAnySearchSaysNothing() {
    WindowFixture velm;
    velm.start();
    const Panel panel(velm);
    const QString before = panel.remark->text();
    panel.filter->setText(QStringLiteral("dip"));
    QCOMPARE(panel.remark->text(), before);
}

void TestWindowSearchFilter::panelShownAnew_hasTheWholeList() {
    FourNames names;
    const QString before = names.panel.remark->text();
    names.panel.filter->setText(QStringLiteral("dip"));
    names.velm.click(names.panel.cancel);
    names.velm.click(names.velm.controls().btn_search);
    QCOMPARE(names.panel.filter->text(), QString());
    QCOMPARE(names.panel.names().size(), 4);
    QVERIFY(names.panel.remark->text() != before);
}

void TestWindowSearchFilter::field_isFound() {
    FourNames names;
    QAccessibleInterface *field = QAccessible::queryAccessibleInterface(names.panel.filter);
    QCOMPARE(field->text(QAccessible::Name), QStringLiteral("Filter"));
}

QTEST_MAIN(TestWindowSearchFilter)
#include "tst_window_searchfilter.moc"

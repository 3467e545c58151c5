// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "settings/SettingsKeys.h"
#include "window/SearchSteps.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QCompleter>

/// Devices that are known are offered where one is chosen.
class TestWindowDeviceOffers : public QObject {
    Q_OBJECT

private slots:
    void panel_offersRecentDevicesAndFavourites();
    void panel_offersNothingWhereNothingIsKnown();
    void panel_takesWhatIsOffered_data();
    void panel_takesWhatIsOffered();
    void panel_hasOneSelection();
    void panel_filtersWhatIsOffered();
    void panelShownAnew_hasNothingSelectedThere();
    void requestToSelect_endsWithEitherSelection();
    void recentDevices_areThoseOfTheLastRuns();
    void nameThatTheToolDoesNotKnow_isNotOffered();
    void field_completesFromAllThatIsKnown();
    void field_takesACompletion();
    void down_inTheFieldShowsWhatIsKnown();
};

namespace {

void setFavourites(WindowFixture &velm, const QStringList &names) {
    velm.settings().setValue(settingsKeys::favourites, names);
}

QString device(WindowFixture &velm) {
    return velm.settings().stringValue(settingsKeys::device);
}

QString offered(const Panel &panel) {
    return Panel::namesIn(*panel.likely).join(u' ');
}

/// The completions that are shown below the device field; empty while none are.
QStringList completions(WindowFixture &velm) {
    const QCompleter *completer = velm.controls().uaTextField->completer();
    QStringList names;
    if (completer->popup()->isVisible())
        for (int row = 0; row < completer->popup()->model()->rowCount(); ++row)
            names.append(completer->popup()->model()->index(row, 0).data().toString());
    return names;
}

void type(WindowFixture &velm, const QString &text) {
    QLineEdit *field = velm.controls().uaTextField;
    field->setFocus();
    field->selectAll();
    QTest::keyClicks(field, text);
}

} // namespace

void TestWindowDeviceOffers::panel_offersRecentDevicesAndFavourites() {
    WindowFixture velm;
    setFavourites(velm, {QStringLiteral("7400"), QStringLiteral("AT28C256")});
    velm.settings().setValue(settingsKeys::device, QStringLiteral("AT28C256"));
    velm.start();
    const Panel panel(velm);
    QCOMPARE(offered(panel), QStringLiteral("7400 AT28C256"));
    velm.click(panel.cancel);
    velm.click(velm.controls().btn_read);
    velm.click(velm.controls().btn_search);
    QCOMPARE(offered(panel), QStringLiteral("AT28C256 7400"));
    QVERIFY(panel.likely->isVisible());
    QVERIFY(panel.likely->geometry().bottom() < panel.list->geometry().top());
    QCOMPARE(panel.names(), QStringList());
    QAccessibleInterface *view = QAccessible::queryAccessibleInterface(panel.likely);
    QCOMPARE(view->text(QAccessible::Name), QStringLiteral("Recent devices and favourites"));
}

void TestWindowDeviceOffers::panel_offersNothingWhereNothingIsKnown() {
    WindowFixture velm;
    setFavourites(velm, {});
    velm.start();
    const Panel panel(velm);
    QVERIFY(!panel.likely->isVisible());
}

void TestWindowDeviceOffers::panel_takesWhatIsOffered_data() {
    QTest::addColumn<QString>("how");
    for (const char *how : {"OK", "Enter", "double-click"})
        QTest::newRow(how) << QString::fromLatin1(how);
}

void TestWindowDeviceOffers::panel_takesWhatIsOffered() {
    QFETCH(const QString, how);
    WindowFixture velm;
    setFavourites(velm, {QStringLiteral("7400"), QStringLiteral("AT28C256")});
    velm.start();
    const Panel panel(velm);
    QTRY_COMPARE(QApplication::focusWidget(), panel.term);
    panel.filter->setFocus();
    QTest::keyClick(panel.filter, Qt::Key_Down);
    QCOMPARE(QApplication::focusWidget(), panel.likely);
    QTest::keyClick(panel.likely, Qt::Key_Down);
    if (how == QStringLiteral("OK"))
        velm.click(panel.ok);
    else if (how == QStringLiteral("Enter"))
        QTest::keyClick(panel.likely, Qt::Key_Return);
    else
        QTest::mouseDClick(panel.likely->viewport(), Qt::LeftButton, {},
                           panel.likely->visualRect(panel.likely->currentIndex()).center());
    QTRY_COMPARE(device(velm), QStringLiteral("AT28C256"));
    QVERIFY(!panel.dialog->isVisible());
}

void TestWindowDeviceOffers::panel_hasOneSelection() {
    WindowFixture velm;
    velm.useTool("printf 'A\\nB\\n'\n");
    setFavourites(velm, {QStringLiteral("7400")});
    velm.start();
    const Panel panel(velm);
    panel.searchFor(QStringLiteral("x"));
    const device_searcher &searcher = *velm.delegate().outlets.devicesearcher;
    panel.select(1);
    QCOMPARE(searcher.selectedItem(nullptr).value_or(QString()), QStringLiteral("B"));
    panel.likely->setCurrentIndex(panel.likely->model()->index(0, 0));
    QVERIFY(!panel.list->selectionModel()->hasSelection());
    QCOMPARE(searcher.selectedItem(nullptr).value_or(QString()), QStringLiteral("7400"));
    panel.select(0);
    QVERIFY(!panel.likely->selectionModel()->hasSelection());
    QCOMPARE(searcher.selectedItem(nullptr).value_or(QString()), QStringLiteral("A"));
}

void TestWindowDeviceOffers::panel_filtersWhatIsOffered() {
    WindowFixture velm;
    velm.useTool("printf 'A\\nB\\n'\n");
    setFavourites(velm, {QStringLiteral("7400"), QStringLiteral("AT28C256")});
    velm.start();
    const Panel panel(velm);
    panel.filter->setText(QStringLiteral("c256 at"));
    QCOMPARE(offered(panel), QStringLiteral("AT28C256"));
    const int height = panel.likely->height();
    panel.filter->setText(QStringLiteral("none"));
    panel.searchFor(QStringLiteral("x"));
    QCOMPARE(offered(panel), QString());
    QCOMPARE(panel.likely->height(), height);
    panel.filter->clear();
    QCOMPARE(offered(panel), QStringLiteral("7400 AT28C256"));
}

void TestWindowDeviceOffers::panelShownAnew_hasNothingSelectedThere() {
    WindowFixture velm;
    setFavourites(velm, {QStringLiteral("7400")});
    velm.start();
    const Panel panel(velm);
    panel.likely->setCurrentIndex(panel.likely->model()->index(0, 0));
    velm.click(panel.cancel);
    velm.click(velm.controls().btn_search);
    const QString before = device(velm);
    velm.click(panel.ok);
    velm.settle();
    QCOMPARE(device(velm), before);
}

void TestWindowDeviceOffers::requestToSelect_endsWithEitherSelection() {
    WindowFixture velm;
    velm.useTool("printf 'A\\nB\\n'\n");
    setFavourites(velm, {QStringLiteral("7400")});
    velm.start();
    const Panel panel(velm);
    panel.searchFor(QStringLiteral("x"));
    for (DeviceListView *list : {panel.list, panel.likely}) {
        QTest::keyClick(panel.likely, Qt::Key_Return);
        QCOMPARE(panel.remark->text(), QStringLiteral("Select a device first."));
        list->setCurrentIndex(list->model()->index(0, 0));
        QCOMPARE(panel.remark->text(), QStringLiteral("2 devices found."));
        list->clearSelection();
    }
}

void TestWindowDeviceOffers::recentDevices_areThoseOfTheLastRuns() {
    WindowFixture velm;
    setFavourites(velm, {});
    velm.start();
    for (const char *name : {"7400", "AT28C256", "7400"}) {
        velm.settings().setValue(settingsKeys::device, QString::fromLatin1(name));
        velm.click(velm.controls().btn_read);
    }
    velm.end();
    velm.start();
    const Panel panel(velm);
    QCOMPARE(offered(panel), QStringLiteral("7400 AT28C256"));
}

void TestWindowDeviceOffers::nameThatTheToolDoesNotKnow_isNotOffered() {
    WindowFixture velm;
    setFavourites(velm, {});
    velm.settings().setValue(settingsKeys::device, QStringLiteral("27C"));
    velm.start();
    QTRY_COMPARE(velm.controls().chipFacts->wholeText(),
                 QStringLiteral("The tool knows no device of this name."));
    velm.click(velm.controls().btn_read);
    const Panel panel(velm);
    QCOMPARE(offered(panel), QString());
}

void TestWindowDeviceOffers::field_completesFromAllThatIsKnown() {
    WindowFixture velm;
    velm.useTool("printf 'M27C512@DIP28\\nOWN27C5(custom)\\n7400\\n'\n");
    setFavourites(velm, {QStringLiteral("W27C512@DIP28"), QStringLiteral("AT28C256")});
    velm.start();
    const Panel panel(velm);
    panel.searchFor(QStringLiteral("x"));
    velm.click(panel.cancel);
    type(velm, QStringLiteral("27c5"));
    QTRY_COMPARE(completions(velm),
                 QStringList({QStringLiteral("W27C512@DIP28"), QStringLiteral("M27C512@DIP28"),
                              QStringLiteral("OWN27C5")}));
    QCOMPARE(device(velm), QStringLiteral("27c5"));
}

void TestWindowDeviceOffers::field_takesACompletion() {
    WindowFixture velm;
    setFavourites(velm, {QStringLiteral("W27C512@DIP28"), QStringLiteral("AT28C256")});
    velm.start();
    type(velm, QStringLiteral("28c"));
    QTRY_COMPARE(completions(velm), QStringList(QStringLiteral("AT28C256")));
    QAbstractItemView *popup = velm.controls().uaTextField->completer()->popup();
    QTest::keyClick(popup, Qt::Key_Down);
    QTest::keyClick(popup, Qt::Key_Return);
    QCOMPARE(velm.controls().uaTextField->text(), QStringLiteral("AT28C256"));
    QCOMPARE(device(velm), QStringLiteral("AT28C256"));
    QVERIFY(!popup->isVisible());
}

void TestWindowDeviceOffers::down_inTheFieldShowsWhatIsKnown() {
    WindowFixture velm;
    setFavourites(velm, {QStringLiteral("W27C512@DIP28"), QStringLiteral("AT28C256")});
    velm.settings().setValue(settingsKeys::device, QStringLiteral("AT28C256"));
    velm.start();
    QLineEdit *field = velm.controls().uaTextField;
    field->setFocus();
    QTest::keyClick(field, Qt::Key_Down);
    QTRY_COMPARE(completions(velm),
                 QStringList({QStringLiteral("W27C512@DIP28"), QStringLiteral("AT28C256")}));
    QTest::keyClick(field->completer()->popup(), Qt::Key_Escape);
    QCOMPARE(completions(velm), QStringList());
    QCOMPARE(device(velm), QStringLiteral("AT28C256"));
}

QTEST_MAIN(TestWindowDeviceOffers)
#include "tst_window_deviceoffers.moc"

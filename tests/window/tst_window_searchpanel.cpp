// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/SearchSteps.h"

#include "settings/SettingsKeys.h"

#include <QAccessible>
#include <QStyledItemDelegate>
#include <QTextDocument>

/// What the device search panel still has when it is shown anew.
class TestWindowSearchPanel : public QObject {
    Q_OBJECT

private slots:
    void shownAnew_saysNothingOfTheSearchBefore_data();
    void shownAnew_saysNothingOfTheSearchBefore();
    void shownAnew_hasItsList();
    void unseenCharacters_arePaintedAsEscapes();
    void oddName_isTakenAsItIs();
    void longName_isPaintedAndSaidInPart();
    void longName_isNotTaken_data();
    void longName_isNotTaken();
    void tagsInAName_areNoTagsInItsToolTip();
};

namespace {

void reopen(WindowFixture &velm, const Panel &panel) {
    velm.click(panel.cancel);
    QVERIFY(!panel.dialog->isVisible());
    velm.click(velm.controls().btn_search);
    QVERIFY(panel.dialog->isVisible());
}

/// What the list paints once the tool has listed what printf makes of names.
QImage paintedList(const QByteArray &names) {
    WindowFixture velm;
    velm.useTool("printf '" + names + "'\n");
    velm.start();
    const Panel panel(velm);
    panel.searchFor(QStringLiteral("x"));
    panel.list->doItemsLayout();
    return panel.list->grab().toImage();
}

QString accessibleNameOf(DeviceListView *list, int row) {
    const QAccessibleInterface *table = QAccessible::queryAccessibleInterface(list);
    const QAccessibleInterface *cell = table ? table->child(row) : nullptr;
    return cell ? cell->text(QAccessible::Name) : QString();
}

} // namespace

void TestWindowSearchPanel::shownAnew_saysNothingOfTheSearchBefore_data() {
    QTest::addColumn<QByteArray>("tool");
    QTest::addColumn<QString>("term");
    QTest::newRow("no programmer")
        << QByteArray("echo 'No programmer found.' >&2; exit 1\n") << QStringLiteral("x");
    QTest::newRow("nothing found") << QByteArray(":\n") << QStringLiteral("x");
    QTest::newRow("no term") << QByteArray(":\n") << QString();
}

void TestWindowSearchPanel::shownAnew_saysNothingOfTheSearchBefore() {
    QFETCH(QByteArray, tool);
    QFETCH(QString, term);
    WindowFixture velm;
    velm.useTool(tool);
    velm.start();
    const Panel panel(velm);
    const QString first = panel.remark->text();
    QVERIFY(!first.isEmpty());
    panel.searchFor(term);
    QVERIFY(panel.remark->text() != first);
    reopen(velm, panel);
    QCOMPARE(panel.remark->text(), first);
}

void TestWindowSearchPanel::shownAnew_hasItsList() {
    WindowFixture velm;
    velm.useTool("printf 'A\\nB\\n'\n");
    velm.start();
    const Panel panel(velm);
    panel.searchFor(QStringLiteral("x"));
    reopen(velm, panel);
    QCOMPARE(panel.names(), QStringList({QStringLiteral("A"), QStringLiteral("B")}));
    QCOMPARE(panel.term->text(), QStringLiteral("x"));
}

void TestWindowSearchPanel::unseenCharacters_arePaintedAsEscapes() {
    const QImage escapes = paintedList("A\\\\x1b[0;91mB\\nC\\\\u202eD\\n");
    QCOMPARE(paintedList("A\\033[0;91mB\\nC\\342\\200\\256D\\n"), escapes);
    QVERIFY(paintedList("A[0;91mB\\nCD\\n") != escapes);
}

void TestWindowSearchPanel::oddName_isTakenAsItIs() {
    WindowFixture velm;
    velm.useTool("printf 'A\\342\\200\\256B\\n'\n");
    velm.start();
    const Panel panel(velm);
    panel.searchFor(QStringLiteral("x"));
    QCOMPARE(accessibleNameOf(panel.list, 0), QStringLiteral("A\\u202eB"));
    panel.select(0);
    velm.click(panel.ok);
    velm.settle();
    QCOMPARE(velm.settings().stringValue(settingsKeys::device), QStringLiteral("A\u202eB"));
}

void TestWindowSearchPanel::longName_isPaintedAndSaidInPart() {
    WindowFixture velm;
    velm.useTool("head -c 1048576 /dev/zero | tr '\\0' x\n");
    velm.start();
    const Panel panel(velm);
    panel.searchFor(QStringLiteral("x"));
    const QString shown = QString(1000, u'x') + u'\u2026';
    const QModelIndex row = panel.list->model()->index(0, 0);
    const auto *delegate = qobject_cast<QStyledItemDelegate *>(panel.list->itemDelegate());
    QVERIFY(delegate);
    QCOMPARE(delegate->displayText(row.data(), QLocale()), shown);
    QCOMPARE(accessibleNameOf(panel.list, 0), shown);
    QCOMPARE(panel.names().first().size(), 1048576);
}

void TestWindowSearchPanel::longName_isNotTaken_data() {
    QTest::addColumn<int>("length");
    QTest::addColumn<bool>("taken");
    QTest::newRow("just shown whole") << 1000 << true;
    QTest::newRow("shown in part") << 1001 << false;
}

void TestWindowSearchPanel::longName_isNotTaken() {
    QFETCH(const int, length);
    QFETCH(const bool, taken);
    WindowFixture velm;
    velm.useTool("head -c " + QByteArray::number(length) + " /dev/zero | tr '\\0' x\n");
    velm.start();
    const QString before = velm.controls().uaTextField->text();
    const Panel panel(velm);
    panel.searchFor(QStringLiteral("x"));
    panel.select(0);
    velm.click(panel.ok);
    velm.settle();
    QCOMPARE(velm.controls().uaTextField->text(), taken ? QString(length, u'x') : before);
    QCOMPARE(velm.message().contains(u"A name of 1,001 characters is no device's"), !taken);
}

void TestWindowSearchPanel::tagsInAName_areNoTagsInItsToolTip() {
    WindowFixture velm;
    velm.useTool("printf '<b>A</b>\\n'\n");
    velm.start();
    const Panel panel(velm);
    panel.searchFor(QStringLiteral("x"));
    QTextDocument tip;
    tip.setHtml(panel.list->model()->index(0, 0).data(Qt::ToolTipRole).toString());
    QCOMPARE(tip.toPlainText(), QStringLiteral("<b>A</b>"));
}

QTEST_MAIN(TestWindowSearchPanel)
#include "tst_window_searchpanel.moc"

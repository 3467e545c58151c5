// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/SearchSteps.h"

/// What the device search panel still has when it is shown anew.
class TestWindowSearchPanel : public QObject {
    Q_OBJECT

private slots:
    void shownAnew_saysNothingOfTheSearchBefore_data();
    void shownAnew_saysNothingOfTheSearchBefore();
    void shownAnew_hasItsList();
};

namespace {

void reopen(WindowFixture &velm, const Panel &panel) {
    velm.click(panel.cancel);
    QVERIFY(!panel.dialog->isVisible());
    velm.click(velm.controls().btn_search);
    QVERIFY(panel.dialog->isVisible());
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

QTEST_MAIN(TestWindowSearchPanel)
#include "tst_window_searchpanel.moc"

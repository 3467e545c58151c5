// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/WindowFixture.h"

#include "settings/SettingsKeys.h"
#include "support/SpokenWords.h"

#include <QMenuBar>
#include <QWheelEvent>

/// How the user has grid and console.
class TestWindowViews : public QObject {
    Q_OBJECT

private slots:
    void letters_growWhereTheFocusIs();
    void wheel_zoomsTheGrid();
    void console_comesAndGoesByItsKey();
    void hiddenConsole_leavesTheFocusInTheWindow();
    void chosenRun_showsTheConsole();
    void choices_areThereAtTheNextStart();
    void tabsChosenByKey_areSpoken();
};

namespace {

double pointsOf(const QWidget *view) {
    return view->font().pointSizeF();
}

QAction *entry(WindowFixture &velm, const QString &text) {
    for (const QAction *menu : velm.velm().window().menuBar()->actions())
        for (QAction *action : menu->menu()->actions())
            if (action->text().remove(u'&') == text)
                return action;
    qFatal("no entry %s", qPrintable(text));
}

void press(WindowFixture &velm, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(&velm.velm().window(), key, modifiers);
    QCoreApplication::processEvents();
}

} // namespace

void TestWindowViews::letters_growWhereTheFocusIs() {
    WindowFixture velm;
    velm.start();
    const Ui::MainWindow &c = velm.controls();
    const double grid = pointsOf(c.tableview);
    const double console = pointsOf(c.textView);
    const int rowHeight = c.tableview->rowHeight();
    c.tableview->setFocus();
    press(velm, Qt::Key_Plus, Qt::ControlModifier);
    QCOMPARE(pointsOf(c.tableview), grid * 1.1);
    QVERIFY(c.tableview->rowHeight() > rowHeight);
    QCOMPARE(pointsOf(c.textView), console);
    c.textView->setFocus();
    press(velm, Qt::Key_Minus, Qt::ControlModifier);
    QCOMPARE(pointsOf(c.tableview), grid * 1.1);
    QCOMPARE(pointsOf(c.textView), console * 0.9);
    entry(velm, QStringLiteral("Usual letters"))->trigger();
    QCOMPARE(pointsOf(c.textView), console);
}

void TestWindowViews::wheel_zoomsTheGrid() {
    WindowFixture velm;
    velm.start();
    QWidget *viewport = velm.controls().tableview->viewport();
    const double points = pointsOf(velm.controls().tableview);
    const QPointF place(20, 20);
    QWheelEvent event(place, viewport->mapToGlobal(place), {}, QPoint(0, 120), Qt::NoButton,
                      Qt::ControlModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(viewport, &event);
    QCOMPARE(pointsOf(velm.controls().tableview), points * 1.1);
}

void TestWindowViews::console_comesAndGoesByItsKey() {
    WindowFixture velm;
    velm.start();
    const Ui::MainWindow &c = velm.controls();
    const int height = c.tableview->height();
    press(velm, Qt::Key_F9);
    QVERIFY(!c.textView->isVisible());
    QVERIFY(c.tableview->height() > height);
    press(velm, Qt::Key_F9);
    QVERIFY(c.textView->isVisible());
    QTRY_COMPARE(c.tableview->height(), height);
}

void TestWindowViews::hiddenConsole_leavesTheFocusInTheWindow() {
    WindowFixture velm;
    velm.start();
    const Ui::MainWindow &c = velm.controls();
    press(velm, Qt::Key_F9);
    c.btn_read->setFocus();
    QWidget *during = nullptr;
    velm.whileBusy([&] { during = velm.velm().window().focusWidget(); });
    velm.click(c.btn_read);
    velm.settle();
    QCOMPARE(during, c.tableview);
    QCOMPARE(velm.velm().window().focusWidget(), c.btn_read);
}

void TestWindowViews::chosenRun_showsTheConsole() {
    WindowFixture velm;
    velm.start();
    press(velm, Qt::Key_F9);
    velm.click(velm.controls().btn_read);
    velm.settle();
    QVERIFY(!velm.controls().textView->isVisible());
    velm.controls().btn_runs->menu()->actions().first()->trigger();
    QVERIFY(velm.controls().textView->isVisible());
}

void TestWindowViews::choices_areThereAtTheNextStart() {
    WindowFixture velm;
    velm.start();
    const double grid = pointsOf(velm.controls().tableview);
    velm.controls().tableview->setFocus();
    press(velm, Qt::Key_Plus, Qt::ControlModifier);
    entry(velm, QStringLiteral("Wrap long lines"))->trigger();
    press(velm, Qt::Key_F9);
    velm.velm().window().close();
    velm.end();
    velm.start();
    QCOMPARE(pointsOf(velm.controls().tableview), grid * 1.1);
    QCOMPARE(velm.controls().textView->lineWrapMode(), QPlainTextEdit::WidgetWidth);
    QVERIFY(!velm.controls().textView->isVisible());
}

void TestWindowViews::tabsChosenByKey_areSpoken() {
    WindowFixture velm;
    velm.start();
    velm.controls().uaTextField->setFocus();
    const SpokenWords heard;
    press(velm, Qt::Key_2, Qt::ControlModifier);
    QTRY_COMPARE(heard.spoken, QStringList({QStringLiteral("Data to burn")}));
    // With the focus in the row of tabs the toolkit tells it.
    velm.controls().tabview->setFocus();
    QTest::keyClick(velm.controls().tabview, Qt::Key_Right);
    QCOMPARE(velm.controls().tabview->selectedTabViewItem().identifier, logicTabIdentifier());
    QCOMPARE(heard.spoken.size(), 1);
}

QTEST_MAIN(TestWindowViews)
#include "tst_window_views.moc"

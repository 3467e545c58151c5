// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/EditingSteps.h"

#include <QAccessible>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QWheelEvent>

/// What is being typed when the user turns to something else.
class TestWindowTyping : public QObject {
    Q_OBJECT

private slots:
    void changingTheTab_commitsAnOpenCell_data();
    void changingTheTab_commitsAnOpenCell();
    void changingTheTab_commitsAField_data();
    void changingTheTab_commitsAField();
    void everyMenuEntry_commitsAnOpenCell_data();
    void everyMenuEntry_commitsAnOpenCell();
    void composing_replacesAnOpenCellAsAnEdit_data();
    void composing_replacesAnOpenCellAsAnEdit();
    void openRecent_composesOnceWithWhatWasTyped();
};

namespace {

/// Opens the first cell of the data to burn and types 7A into it.
void beginEntry(WindowFixture &velm) {
    GridView *grid = velm.controls().tableview;
    grid->setFocus();
    grid->setCurrentIndex(grid->model()->index(0, firstByteColumn));
    QTest::keyClick(grid, Qt::Key_7);
    QVERIFY(grid->entries().editor());
    QTest::keyClicks(grid->entries().editor(), QStringLiteral("a"));
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

/// The entries below \a menu, those of its own menus included.
QList<QAction *> entriesOf(QMenu *menu) {
    QList<QAction *> entries;
    for (QAction *action : menu->actions())
        if (action->menu())
            entries += entriesOf(action->menu());
        else if (!action->isSeparator())
            entries.append(action);
    return entries;
}

QList<QAction *> menuEntries(WindowFixture &velm) {
    QList<QAction *> entries;
    for (const QAction *title : velm.velm().window().menuBar()->actions())
        entries += entriesOf(title->menu());
    return entries;
}

/// The entry that opens \a path again.
QAction *recentEntry(WindowFixture &velm, const QString &path) {
    const QList<QAction *> entries = menuEntries(velm);
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [&](const QAction *entry) { return entry->text() == path; });
    return found == entries.end() ? nullptr : *found;
}

/// Starts with twenty known bytes on the data-to-burn tab, opened as a user opens them.
void openTwentyBytes(WindowFixture &velm) {
    showTwentyBytes(velm);
    velm.delegate().openBinary(velm.path(QStringLiteral("rom.bin")));
    velm.settle();
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
    QVERIFY(!velm.controls().tableview->entries().editor());
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

// A chosen entry does its work a turn of the event loop later; the entry is committed by then.
void TestWindowTyping::everyMenuEntry_commitsAnOpenCell_data() {
    QTest::addColumn<int>("number");
    WindowFixture velm;
    openTwentyBytes(velm);
    const QList<QAction *> entries = menuEntries(velm);
    for (int number = 0; number < entries.size(); ++number)
        QTest::newRow(qPrintable(entries[number]->iconText())) << number;
}

void TestWindowTyping::everyMenuEntry_commitsAnOpenCell() {
    QFETCH(int, number);
    WindowFixture velm;
    velm.useTool(":\n");
    openTwentyBytes(velm);
    QAction *entry = menuEntries(velm).at(number);
    beginEntry(velm);
    entry->setEnabled(true); // some have nothing to do as yet
    entry->trigger();
    QCOMPARE(*velm.state().output_data, QByteArray("z123456789ABCDEFGHIJ"));
    QVERIFY(!velm.controls().tableview->entries().editor());
    velm.settle();
}

void TestWindowTyping::composing_replacesAnOpenCellAsAnEdit_data() {
    QTest::addColumn<bool>("byKey");
    QTest::newRow("a key") << true;
    QTest::newRow("assistive technology") << false;
}

// Neither takes the focus from the cell. What was typed is no more lost than an edit is.
void TestWindowTyping::composing_replacesAnOpenCellAsAnEdit() {
    QFETCH(bool, byKey);
    WindowFixture velm;
    showTwentyBytes(velm);
    beginEntry(velm);
    if (byKey)
        QTest::keyClick(velm.controls().tableview->entries().editor(), Qt::Key_U, Qt::AltModifier);
    else
        velm.controls().btn_combine_read_data->toggle();
    QTRY_VERIFY2(velm.message().contains(u"1 hand edit was replaced."), qPrintable(velm.message()));
    velm.settle();
    velm.click(velm.controls().messageLine->findChild<QPushButton *>());
    QCOMPARE(*velm.state().output_data, QByteArray("z123456789ABCDEFGHIJ"));
}

void TestWindowTyping::openRecent_composesOnceWithWhatWasTyped() {
    WindowFixture velm;
    openTwentyBytes(velm);
    QLineEdit *field = velm.controls().startAddTextField;
    field->setFocus();
    field->selectAll();
    QTest::keyClicks(field, QStringLiteral("2"));
    QAction *again = recentEntry(velm, velm.path(QStringLiteral("rom.bin")));
    QVERIFY(again);
    velm.log.take();
    again->trigger();
    QCOMPARE(velm.log.count(QStringLiteral("handleControl:")), 1);
    velm.settle();
    velm.controls().tableview->setFocus();
    QCOMPARE(velm.log.count(QStringLiteral("handleControl:")), 1);
    QCOMPARE(velm.state().output_data->size(), 22);
}

QTEST_MAIN(TestWindowTyping)
#include "tst_window_typing.moc"

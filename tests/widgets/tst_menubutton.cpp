// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "widgets/MenuButton.h"

#include <QAccessible>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>

class TestMenuButton : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { installMenuButtonAccessibility(); }
    void entries_areBelowTheButtonWhileTheMenuIsClosed();
    void entries_canBePressedWhileTheMenuIsClosed();
    void withoutMenu_thereIsNothingBelow();
    void showMenu_returnsBeforeTheMenuIsClosed();
    void disabledButton_showsNoMenu();
};

namespace {

/// A button on the screen whose menu has two entries.
struct Shown {
    explicit Shown() {
        button.setAccessibleName(QStringLiteral("Names"));
        button.setMenu(menu);
        menu->addAction(QStringLiteral("A"));
        menu->addAction(QStringLiteral("B"));
        button.show();
    }

    QAccessibleInterface *interface() { return QAccessible::queryAccessibleInterface(&button); }
    QAccessibleInterface *entry(int index) { return interface()->child(0)->child(index); }

    MenuButton button;
    QMenu *menu = new QMenu(&button);
};

} // namespace

void TestMenuButton::entries_areBelowTheButtonWhileTheMenuIsClosed() {
    Shown shown;
    QAccessibleInterface *button = shown.interface();
    QCOMPARE(button->text(QAccessible::Name), QStringLiteral("Names"));
    QCOMPARE(button->role(), QAccessible::ButtonMenu);
    QVERIFY(button->state().hasPopup);
    QCOMPARE(button->childCount(), 1);
    QAccessibleInterface *menu = button->child(0);
    QCOMPARE(menu->role(), QAccessible::PopupMenu);
    QCOMPARE(button->indexOfChild(menu), 0);
    QCOMPARE(button->indexOfChild(button), -1);
    QCOMPARE(menu->childCount(), 2);
    QCOMPARE(shown.entry(1)->text(QAccessible::Name), QStringLiteral("B"));
    QCOMPARE(shown.entry(1)->parent(), menu);
}

void TestMenuButton::entries_canBePressedWhileTheMenuIsClosed() {
    Shown shown;
    QSignalSpy chosen(shown.menu, &QMenu::triggered);
    shown.entry(1)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QCOMPARE(chosen.count(), 1);
    QCOMPARE(chosen.first().first().value<QAction *>()->text(), QStringLiteral("B"));
}

void TestMenuButton::withoutMenu_thereIsNothingBelow() {
    MenuButton button;
    QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(&button);
    QCOMPARE(interface->childCount(), 0);
    QCOMPARE(interface->child(0), nullptr);
    QVERIFY(!interface->state().hasPopup);
}

void TestMenuButton::showMenu_returnsBeforeTheMenuIsClosed() {
    Shown shown;
    QSignalSpy opened(shown.menu, &QMenu::aboutToShow);
    QSignalSpy closed(shown.menu, &QMenu::aboutToHide);
    connect(shown.menu, &QMenu::aboutToShow, shown.menu, &QMenu::close, Qt::QueuedConnection);
    shown.interface()->actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
    QCOMPARE(opened.count(), 0);
    QTRY_COMPARE(closed.count(), 1);
    QCOMPARE(opened.count(), 1);
}

void TestMenuButton::disabledButton_showsNoMenu() {
    Shown shown;
    QSignalSpy opened(shown.menu, &QMenu::aboutToShow);
    shown.button.setEnabled(false);
    QAccessibleActionInterface *actions = shown.interface()->actionInterface();
    QVERIFY(!actions->actionNames().contains(QAccessibleActionInterface::showMenuAction()));
    actions->doAction(QAccessibleActionInterface::showMenuAction());
    QCoreApplication::processEvents();
    QCOMPARE(opened.count(), 0);
}

QTEST_MAIN(TestMenuButton)
#include "tst_menubutton.moc"

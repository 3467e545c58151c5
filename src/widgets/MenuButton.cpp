// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "widgets/MenuButton.h"

#include <QAccessibleWidget>
#include <QMenu>

namespace {

class MenuButtonAccessible final : public QAccessibleWidget {
public:
    explicit MenuButtonAccessible(MenuButton *button)
        : QAccessibleWidget(button, QAccessible::ButtonMenu) {}

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.hasPopup = button()->menu() != nullptr;
        state.pressed = button()->isDown();
        return state;
    }

    int childCount() const override { return button()->menu() ? 1 : 0; }
    QAccessibleInterface *child(int index) const override {
        return index == 0 ? QAccessible::queryAccessibleInterface(button()->menu()) : nullptr;
    }
    int indexOfChild(const QAccessibleInterface *child) const override {
        return child && child->object() && child->object() == button()->menu() ? 0 : -1;
    }

    QStringList actionNames() const override {
        QStringList names = QAccessibleWidget::actionNames();
        if (button()->isEnabled())
            names.prepend(showMenuAction());
        return names;
    }
    /// The menu has an event loop of its own.
    void doAction(const QString &action) override {
        if (action == showMenuAction() && button()->isEnabled())
            QMetaObject::invokeMethod(button(), &QPushButton::showMenu, Qt::QueuedConnection);
        else
            QAccessibleWidget::doAction(action);
    }

private:
    MenuButton *button() const { return static_cast<MenuButton *>(widget()); }
};

QAccessibleInterface *createForButton(const QString &className, QObject *object) {
    if (className != u"MenuButton")
        return nullptr;
    return new MenuButtonAccessible(static_cast<MenuButton *>(object));
}

} // namespace

void installMenuButtonAccessibility() {
    QAccessible::installFactory(createForButton);
}

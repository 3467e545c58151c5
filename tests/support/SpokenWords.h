// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QAccessible>
#include <QApplication>
#include <QEvent>
#include <QStringList>

/// Hears what a screen reader speaks wherever the focus is: notifications, when they come up.
class SpokenWords final : public QObject {
public:
    SpokenWords() { qApp->installEventFilter(this); }

    bool eventFilter(QObject *object, QEvent *event) override {
        if (event->type() != QEvent::Show || event->spontaneous())
            return false;
        const auto *shown = QAccessible::queryAccessibleInterface(object);
        if (shown && shown->role() == QAccessible::Notification)
            spoken.append(shown->text(QAccessible::Name));
        return false;
    }

    QStringList spoken;
};

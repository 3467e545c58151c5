// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "widgets/HeldKeys.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>

HeldKeys::HeldKeys(QObject *parent) : QObject(parent) {
    qApp->installEventFilter(this);
}

// A shortcut event does not say whether it is a repetition; the ShortcutOverride event before it
// does.
bool HeldKeys::eventFilter(QObject *receiver, QEvent *event) {
    if (event->type() == QEvent::ShortcutOverride)
        repeats_ = static_cast<QKeyEvent *>(event)->isAutoRepeat();
    return event->type() == QEvent::Shortcut && repeats_ &&
           qobject_cast<QAbstractButton *>(receiver);
}

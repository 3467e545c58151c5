// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QAction>
#include <QMenu>

/// Adds an entry to \a menu, before \a next or at the end, that has \a context do \a work. A key
/// that is held is no second press, and the work begins a turn of the event loop later: assistive
/// technology, too, presses entries, and must not have to wait for it.
template <typename Context, typename Work>
QAction *addMenuEntry(QMenu &menu, const QString &text, const QKeySequence &keys, Context *context,
                      Work work, QAction *next = nullptr) {
    auto *entry = new QAction(text, &menu);
    entry->setShortcut(keys);
    entry->setAutoRepeat(false);
    QObject::connect(entry, &QAction::triggered, context, work, Qt::QueuedConnection);
    menu.insertAction(next, entry);
    return entry;
}

/// Shows \a menu at \a at, in coordinates of the screen; it is deleted once it closes. Unlike
/// QMenu::exec() it lets a run that ends meanwhile end.
inline void popUp(QMenu *menu, const QPoint &at) {
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(at);
}

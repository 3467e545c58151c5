// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "window/WindowFixture.h"

#include "exchange/ImportWindow.h"

#include "ui_ImportWindow.h"

#include <QMenu>
#include <QMenuBar>
#include <QPushButton>

// What a user does to import a file.

/// The menu entry that imports a file; null if there is none.
inline QAction *importEntry(WindowFixture &velm) {
    for (QMenu *menu : velm.velm().window().menuBar()->findChildren<QMenu *>())
        for (QAction *action : menu->actions())
            if (action->text() == QStringLiteral("&Import\u2026"))
                return action;
    return nullptr;
}

/// The open import window, once it has read its file; null if there is none.
inline ImportWindow *importWindow(WindowFixture &velm) {
    auto *window = velm.velm().window().findChild<ImportWindow *>();
    if (!window || !window->isVisible())
        return nullptr;
    const QProgressBar *progress = window->controls().progress;
    return QTest::qWaitFor([progress] { return !progress->isVisible(); }) ? window : nullptr;
}

/// The window after a file was named at the start.
inline ImportWindow *opened(WindowFixture &velm, const QString &name, const QByteArray &text) {
    velm.velm().openFile(velm.write(name, text));
    return importWindow(velm);
}

/// The window after a file was chosen with the entry of the menu.
inline ImportWindow *chosen(WindowFixture &velm, const QString &name, const QByteArray &bytes) {
    velm.panels.answer = velm.write(name, bytes);
    importEntry(velm)->trigger();
    velm.settle();
    return importWindow(velm);
}

/// True once no import window is there any more.
inline bool hasGone(WindowFixture &velm) {
    return QTest::qWaitFor([&velm] { return !velm.velm().window().findChild<ImportWindow *>(); });
}

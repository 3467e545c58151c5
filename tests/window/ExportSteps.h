// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "window/WindowFixture.h"

#include "exchange/ExportWindow.h"

#include "ui_ExportWindow.h"

#include <QMenu>
#include <QMenuBar>
#include <QPushButton>

// What a user does to export an image.

/// The open export window; opened if there is none.
inline ExportWindow *exportWindow(WindowFixture &velm) {
    if (auto *open = velm.velm().window().findChild<ExportWindow *>(); open && open->isVisible())
        return open;
    for (QMenu *menu : velm.velm().window().menuBar()->findChildren<QMenu *>())
        for (QAction *action : menu->actions())
            if (action->text() == QStringLiteral("E&xport\u2026"))
                action->trigger();
    QCoreApplication::processEvents();
    return velm.velm().window().findChild<ExportWindow *>();
}

/// True once the export window has gone.
inline bool exportHasEnded(WindowFixture &velm) {
    return QTest::qWaitFor([&velm] { return !velm.velm().window().findChild<ExportWindow *>(); });
}

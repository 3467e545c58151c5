// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "window/EditingSteps.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>

/// The image to burn, which the tool must find in its file as well.
inline QByteArray imageAndFile(WindowFixture &velm) {
    const QByteArray image = *velm.state().output_data;
    return onDisk(velm) == image ? image : "(the file differs) " + onDisk(velm);
}

/// The entry of the menus with \a text, mark of the mnemonic included.
inline QAction *menuEntry(WindowFixture &velm, const QString &text) {
    for (const QMenu *menu : velm.velm().window().menuBar()->findChildren<QMenu *>())
        for (QAction *action : menu->actions())
            if (action->text() == text)
                return action;
    qFatal("no entry %s", qPrintable(text));
}

/// Chooses the entry with \a text and lets it do its work.
inline void choose(WindowFixture &velm, const QString &text) {
    menuEntry(velm, text)->trigger();
    velm.settle();
}

/// Has the bytes from \a offset on selected in the grid, which gets the keyboard.
inline void selectBytes(WindowFixture &velm, qint64 offset, qint64 length) {
    GridView *grid = velm.controls().tableview;
    grid->setFocus();
    grid->selection().select({offset, length});
    QCOMPARE(grid->selection().bytes().offset, offset);
    QCOMPARE(grid->selection().bytes().length, length);
}

/// Presses a key with Ctrl in the grid.
inline void pressInGrid(WindowFixture &velm, Qt::Key key) {
    velm.controls().tableview->setFocus();
    QTest::keyClick(velm.controls().tableview, key, Qt::ControlModifier);
    velm.settle();
}

/// Starts with \a bytes as the data to burn, and shows them.
inline void showBytes(WindowFixture &velm, const QByteArray &bytes) {
    velm.settings().setValue(settingsKeys::binary, velm.write(QStringLiteral("rom.bin"), bytes));
    velm.start();
    velm.controls().tabview->selectTabViewItem(burnTabIdentifier());
    velm.settle();
}

/// The button of the message line that says \a text; null if there is none.
inline QPushButton *messageButton(WindowFixture &velm, const QString &text) {
    for (QPushButton *button : velm.controls().messageLine->findChildren<QPushButton *>())
        if (button->isVisible() && button->text() == text)
            return button;
    return nullptr;
}

/// The window of a kind that is open; null if none is.
template <typename Window>
Window *openWindow(WindowFixture &velm) {
    for (Window *window : velm.velm().window().findChildren<Window *>())
        if (window->isVisible())
            return window;
    return nullptr;
}

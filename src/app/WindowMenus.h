// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QAction>
#include <QList>

class ActionGate;
class AppDelegate;
class MainWindow;
class QMenu;
class QUndoStack;
class UserFiles;
class WorkState;

/// The entries of the menu bar that the rest of the program works with.
struct WindowMenus {
    /// What starts a run, or changes a setting or an image.
    QList<QAction *> offWhileRunning;
    QAction *stop = nullptr;
    QMenu *file = nullptr;         ///< where files come in and go out
    QAction *behindOpen = nullptr; ///< of the file menu, the entry behind that which opens one
    QAction *behindSave = nullptr; ///< of the file menu, the entry behind those that save images
    QMenu *edit = nullptr;         ///< where the steps through the shown bytes are
    QAction *behindCopy = nullptr; ///< of the edit menu, the line behind what copies and selects
    QMenu *view = nullptr;         ///< where the views are chosen
    QAction *behindTabs = nullptr; ///< of the view menu, the line behind the entries of the tabs
};

/// Fills the menu bar of \a window. Choosing an entry first commits what is being typed. The
/// entries press the window's buttons, a turn of the event loop later: an entry chosen by assistive
/// technology fires inside that technology's call, which must not last as long as a run of the
/// tool. The entries that go by the edit history follow \a work by themselves.
WindowMenus makeWindowMenus(MainWindow &window, AppDelegate &delegate, const WorkState &work,
                            const ActionGate &gate, const UserFiles &files);

/// Lets the texts of \a undo and \a redo say which step of \a history each would take back or make
/// again, as long as all three exist. A step without a text, or none at all, is called an edit.
void nameBySteps(QAction &undo, QAction &redo, const QUndoStack &history);

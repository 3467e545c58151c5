// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "app/WindowMenus.h"

#include "app/MainWindow.h"
#include "app/SelectionWiring.h"
#include "base/WorkState.h"
#include "control/ActionGate.h"
#include "control/AppDelegate.h"
#include "control/UserFiles.h"
#include "grid/GridColumns.h"
#include "imageviews/FindBar.h"
#include "views/HelpWindows.h"
#include "widgets/ConsoleView.h"
#include "widgets/MenuText.h"

#include "ui_MainWindow.h"

#include <QMenuBar>
#include <QUndoStack>

namespace {

/// Adds entries to one menu.
class MenuFiller {
public:
    MenuFiller(QMenuBar &bar, const QString &title) : menu_(bar.addMenu(title)) {}

    QAction *presses(QPushButton *button, const QString &text, const QKeySequence &keys) {
        return calls(text, keys, button, [button] { button->click(); });
    }

    template <typename Work>
    QAction *calls(const QString &text, const QKeySequence &keys, QObject *context, Work work) {
        QAction *action = menu_->addAction(text);
        action->setShortcut(keys);
        action->setAutoRepeat(false); // a key that is held is no second press
        QObject::connect(action, &QAction::triggered, context, work, Qt::QueuedConnection);
        return action;
    }

    QMenu *menu() const { return menu_; }

private:
    QMenu *menu_;
};

void fillRecentMenu(QMenu *recent, AppDelegate &delegate, const UserFiles &files) {
    recent->clear();
    for (const QString &path : files.recent())
        QObject::connect(
            recent->addAction(menuText(path)), &QAction::triggered, &delegate,
            [&delegate, path] { delegate.openBinary(path); }, Qt::QueuedConnection);
    if (recent->isEmpty())
        recent->addAction(AppDelegate::tr("No files yet"))->setEnabled(false);
}

/// Filled when the list changes, not when it is shown: assistive technology never shows it.
QMenu *addRecentMenu(QMenu &file, AppDelegate &delegate, const UserFiles &files) {
    QMenu *recent = file.addMenu(AppDelegate::tr("Open r&ecent"));
    const auto fill = [recent, &delegate, &files] { fillRecentMenu(recent, delegate, files); };
    QObject::connect(&files, &UserFiles::recentChanged, recent, fill);
    fill();
    return recent;
}

void fillFileMenu(MainWindow &window, AppDelegate &delegate, const UserFiles &files,
                  WindowMenus &menus) {
    Ui::MainWindow &c = window.controls();
    MenuFiller file(*window.menuBar(), AppDelegate::tr("&File"));
    menus.offWhileRunning << file.presses(c.btn_open, AppDelegate::tr("&Open binary\u2026"),
                                          QKeySequence::Open)
                          << file.presses(c.btn_export_read,
                                          AppDelegate::tr("Save data &read from chip\u2026"),
                                          QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S))
                          << file.presses(c.btn_export_output,
                                          AppDelegate::tr("&Save data to burn\u2026"),
                                          QKeySequence::Save);
    menus.file = file.menu();
    menus.behindOpen = menus.offWhileRunning.at(1);
    menus.behindSave = c.textView->saveAction();
    file.menu()->addAction(menus.behindSave);
    menus.offWhileRunning << addRecentMenu(*file.menu(), delegate, files)->menuAction();
    file.menu()->addSeparator();
    file.calls(AppDelegate::tr("&Quit"), QKeySequence(Qt::CTRL | Qt::Key_Q), &window,
               [&window] { window.close(); });
}

/// Turns \a action on while \a history holds something for it and the tool does not run. The
/// history is emptied when it is destroyed, too; its owner has gone by then and may not be asked.
template <typename Changed, typename IsPossible>
void followHistory(QAction *action, const QUndoStack &history, const WorkState &work,
                   Changed changed, IsPossible isPossible) {
    const auto refresh = [action, &history, &work, isPossible] {
        action->setEnabled((history.*isPossible)() && work.isIdle());
    };
    QObject::connect(&history, changed, action, refresh);
    QObject::connect(&work, &WorkState::changed, action, refresh);
    refresh();
}

QString stepName(const QString &text) {
    return text.isEmpty() ? AppDelegate::tr("edit") : text;
}

void fillFindEntries(MenuFiller &edit, FindBar &bar) {
    edit.calls(AppDelegate::tr("&Find\u2026"), QKeySequence::Find, &bar, [&bar] { bar.find(); });
    edit.calls(AppDelegate::tr("Find &next"), Qt::Key_F3, &bar, [&bar] { bar.findNext(); })
        ->setAutoRepeat(true);
    edit.calls(AppDelegate::tr("Find &previous"), QKeySequence(Qt::SHIFT | Qt::Key_F3), &bar,
               [&bar] { bar.findPrevious(); })
        ->setAutoRepeat(true);
    edit.calls(AppDelegate::tr("&Go to address\u2026"), QKeySequence(Qt::CTRL | Qt::Key_G), &bar,
               [&bar] { bar.findAddress(); });
}

void fillEditMenu(MainWindow &window, AppDelegate &delegate, const WorkState &work,
                  WindowMenus &menus) {
    Ui::MainWindow &c = window.controls();
    MenuFiller edit(*window.menuBar(), AppDelegate::tr("&Edit"));
    QAction *undo =
        edit.calls({}, QKeySequence::Undo, &delegate, [&delegate] { delegate.edits().undo(); });
    QAction *redo =
        edit.calls({}, QKeySequence::Redo, &delegate, [&delegate] { delegate.edits().redo(); });
    nameBySteps(*undo, *redo, delegate.edits().history());
    undo->setAutoRepeat(true);
    redo->setAutoRepeat(true);
    redo->setShortcuts(QKeySequence::Redo); // more than one key does it where that is the custom
    followHistory(undo, delegate.edits().history(), work, &QUndoStack::canUndoChanged,
                  &QUndoStack::canUndo);
    followHistory(redo, delegate.edits().history(), work, &QUndoStack::canRedoChanged,
                  &QUndoStack::canRedo);
    edit.menu()->addSeparator();
    addSelectionEntries(*edit.menu(), window);
    menus.edit = edit.menu();
    menus.behindCopy = edit.menu()->addSeparator();
    fillFindEntries(edit, *c.findBar);
}

void fillChipMenu(MainWindow &window, WindowMenus &menus) {
    Ui::MainWindow &c = window.controls();
    MenuFiller chip(*window.menuBar(), AppDelegate::tr("&Chip"));
    menus.offWhileRunning << chip.presses(c.btn_read, AppDelegate::tr("&Read"), Qt::Key_F5)
                          << chip.presses(c.btn_verify, AppDelegate::tr("&Verify"), Qt::Key_F6)
                          << chip.presses(c.btn_write, AppDelegate::tr("&Write"), Qt::Key_F7)
                          << chip.presses(c.btn_logic, AppDelegate::tr("&Logic test"), Qt::Key_F8);
    menus.stop =
        chip.presses(c.btn_stop, AppDelegate::tr("&Stop"), QKeySequence(Qt::CTRL | Qt::Key_Period));
    menus.stop->setEnabled(false);
    chip.menu()->addSeparator();
    menus.offWhileRunning << chip.presses(c.btn_search, AppDelegate::tr("Search &devices\u2026"),
                                          QKeySequence(Qt::CTRL | Qt::Key_D));
}

void fillViewMenu(MainWindow &window, WindowMenus &menus) {
    Ui::MainWindow &c = window.controls();
    MenuFiller view(*window.menuBar(), AppDelegate::tr("&View"));
    const auto addTab = [&](const QString &identifier, const QString &text, Qt::Key key) {
        view.calls(text, QKeySequence(Qt::CTRL | key), c.tabview,
                   [tabs = c.tabview, identifier] { tabs->selectTabViewItem(identifier); });
    };
    addTab(readTabIdentifier(), AppDelegate::tr("Data &read from chip"), Qt::Key_1);
    addTab(burnTabIdentifier(), AppDelegate::tr("Data to &burn"), Qt::Key_2);
    addTab(logicTabIdentifier(), AppDelegate::tr("&Logic test results"), Qt::Key_3);
    menus.view = view.menu();
    menus.behindTabs = view.menu()->addSeparator();
    view.menu()->addAction(c.textView->followOutputAction());
    view.menu()->addAction(c.textView->copyAllAction());
    view.menu()->addAction(c.textView->clearAction());
}

void fillHelpMenu(MainWindow &window) {
    MenuFiller help(*window.menuBar(), AppDelegate::tr("&Help"));
    help.calls(AppDelegate::tr("User &guide"), QKeySequence::HelpContents, &window,
               [&window] { showGuide(&window); });
    help.calls(AppDelegate::tr("&About VELM"), {}, &window, [&window] { showAbout(&window); });
}

} // namespace

void nameBySteps(QAction &undo, QAction &redo, const QUndoStack &history) {
    const auto nameUndo = [&undo](const QString &text) {
        undo.setText(AppDelegate::tr("&Undo %1").arg(stepName(text)));
    };
    const auto nameRedo = [&redo](const QString &text) {
        redo.setText(AppDelegate::tr("&Redo %1").arg(stepName(text)));
    };
    QObject::connect(&history, &QUndoStack::undoTextChanged, &undo, nameUndo);
    QObject::connect(&history, &QUndoStack::redoTextChanged, &redo, nameRedo);
    nameUndo(history.undoText());
    nameRedo(history.redoText());
}

WindowMenus makeWindowMenus(MainWindow &window, AppDelegate &delegate, const WorkState &work,
                            const ActionGate &gate, const UserFiles &files) {
    WindowMenus menus;
    fillFileMenu(window, delegate, files, menus);
    fillEditMenu(window, delegate, work, menus);
    fillChipMenu(window, menus);
    fillViewMenu(window, menus);
    fillHelpMenu(window);
    // A menu leaves the focus in the field that is being typed into, so nothing else commits it.
    QObject::connect(window.menuBar(), &QMenuBar::triggered, &window,
                     [&gate] { gate.commitPendingInput(); });
    return menus;
}

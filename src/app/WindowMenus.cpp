// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "app/WindowMenus.h"

#include "app/MainWindow.h"
#include "app/SelectionWiring.h"
#include "base/ShownName.h"
#include "base/WorkState.h"
#include "control/ActionGate.h"
#include "control/AppDelegate.h"
#include "control/UserFiles.h"
#include "grid/GridColumns.h"
#include "imageviews/FindBar.h"
#include "views/HelpWindows.h"
#include "widgets/ConsoleView.h"
#include "widgets/MenuEntry.h"
#include "widgets/MenuKeys.h"
#include "widgets/MenuText.h"

#include "ui_MainWindow.h"

#include <QMenuBar>
#include <QUndoStack>

namespace {

QAction *addPress(QMenu &menu, QPushButton *button, const QString &text, const QKeySequence &keys) {
    return addMenuEntry(menu, text, keys, button, &QPushButton::click);
}

void fillRecentMenu(QMenu *recent, AppDelegate &delegate, const UserFiles &files) {
    recent->clear();
    for (const QString &path : files.recent())
        QObject::connect(
            recent->addAction(menuText(shownName(path))), &QAction::triggered, &delegate,
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
    QMenu &file = *window.menuBar()->addMenu(AppDelegate::tr("&File"));
    menus.offWhileRunning << addPress(file, c.btn_open, AppDelegate::tr("&Open binary\u2026"),
                                      menuKeys::openBinary)
                          << addPress(file, c.btn_export_read,
                                      AppDelegate::tr("Save data &read from chip\u2026"),
                                      menuKeys::saveRead)
                          << addPress(file, c.btn_export_output,
                                      AppDelegate::tr("&Save data to burn\u2026"),
                                      menuKeys::saveToBurn);
    menus.file = &file;
    menus.behindOpen = menus.offWhileRunning.at(1);
    menus.behindSave = c.textView->saveAction();
    file.addAction(menus.behindSave);
    menus.offWhileRunning << addRecentMenu(file, delegate, files)->menuAction();
    file.addSeparator();
    addMenuEntry(file, AppDelegate::tr("&Quit"), Qt::CTRL | Qt::Key_Q, &window, &QWidget::close);
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

void fillFindEntries(QMenu &edit, FindBar &bar) {
    addMenuEntry(edit, AppDelegate::tr("&Find\u2026"), menuKeys::find, &bar, &FindBar::find);
    addMenuEntry(edit, AppDelegate::tr("Find &next"), menuKeys::findNext, &bar, &FindBar::findNext)
        ->setAutoRepeat(true);
    addMenuEntry(edit, AppDelegate::tr("Find &previous"), menuKeys::findPrevious, &bar,
                 &FindBar::findPrevious)
        ->setAutoRepeat(true);
    addMenuEntry(edit, AppDelegate::tr("&Go to address\u2026"), menuKeys::goToAddress, &bar,
                 &FindBar::findAddress);
}

void fillEditMenu(MainWindow &window, AppDelegate &delegate, const WorkState &work,
                  WindowMenus &menus) {
    Ui::MainWindow &c = window.controls();
    QMenu &edit = *window.menuBar()->addMenu(AppDelegate::tr("&Edit"));
    QAction *undo = addMenuEntry(edit, {}, QKeySequence::Undo, &delegate,
                                 [&delegate] { delegate.edits().undo(); });
    QAction *redo = addMenuEntry(edit, {}, QKeySequence::Redo, &delegate,
                                 [&delegate] { delegate.edits().redo(); });
    nameBySteps(*undo, *redo, delegate.edits().history());
    undo->setAutoRepeat(true);
    redo->setAutoRepeat(true);
    redo->setShortcuts(QKeySequence::Redo); // more than one key does it where that is the custom
    followHistory(undo, delegate.edits().history(), work, &QUndoStack::canUndoChanged,
                  &QUndoStack::canUndo);
    followHistory(redo, delegate.edits().history(), work, &QUndoStack::canRedoChanged,
                  &QUndoStack::canRedo);
    edit.addSeparator();
    addSelectionEntries(edit, window);
    menus.edit = &edit;
    menus.behindCopy = edit.addSeparator();
    fillFindEntries(edit, *c.findBar);
}

void fillChipMenu(MainWindow &window, WindowMenus &menus) {
    Ui::MainWindow &c = window.controls();
    QMenu &chip = *window.menuBar()->addMenu(AppDelegate::tr("&Chip"));
    menus.offWhileRunning << addPress(chip, c.btn_read, AppDelegate::tr("&Read"), menuKeys::read)
                          << addPress(chip, c.btn_verify, AppDelegate::tr("&Verify"),
                                      menuKeys::verify)
                          << addPress(chip, c.btn_write, AppDelegate::tr("&Write"), menuKeys::write)
                          << addPress(chip, c.btn_logic, AppDelegate::tr("&Logic test"),
                                      menuKeys::testLogic);
    menus.stop = addPress(chip, c.btn_stop, AppDelegate::tr("&Stop"), menuKeys::stop);
    menus.stop->setEnabled(false);
    chip.addSeparator();
    menus.offWhileRunning << addPress(chip, c.btn_search, AppDelegate::tr("Search &devices\u2026"),
                                      Qt::CTRL | Qt::Key_D);
}

void fillViewMenu(MainWindow &window, WindowMenus &menus) {
    Ui::MainWindow &c = window.controls();
    QMenu &view = *window.menuBar()->addMenu(AppDelegate::tr("&View"));
    const auto addTab = [&](const QString &identifier, const QString &text,
                            const QKeySequence &keys) {
        addMenuEntry(view, text, keys, c.tabview,
                     [tabs = c.tabview, identifier] { tabs->selectTabViewItem(identifier); });
    };
    addTab(readTabIdentifier(), AppDelegate::tr("Data &read from chip"), Qt::CTRL | Qt::Key_1);
    addTab(burnTabIdentifier(), AppDelegate::tr("Data to &burn"), menuKeys::showDataToBurn);
    addTab(logicTabIdentifier(), AppDelegate::tr("&Logic test results"), Qt::CTRL | Qt::Key_3);
    menus.view = &view;
    menus.behindTabs = view.addSeparator();
    view.addAction(c.textView->followOutputAction());
    view.addAction(c.textView->copyAllAction());
    view.addAction(c.textView->clearAction());
}

void fillHelpMenu(MainWindow &window) {
    QMenu &help = *window.menuBar()->addMenu(AppDelegate::tr("&Help"));
    addMenuEntry(help, AppDelegate::tr("User &guide"), QKeySequence::HelpContents, &window,
                 [&window] { showGuide(&window); });
    addMenuEntry(help, AppDelegate::tr("&About VELM"), {}, &window,
                 [&window] { showAbout(&window); });
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

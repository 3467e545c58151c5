// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "app/ViewControls.h"

#include "widgets/ConsoleView.h"

#include "ui_MainWindow.h"

#include <QMenu>

ViewControls::ViewControls(Ui::MainWindow &controls, QObject *parent)
    : QObject(parent),
      controls_(controls),
      grid_(*controls.tableview),
      console_(*controls.textView) {}

ViewZoom &ViewControls::zoomInUse() {
    return controls_.textView->hasFocus() ? console_ : grid_;
}

void ViewControls::addSize(QMenu &view, const QString &text, QKeySequence::StandardKey key,
                           void (ViewZoom::*change)()) {
    QAction *action = view.addAction(text, this, [this, change] { (zoomInUse().*change)(); });
    action->setShortcuts(key);
    action->setToolTip(tr("Of the console while it has the focus, of the grid otherwise"));
}

void ViewControls::addEntries(QMenu &view, QAction &beside) {
    beside_ = &beside;
    ConsoleView &console = *controls_.textView;
    console.visibleAction()->setShortcut(Qt::Key_F9);
    console.visibleAction()->setAutoRepeat(false);
    view.addActions({beside_, console.visibleAction(), console.wrapAction()});
    view.addSeparator();
    view.setToolTipsVisible(true);
    addSize(view, tr("Lar&ger letters"), QKeySequence::ZoomIn, &ViewZoom::enlarge);
    addSize(view, tr("S&maller letters"), QKeySequence::ZoomOut, &ViewZoom::reduce);
    view.addAction(tr("&Usual letters"), this, [this] { zoomInUse().setPercent(ViewZoom::usual); });
}

ViewChoices ViewControls::choices() const {
    const ConsoleView &console = *controls_.textView;
    return {grid_.percent(),
            console_.percent(),
            console.wrapAction()->isChecked(),
            console.visibleAction()->isChecked(),
            beside_->isChecked(),
            controls_.tableview->entries().moveOnAction()->isChecked()};
}

void ViewControls::setChoices(const ViewChoices &choices) {
    grid_.setPercent(choices.gridPercent);
    console_.setPercent(choices.consolePercent);
    controls_.textView->wrapAction()->setChecked(choices.wrapsConsole);
    controls_.textView->visibleAction()->setChecked(choices.showsConsole);
    beside_->setChecked(choices.showsBoth);
    controls_.tableview->entries().moveOnAction()->setChecked(choices.movesOn);
}

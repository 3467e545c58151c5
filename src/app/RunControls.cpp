// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "app/RunControls.h"

#include "grid/GridView.h"
#include "views/RepeatControls.h"
#include "views/StepWords.h"

#include "ui_MainWindow.h"

#include <QAbstractItemView>
#include <QAction>

#include <utility>

RunControls::RunControls(Ui::MainWindow &controls, QObject *parent)
    : QObject(parent), controls_(controls) {}

void RunControls::setActions(const QList<QAction *> &offWhileRunning, QAction *stop) {
    actions_ = offWhileRunning;
    stopAction_ = stop;
}

void RunControls::show(Work work) {
    const bool busy = work != Work::Idle;
    if (busy == busy_)
        return;
    busy_ = busy;
    if (busy)
        moveFocusAside();
    setBusy(busy);
    if (busy) {
        controls_.statusHead->setCurrentWidget(controls_.busy);
        controls_.busy->start(work == Work::Searching ? wordsForSearch() : wordsForStep({}));
    } else {
        controls_.busy->stop();
        controls_.statusHead->setCurrentWidget(controls_.verdictHeading);
        giveFocusBack();
    }
}

void RunControls::setBusy(bool busy) {
    Ui::MainWindow &c = controls_;
    const QList<QWidget *> offWhileRunning = {c.uaTextField,
                                              c.btn_search,
                                              c.dButton,
                                              c.btn_add_favourite,
                                              c.btn_remove_favourite,
                                              c.btn_read,
                                              c.btn_verify,
                                              c.btn_write,
                                              c.btn_logic,
                                              c.logicResults->repeatControls(),
                                              c.optionsBox,
                                              c.exportBox,
                                              c.compositionBox,
                                              c.miniproLocationField};
    for (QWidget *widget : offWhileRunning)
        widget->setEnabled(!busy);
    for (QAction *action : std::as_const(actions_))
        action->setEnabled(!busy);
    c.tableview->setEditTriggers(busy ? QAbstractItemView::NoEditTriggers
                                      : GridView::usualEditTriggers);
    offerStop();
}

void RunControls::showLeftovers(bool printing) {
    leftovers_ = printing;
    offerStop();
}

void RunControls::offerStop() {
    const bool possible = busy_ || leftovers_;
    controls_.btn_stop->setEnabled(possible);
    if (stopAction_)
        stopAction_->setEnabled(possible);
}

// Where a key does no harm while the tool runs.
QWidget *RunControls::restingPlace() const {
    if (controls_.textView->isHidden())
        return controls_.tableview;
    return controls_.textView;
}

// The window's own focus, since a search has the panel in front of it.
void RunControls::moveFocusAside() {
    focusBefore_ = controls_.centralwidget->window()->focusWidget();
    if (focusBefore_)
        restingPlace()->setFocus(Qt::OtherFocusReason);
}

// Somebody who went elsewhere during the run stays there.
void RunControls::giveFocusBack() {
    const QWidget *now = controls_.centralwidget->window()->focusWidget();
    const bool stillAside = now == restingPlace() || now == controls_.btn_stop || !now;
    if (focusBefore_ && stillAside)
        focusBefore_->setFocus(Qt::OtherFocusReason);
    focusBefore_ = nullptr;
}

#include "app/RunControls.h"

#include "ui_MainWindow.h"

#include <QAction>
#include <QApplication>

RunControls::RunControls(Ui::MainWindow &controls, QObject *parent)
    : QObject(parent), controls_(controls) {}

void RunControls::setActions(const QList<QAction *> &offWhileRunning, QAction *stop) {
    actions_ = offWhileRunning;
    stopAction_ = stop;
}

void RunControls::setRunning(bool running) {
    Ui::MainWindow &c = controls_;
    if (running)
        moveFocusAside();
    const QList<QWidget *> offWhileRunning = {c.uaTextField,
                                              c.btn_search,
                                              c.dButton,
                                              c.btn_add_favourite,
                                              c.btn_remove_favourite,
                                              c.btn_read,
                                              c.btn_verify,
                                              c.btn_write,
                                              c.btn_logic,
                                              c.optionsBox,
                                              c.exportBox,
                                              c.compositionBox,
                                              c.miniproLocationField};
    for (QWidget *widget : offWhileRunning)
        widget->setEnabled(!running);
    for (QAction *action : std::as_const(actions_))
        action->setEnabled(!running);
    c.tableview->setEditTriggers(running ? QAbstractItemView::NoEditTriggers
                                         : GridView::usualEditTriggers);
    c.btn_stop->setEnabled(running);
    if (stopAction_)
        stopAction_->setEnabled(running);
    if (running) {
        c.busy->start();
    } else {
        c.busy->stop();
        giveFocusBack();
    }
}

void RunControls::moveFocusAside() {
    focusBefore_ = QApplication::focusWidget();
    if (focusBefore_ && focusBefore_->window() == controls_.centralwidget->window())
        controls_.textView->setFocus(Qt::OtherFocusReason);
    else
        focusBefore_ = nullptr;
}

// Somebody who went elsewhere during the run stays there.
void RunControls::giveFocusBack() {
    const QWidget *now = QApplication::focusWidget();
    const bool stillAside = now == controls_.textView || now == controls_.btn_stop || !now;
    if (focusBefore_ && stillAside)
        focusBefore_->setFocus(Qt::OtherFocusReason);
    focusBefore_ = nullptr;
}

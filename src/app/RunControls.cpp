#include "app/RunControls.h"

#include "ui_MainWindow.h"

#include <QAction>
#include <QApplication>

RunControls::RunControls(Ui::MainWindow &controls, QObject *parent)
    : QObject(parent), m_controls(controls) {}

void RunControls::setActions(const QList<QAction *> &offWhileRunning, QAction *stop) {
    m_actions = offWhileRunning;
    m_stopAction = stop;
}

void RunControls::setRunning(bool running) {
    Ui::MainWindow &c = m_controls;
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
    for (QAction *action : std::as_const(m_actions))
        action->setEnabled(!running);
    c.tableview->setEditTriggers(running ? QAbstractItemView::NoEditTriggers
                                         : GridView::usualEditTriggers);
    c.btn_stop->setEnabled(running);
    if (m_stopAction)
        m_stopAction->setEnabled(running);
    if (running) {
        c.busy->start();
    } else {
        c.busy->stop();
        giveFocusBack();
    }
}

void RunControls::moveFocusAside() {
    m_focusBefore = QApplication::focusWidget();
    if (m_focusBefore && m_focusBefore->window() == m_controls.centralwidget->window())
        m_controls.textView->setFocus(Qt::OtherFocusReason);
    else
        m_focusBefore = nullptr;
}

// Somebody who went elsewhere during the run stays there.
void RunControls::giveFocusBack() {
    const QWidget *now = QApplication::focusWidget();
    const bool stillAside = now == m_controls.textView || now == m_controls.btn_stop || !now;
    if (m_focusBefore && stillAside)
        m_focusBefore->setFocus(Qt::OtherFocusReason);
    m_focusBefore = nullptr;
}

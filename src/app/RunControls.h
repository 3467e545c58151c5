// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/WorkState.h"

#include <QList>
#include <QObject>
#include <QPointer>

class QAction;
class QWidget;

namespace Ui {
class MainWindow;
}

/// Turns the window's controls off while the tool works, for an operation or a search, and on
/// again. Meanwhile the window can be looked at (scrolled, its tabs switched, text copied), but
/// whatever would start a run or change a setting or an image is off, and one thing can be
/// pressed: Stop. What is refused is decided elsewhere; this shows it.
class RunControls final : public QObject {
    Q_OBJECT

public:
    /// Works on \a controls, and on the menu actions that setActions() names.
    explicit RunControls(Ui::MainWindow &controls, QObject *parent = nullptr);

    /// The menu entries that do what the controls do, and the one that stops.
    void setActions(const QList<QAction *> &offWhileRunning, QAction *stop);

    /// Shows \a work. While the tool works the focus is in the console, or in the grid if that is
    /// hidden, and comes back afterwards unless the user has moved it.
    void show(Work work);
    /// Something that a run left behind still prints, or no longer does: Stop is there for it too.
    void showLeftovers(bool printing);

private:
    void setBusy(bool busy);
    void offerStop();
    QWidget *restingPlace() const;
    void moveFocusAside();
    void giveFocusBack();

    Ui::MainWindow &controls_;
    QList<QAction *> actions_;
    QAction *stopAction_ = nullptr;
    QPointer<QWidget> focusBefore_;
    bool busy_ = false;
    bool leftovers_ = false;
};

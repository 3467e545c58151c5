#pragma once

#include <QList>
#include <QObject>
#include <QPointer>

class QAction;
class QWidget;

namespace Ui {
class MainWindow;
}

/// Turns the window's controls off while a run is in progress, and on again. While the tool works
/// the window can be looked at (scrolled, its tabs switched, text copied), but whatever would
/// start a run or change a setting or an image is off, and one thing can be pressed: Stop.
class RunControls final : public QObject {
    Q_OBJECT

public:
    /// Works on \a controls, and on the menu actions that setActions() names.
    explicit RunControls(Ui::MainWindow &controls, QObject *parent = nullptr);

    /// The menu entries that do what the controls do, and the one that stops.
    void setActions(const QList<QAction *> &offWhileRunning, QAction *stop);

    /// The window's state while a run is in progress (\a running) or not. The focus goes to the
    /// console meanwhile and comes back afterwards.
    void setRunning(bool running);

private:
    void moveFocusAside();
    void giveFocusBack();

    Ui::MainWindow &controls_;
    QList<QAction *> actions_;
    QAction *stopAction_ = nullptr;
    QPointer<QWidget> focusBefore_;
};

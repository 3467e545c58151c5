#include "app/MainWindow.h"

#include "grid/GridAccessible.h"

#include "ui_MainWindow.h"

#include <QCloseEvent>

MainWindow::MainWindow() : controls_(std::make_unique<Ui::MainWindow>()) {
    // Before the grid gets its name: what is told of it then makes its accessible for good.
    installGridAccessibility();
    controls_->setupUi(this);
}

MainWindow::~MainWindow() = default;

void MainWindow::changeEvent(QEvent *event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        emit paletteChanged();
}

void MainWindow::closeEvent(QCloseEvent *event) {
    if (mayClose_ && !mayClose_()) {
        event->ignore();
        return;
    }
    emit closing();
    event->accept();
}

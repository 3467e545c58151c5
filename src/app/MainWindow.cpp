// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "app/MainWindow.h"

#include "grid/GridAccessible.h"
#include "imageviews/ImageMapAccessible.h"
#include "widgets/MenuButton.h"

#include "ui_MainWindow.h"

#include <QCloseEvent>

MainWindow::MainWindow() : controls_(std::make_unique<Ui::MainWindow>()) {
    // Before setupUi(): it names the widgets, and telling of that makes their accessible objects
    // for good.
    installGridAccessibility();
    installImageMapAccessibility();
    installMenuButtonAccessibility();
    controls_->setupUi(this);
}

MainWindow::~MainWindow() = default;

void MainWindow::changeEvent(QEvent *event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        emit paletteChanged();
}

void MainWindow::closeEvent(QCloseEvent *event) {
    if (closeGuard_ && !closeGuard_()) {
        event->ignore();
        return;
    }
    emit closing();
    event->accept();
}

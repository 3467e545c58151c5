// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "app/MainWindow.h"

#include "grid/GridAccessible.h"
#include "imageviews/ImageMapAccessible.h"
#include "widgets/MenuButton.h"
#include "widgets/MenuKeys.h"

#include "ui_MainWindow.h"

#include <QCloseEvent>

MainWindow::MainWindow() : controls_(std::make_unique<Ui::MainWindow>()) {
    // Before setupUi(): it names the widgets, and telling of that makes their accessible objects
    // for good.
    installGridAccessibility();
    installImageMapAccessibility();
    installMenuButtonAccessibility();
    controls_->setupUi(this);
    nameKeys();
}

MainWindow::~MainWindow() = default;

void MainWindow::nameKeys() {
    const Ui::MainWindow &c = *controls_;
    nameKeysIn(*c.btn_read, menuKeys::read);
    nameKeysIn(*c.btn_verify, menuKeys::verify);
    nameKeysIn(*c.btn_write, menuKeys::write);
    nameKeysIn(*c.btn_logic, menuKeys::testLogic);
    nameKeysIn(*c.btn_stop, menuKeys::stop);
    nameKeysIn(*c.btn_open, menuKeys::openBinary);
    nameKeysIn(*c.btn_export_read, menuKeys::saveRead);
    nameKeysIn(*c.btn_export_output, menuKeys::saveToBurn);
}

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

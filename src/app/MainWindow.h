// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QMainWindow>

#include <functional>
#include <memory>
#include <utility>

namespace Ui {
class MainWindow;
}

/// The program's one window. It holds the controls and knows nothing of what they do; whether it
/// may close is asked of its controller.
class MainWindow final : public QMainWindow {
    Q_OBJECT

public:
    MainWindow();
    ~MainWindow() override;

    /// The controls, as MainWindow.ui names them.
    Ui::MainWindow &controls() { return *controls_; }
    /// Has \a guard asked before the window closes. If it gives false, the window stays open.
    void setCloseGuard(std::function<bool()> guard) { closeGuard_ = std::move(guard); }

signals:
    /// The window is about to close for good.
    void closing();
    /// The desktop's colours changed.
    void paletteChanged();

protected:
    void changeEvent(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void nameKeys();

    std::unique_ptr<Ui::MainWindow> controls_;
    std::function<bool()> closeGuard_;
};

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

class ConsoleView;
class GridView;
class QAbstractButton;
class QDialog;
class QLabel;
class QLineEdit;
class TabView;
class device_searcher;

/// The window's controls that the controller works with, filled once by the wiring function. The
/// controller never sets them up: what sends which action belongs to the window's definition.
struct AppDelegateOutlets {
    TabView *tabview = nullptr;
    GridView *tableview = nullptr;
    ConsoleView *textView = nullptr;
    QLabel *peeping_at = nullptr;
    QDialog *searchDevicesWindow = nullptr;
    device_searcher *devicesearcher = nullptr;
    QLineEdit *readFileTextField = nullptr;
    QLineEdit *startAddTextField = nullptr;
    QLineEdit *padToTextField = nullptr;
    QAbstractButton *btn_combine_read_data = nullptr;
    QAbstractButton *btn_pad = nullptr;
    QAbstractButton *btn_pad_ff = nullptr;
    QAbstractButton *btn_pad_00 = nullptr;
};

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>

class QPushButton;
class QSpinBox;

/// A button that runs a test so many times, and the number beside it. The button says the number.
class RepeatControls final : public QWidget {
    Q_OBJECT

public:
    static constexpr int minTimes = 2;
    static constexpr int maxTimes = 100;
    static constexpr int usualTimes = 10;

    explicit RepeatControls(QWidget *parent = nullptr);

    /// Has the tabulator come here after \a before: to the button, then to the number.
    void setTabPlaceAfter(QWidget *before);

signals:
    /// The user wants the test run \a times times.
    void repeatRequested(int times);

private:
    void showTimes(int times);

    QPushButton *button_;
    QSpinBox *times_;
};

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>

class QPushButton;
class QSpinBox;

/// A button that asks for repeated tests, and beside it how many. The button says the number, too.
class RepeatControls final : public QWidget {
    Q_OBJECT

public:
    /// The fewest tests in a row, since one is no repetition.
    static constexpr int minTimes = 2;
    /// The most: a fault that comes and goes has shown itself by then, or needs other means.
    static constexpr int maxTimes = 100;
    /// What is offered at first: enough to show most loose contacts.
    static constexpr int usualTimes = 10;

    explicit RepeatControls(QWidget *parent = nullptr);

    /// Puts the button, then the number, behind \a before in the order of the Tab key.
    void setTabPlaceAfter(QWidget *before);

signals:
    /// The user wants the test run \a times times.
    void repeatRequested(int times);

private:
    void showTimes(int times);

    QPushButton *button_;
    QSpinBox *times_;
};

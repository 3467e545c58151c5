// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "control/Messages.h"
#include "language/NextStep.h"

#include <QCoreApplication>

class ActionGate;
class AppDelegate;
class MainWindow;
class SettingsStore;
class UserFiles;

/// Makes the buttons that take the next step after a verdict. A button does what the user would do
/// by the controls, and is refused when they are.
class NextStepButtons {
    Q_DECLARE_TR_FUNCTIONS(NextStepButtons)

public:
    /// What the steps are taken with; all must live as long as the buttons.
    struct Surroundings {
        MainWindow &window;
        AppDelegate &delegate;
        SettingsStore &settings;
        UserFiles &files;
        const ActionGate &gate;
    };

    explicit NextStepButtons(const Surroundings &surroundings) : with_(surroundings) {}

    Messages::Action buttonFor(const NextStep &step) const;

private:
    struct Maker;

    Surroundings with_;
};

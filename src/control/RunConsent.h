// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "control/BurnDoubt.h"
#include "files/FolderGuard.h"

#include <QCoreApplication>
#include <QString>

class ActionGate;
class BurnFile;
class Messages;
class SecondPress;
class SettingsStore;
class ToolTrust;

/// Where a run comes from: a press of the user's, or the repetition of the run before. What was
/// confirmed for that one is confirmed for its repetition, as long as it is the very same.
enum class RunPress { Own, Repeated };

/// Asks the user before a run of the tool, whichever operation it is: about a command that is odd,
/// a tool that was not set here, and data that the chip would not get as the window shows them.
class RunConsent {
    Q_DECLARE_TR_FUNCTIONS(RunConsent)

public:
    /// What it works with; all must outlive it.
    struct Surroundings {
        const SettingsStore &settings;
        ToolTrust &toolTrust;
        Messages &messages;
        SecondPress &secondPress;
        const ActionGate &gate;
        FolderGuard mayUseFolder; ///< of the temporary files
        BurnFile &burnFile;
    };

    explicit RunConsent(const Surroundings &surroundings) : with_(surroundings) {}

    /// True if the user is asked before the run that \a burn is about, whose command is that of the
    /// settings; false if there is nothing to ask, or the same was asked just before: the tool is
    /// trusted then. \a revision tells one image from another. True as well, and said, if another
    /// window has the folder through which files are exchanged with the tool: no press runs it
    /// then.
    bool asks(BurnSituation burn, quint64 revision, RunPress press);

private:
    bool refusesForeignFolder() const;
    void writeAgain() const;

    const Surroundings with_;
    QString confirmed_; ///< what the newest run was confirmed for; empty if nothing was asked
};

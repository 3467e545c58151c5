// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "tool/UserShell.h"

#include "process/ChildProcess.h"
#include "settings/FilePaths.h"

#include <QtGlobal>

std::optional<QString> userShell() {
    if (!qEnvironmentVariableIsSet("SHELL"))
        return std::nullopt;
    return qEnvironmentVariable("SHELL");
}

QStringList shellArguments(const QString &command) {
    return {QStringLiteral("-l"), QStringLiteral("-c"), command};
}

void giveToShell(ChildProcess &child, const QString &command, const SettingsStore &settings) {
    child.setLaunchPath(userShell());
    child.setArguments(shellArguments(command));
    child.setWorkingFolder(temporaryFolder(settings));
}

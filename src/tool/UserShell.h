// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>

#include <optional>

class ChildProcess;
class SettingsStore;

/// The shell that the environment names in SHELL, by path; nothing without that variable.
std::optional<QString> userShell();

/// The words with which that shell, as a login shell, runs \a command.
QStringList shellArguments(const QString &command);

/// Has \a child run \a command in that shell, in the folder of temporary files after \a settings.
void giveToShell(ChildProcess &child, const QString &command, const SettingsStore &settings);

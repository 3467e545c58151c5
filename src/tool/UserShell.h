// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// The shell that the environment names in SHELL, by path; nothing without that variable.
std::optional<QString> userShell();

/// The words with which that shell, as a login shell, runs \a command.
QStringList shellArguments(const QString &command);

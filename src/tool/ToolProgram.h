// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <optional>

/// The program that the setting \a tool, a command for the shell, names if it names one and has
/// nothing else: a path, in which a leading "~/" is the home folder, or a name that the shell looks
/// up. Nothing for a text that holds further words, such as "sudo minipro", or of which only the
/// shell knows what it is.
std::optional<QString> programOf(const QString &tool);

/// True if it is known without asking the shell that there is no program at the path that \a tool
/// names.
bool isKnownToBeMissing(const QString &tool);

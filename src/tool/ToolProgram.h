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

/// What keeps a program from being run.
enum class ProgramTrouble {
    Missing,      ///< there is nothing at its path
    NotExecutable ///< what is there is no file, or one that the user may not execute
};

/// What is known, without asking the shell, to be wrong with the program at the path that \a tool
/// names. Nothing if that can be run, and nothing if it is not known: where only the shell knows
/// which program it is, or where that cannot be looked at just now.
std::optional<ProgramTrouble> programTrouble(const QString &tool);

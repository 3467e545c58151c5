// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <vector>

/// What a finished command took.
struct CommandCost {
    double wall = 0; ///< milliseconds
    double cpu = 0;  ///< milliseconds of user and system time together
};

/// User and system time of this process so far, in milliseconds.
double ownCpuMilliseconds();

/// The path of \a program in $PATH; empty if it is not installed.
std::string findProgram(const std::string &program);

/// Runs \a words (a path and its arguments), its output thrown away, to its end. Throws if it
/// could not be started or failed.
CommandCost runCommand(const std::vector<std::string> &words);

/// Starts \a words with the environment changed by \a variables ("NAME=value", or "NAME" to
/// remove it), its output thrown away; gives the process number. Throws if that failed.
int startCommand(const std::vector<std::string> &words,
                 const std::vector<std::string> &variables = {});
/// Ends a process that startCommand() started, politely first, and waits for it.
void endCommand(int pid);

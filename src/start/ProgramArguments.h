// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"

#include <QString>
#include <QStringList>

#include <variant>

/// What the program was started with.
struct ProgramOptions {
    /// Absolute paths of the files that hold the settings and what the window remembers.
    QString settings;
    QString memory;
    /// Absolute path of the binary to open; empty if none was named.
    QString binary = {};
};

/// Something to print instead of opening a window: the options, or the version.
struct ProgramAnswer {
    QString text;
};

/// Why the arguments make no sense: one sentence.
struct ProgramRefusal {
    QString sentence;
};

/// What there is to do.
using ProgramRequest = std::variant<ProgramOptions, ProgramAnswer>;

/// Reads \a words, the program's name first. Needs no display: what the toolkit takes for itself
/// once it has one (-platform, -style and the like) is known here and passed over. Relative paths
/// count from the current folder.
Result<ProgramRequest, ProgramRefusal> readArguments(const QStringList &words);

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

/// What there is to ask about a command before the shell gets it.
struct CommandDoubt {
    QString command;
    /// What the shell takes in it for more than a name, each once.
    QString oddCharacters;

    /// The tool in it is not known to come from the user.
    bool toolIsForeign = false;

    /// False for a command that may be run at once.
    bool asks() const { return toolIsForeign || !oddCharacters.isEmpty(); }
};

/// Shows the command of \a doubt and says what there is to ask about it, translated.
QString sentenceOf(const CommandDoubt &doubt);

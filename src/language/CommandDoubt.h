// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

/// What there is to ask about a command before the shell gets it.
struct CommandDoubt {
    QString command;
    /// What the shell takes in it for more than a name, each once.
    QString oddCharacters;

    /// False for a command that may be run at once.
    bool asks() const { return !oddCharacters.isEmpty(); }
};

/// Shows the command of \a doubt and says what there is to ask about it, translated.
QString sentenceOf(const CommandDoubt &doubt);

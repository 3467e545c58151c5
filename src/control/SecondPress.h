// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "control/Messages.h"

#include <QElapsedTimer>
#include <QString>

/// What is done only when it is asked for twice. The first press is answered by a sentence in the
/// message line; the second one counts for the very same thing alone, and only when it can no
/// longer be the second half of a double-click.
class SecondPress {
public:
    /// Who presses: a hand may double-click, a program does not.
    enum class Presser { Hand, Program };

    /// What a press is about.
    struct Question {
        /// Stands for all that the sentence speaks of: another text is another question.
        QString thing;
        /// Translated; ends with what a second press does.
        QString sentence;
        /// What else may be done about it; nothing if `run` is empty.
        Messages::Action action = {};
    };

    /// Asks in \a messages, which must live as long.
    explicit SecondPress(Messages &messages) : messages_(messages) {}

    /// True if this press is the second one for the same thing; the sentence goes then. False if
    /// the user is asked by it, or was just now.
    bool confirms(const Question &question, Presser presser = Presser::Hand);
    /// What was asked is no longer true, or answered otherwise: the next press is a first one.
    void withdraw();

private:
    Messages &messages_;
    QString asked_;
    QElapsedTimer sinceAsked_;
};

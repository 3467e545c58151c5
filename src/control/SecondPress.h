// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "control/Messages.h"
#include "widgets/RepeatedPress.h"

#include <QString>

/// What is done only when it is asked for twice. The first press is answered by a sentence in the
/// message line; only the second one counts.
class SecondPress {
public:
    using Presser = RepeatedPress::Presser;

    /// What a press is about.
    struct Question {
        /// Stands for all that the sentence speaks of: another text is another question.
        QString thing;
        /// Translated; ends with what a second press does.
        QString sentence;
        /// What else may be done about it; nothing if `run` is empty.
        Messages::Action action = {};
    };

    /// Asks in \a messages, which must outlive it.
    explicit SecondPress(Messages &messages) : messages_(messages) {}

    /// True if this press is the second one for the same thing; the sentence goes then. False if
    /// the user is asked by it, or was just now.
    bool confirms(const Question &question, Presser presser = Presser::Hand);
    /// What was asked is no longer true, or answered otherwise: the next press is a first one.
    void withdraw();

private:
    Messages &messages_;
    RepeatedPress press_;
};

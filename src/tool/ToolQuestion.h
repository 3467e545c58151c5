// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Units.h"
#include "process/ChildProcess.h"
#include "process/Pipe.h"

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QTimer>

#include <chrono>
#include <optional>

class SettingsStore;

/// What came of a question.
struct ToolAnswer {
    /// The exit status; nothing if there was no whole answer: it could not be started, was killed,
    /// took too long or said too much.
    std::optional<int> status;
    /// What was said on standard output, and behind it what was said on standard error.
    QString text;
};

/// One short command for the user's login shell that is run beside everything else: nobody waits
/// for it, and it is neither shown nor logged. It must need no programmer. Deleting the question
/// ends it at once, with all that it has started.
class ToolQuestion final : public QObject {
    Q_OBJECT

public:
    /// The most bytes of an answer.
    static constexpr qsizetype largestAnswer = 64 * kibibyte;
    /// A login shell may have much to read before it begins.
    static constexpr std::chrono::seconds usualPatience{15};

    /// \a command is started in the folder of the temporary files of \a settings, as runs are.
    ToolQuestion(const QString &command, const SettingsStore &settings, QObject *parent = nullptr);

    /// Starts the command, once, and waits for at most \a patience. Whatever happens, answered()
    /// follows a turn of the event loop later or after that.
    void ask(std::chrono::milliseconds patience = usualPatience);

signals:
    void answered(const ToolAnswer &answer);

private:
    void take(ReadHandle *handle);
    void takeRest(Pipe &pipe);
    void childEnded();
    void giveUp();
    void answer(const ToolAnswer &answer);

    Pipe input_{Pipe::Direction::ToChild};
    Pipe output_{Pipe::Direction::FromChild};
    Pipe error_{Pipe::Direction::FromChild};
    ChildProcess child_;
    QTimer patience_;
    QByteArray outputBytes_;
    QByteArray errorBytes_;
    bool isAnswered_ = false;
};

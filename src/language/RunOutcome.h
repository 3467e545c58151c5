// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"
#include "language/CommandLine.h"
#include "language/ImageEncoding.h"
#include "language/KnownMemories.h"
#include "language/NextStep.h"
#include "language/ToolReport.h"
#include "language/UsbProgrammer.h"

#include <QList>
#include <QString>

#include <optional>

/// Why nothing was started for a run.
struct StartTrouble {
    enum class Cause {
        Shell,       ///< it could not be started
        ForeignLink, ///< not even tried: somebody else's link stands where the tool would write
        UnknownLink  ///< not even tried: it is not known whether one does
    };

    Failure failure;
    Cause cause = Cause::Shell;
};

/// Everything that tells what became of a run of the programmer tool.
struct RunFacts {
    Operation operation = ReadOperation;
    /// The tool's path and the device as the settings gave them.
    QString tool;
    QString device;

    /// The file that a Write or Verify handed to the tool.
    QString imagePath;
    /// Its length in bytes; nothing if nobody knows.
    std::optional<qint64> imageLength;
    /// It holds the data to burn as the window shows them. If not, the tool got it as it stood,
    /// and whatever became of it is said of the file.
    bool imageIsShown = true;
    /// What the tool would take the file for.
    ImageEncoding encoding = ImageEncoding::Raw;

    /// What the chip is known to hold besides what a Write and a Verify concern.
    KnownMemories known;

    /// The programmers that are plugged in; nothing if the system does not tell.
    std::optional<QList<UsbProgrammer>> programmers;

    /// Whether the shell could be started for it.
    Result<void, StartTrouble> start;
    /// The exit code, or the signal's number if killedBySignal.
    int status = 0;
    bool killedBySignal = false;
    bool stopRequested = false;
    /// What the tool said on both streams.
    ToolReport report;
};

/// What a run came to.
struct RunOutcome {
    enum class Verdict {
        Succeeded,
        /// It ended well, but not as the window shows it: the sentence says in what it differs.
        Qualified,
        Failed,
        Stopped,
        NotStarted
    };
    Verdict verdict = Verdict::Failed;
    /// What happened, in one translated sentence or a few.
    QString sentence;
    /// What to do next, translated; empty where there is nothing to do or the sentence says it.
    QString nextStep;
    /// What the program can do about it.
    std::optional<NextStep> offer = std::nullopt;

    /// True if it did what it was for, if not as the window shows it.
    bool endedWell() const {
        return verdict == Verdict::Succeeded || verdict == Verdict::Qualified;
    }
    /// Both, for one line.
    QString words() const;
    /// Lets \a remark, if it is not empty, follow the sentence. Where both would have more than
    /// longestSentence characters, neither has more than half of them.
    void add(const QString &remark);
};

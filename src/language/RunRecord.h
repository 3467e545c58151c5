// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "language/RunOutcome.h"

#include <QDateTime>
#include <QString>

/// What is kept of a run of the programmer tool after its end: what was done to what, and what
/// came of it.
struct RunRecord {
    Operation operation = ReadOperation;
    QString device;
    /// The tool as the settings gave it, and the whole command line for the shell.
    QString tool;
    QString commandLine;
    QDateTime startedAt;
    QDateTime endedAt;
    /// Of the image that was handed over or read, in bytes.
    qint64 imageLength = 0;
    /// Which state of the data to burn was handed over; 0 for none, or for a file that held
    /// something else.
    quint64 imageRevision = 0;
    /// By this the file is known again that was handed over as it stood, if it was not the image;
    /// else empty.
    QString fileMark;
    int status = 0;
    /// The end of what the tool said.
    QString said;
    RunOutcome outcome;
    /// What of the tool's output the file of a logic test's report took.
    enum class Report {
        Whole,
        Cut,  ///< the beginning
        Older ///< nothing: it still holds a report of before
    };
    Report report = Report::Whole;
};

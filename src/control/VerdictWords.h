// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "language/NextStep.h"
#include "language/RunRecord.h"
#include "widgets/MessageLine.h"

#include <optional>

/// What the window shows at this moment, as far as a verdict may speak of it.
struct ShownNow {
    QString device;
    quint64 imageRevision = 0;
    /// Of the file that a Write would hand to the tool.
    QString fileMark;
};

/// A verdict as it is to be read now.
struct VerdictWords {
    MessageLine::Severity severity = MessageLine::Severity::Information;
    QString sentence;
    /// What the program can do about it; nothing once what it judged has changed.
    std::optional<NextStep> offer = std::nullopt;
};

/// How serious the verdict of \a run is.
MessageLine::Severity severityOf(const RunRecord &run);

/// What came of \a run in a few words, when, and with which device: "Verified at 13:02 – AT28C256".
QString headingOf(const RunRecord &run);

/// The verdict of \a run, held against what is shown \a now: as it was given while that is what it
/// judged, or may be, else with its time and what has changed since.
VerdictWords wordsFor(const RunRecord &run, const ShownNow &now);

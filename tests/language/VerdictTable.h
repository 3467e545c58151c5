// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "language/RunOutcome.h"

#include <QList>
#include <QString>

/// A row of the table of verdicts: what is known of a run, and what is to be shown of it.
struct VerdictRow {
    QString name;
    RunFacts facts;
    /// The verdict's name, the sentence and the next step, with bars between them.
    QString shown;
};

/// The rows of the file at \a path, whose head tells how it is written. A row that nobody can read
/// has a name that says so and expects it.
QList<VerdictRow> verdictRows(const QString &path);

/// \a outcome in the form of VerdictRow::shown.
QString shownOf(const RunOutcome &outcome);

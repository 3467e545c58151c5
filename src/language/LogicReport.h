// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"
#include "base/Units.h"

#include <QList>
#include <QStringList>

#include <optional>

class Log;

/// What a report of a logic test says, as far as the table shows it.
struct LogicReport {
    /// The last line that names the test, whole; nothing if there is none.
    std::optional<QString> title;
    /// The fields of the last header line; nothing if there is none.
    std::optional<QStringList> headers;
    /// The fields of each result line, in order; as many as the line has.
    QList<QStringList> rows;
    /// The events of the parsing, in order, for the caller to log.
    QStringList log;

    /// How many pins the last header line names; 0 if there is none.
    qsizetype pinCount() const { return headers ? headers->size() : 0; }
};

/// Reads the report \a text. It depends on the marks at the beginning of lines alone, never on the
/// layout behind them: the tool's versions differ in that.
LogicReport parseLogicReport(QStringView text);

/// The largest report that is read, in bytes. The tool's have kilobytes.
inline constexpr qint64 largestReport = mebibyte;
/// The longest line of a report that is read, in UTF-16 code units. The tool's have some hundred.
inline constexpr qsizetype longestReportLine = 4096;

/// Loads the report that a logic test left in the file at \a path, and logs what came of it; a
/// file of more than largestReport, one with a line of more than longestReportLine, or one that is
/// not UTF-8, cannot be read.
Result<LogicReport> loadLogicReport(const QString &path, Log &log);

/// A translated sentence on a report that could not be loaded because of \a failure; empty if there
/// is no file, which the run's own end explains.
QString wordsForUnreadReport(const Failure &failure);

/// A translated sentence on a report that lacks what could not be written because of \a failure.
QString wordsForCutReport(const Failure &failure);

/// The same strings in the same order, less every empty one. A blank is not empty.
QStringList trimEmptyStrings(const QStringList &strings);

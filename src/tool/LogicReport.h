// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QStringList>

#include <optional>

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
};

/// Reads the report \a text. It depends on the marks at the beginning of lines alone, never on the
/// layout behind them: the tool's versions differ in that.
LogicReport parseLogicReport(QStringView text);

/// The same strings in the same order, less every empty one. A blank is not empty.
QStringList trimEmptyStrings(const QStringList &strings);

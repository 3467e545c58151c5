// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Units.h"
#include "language/ToolReportReader.h"

#include <QByteArray>

/// Keeps the rows of a logic test's table whole. The tool prints the table in blocks on one stream
/// and everything else at once on the other: errors wait while a row is unfinished, and a line of
/// errors that has begun is completed before the next row is taken.
class WholeRows {
public:
    /// Errors beyond this many bytes do not wait for the end of a row.
    static constexpr qsizetype maxWaiting = 32 * kibibyte;

    /// \a chunk of \a stream has been shown.
    void note(const QByteArray &chunk, ToolStream stream);

    /// True if errors that come now belong behind the end of a row.
    bool errorsMustWait() const { return rowIsOpen_ && !errorsMayPass_; }
    /// True if the rest of a line of errors belongs before the next row.
    bool errorLineComesFirst() const { return errorLineIsOpen_ && !rowIsOpen_; }

    /// Lets \a errors wait. If there are too many, errors need not wait until output comes again.
    void keep(const QByteArray &errors);
    /// What has waited until now.
    QByteArray release();

private:
    QByteArray waiting_;
    bool rowIsOpen_ = false;
    bool errorLineIsOpen_ = false;
    bool errorsMayPass_ = false;
};

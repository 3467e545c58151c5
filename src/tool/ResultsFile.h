// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"

#include <QByteArrayView>
#include <QString>

class Log;

/// Appends \a bytes to the regular file \a path, which is created if it is missing; opened and
/// closed within the call. If there is no file afterwards the log says so. After a failure some of
/// the bytes may be written.
Result<void> appendToResultsFile(const QString &path, QByteArrayView bytes, Log &log);

/// Removes the file at \a path and logs whether that worked. Without a file there nothing is
/// logged, and only a link of somebody else's that leads nowhere is removed. A file that cannot be
/// removed is emptied; it is a failure if that cannot be done either.
Result<void> prepareResultsFile(const QString &path, Log &log);

/// Why a report is not all there in the results file.
struct ReportTrouble {
    Failure failure;
    bool isOlder = false; ///< what is there is of a test before this one
};

/// The results file during one logic test. The path may change with the settings.
class ReportKeeper {
public:
    /// The test begins: see prepareResultsFile().
    void begin(const QString &path, Log &log);
    /// Adds \a chunk to the file at \a path, unless something is missing there already: what
    /// follows a gap would pass for what belongs there. The file is looked at all the same, and
    /// logged if there is none.
    void keep(const QString &path, QByteArrayView chunk, Log &log);
    /// Whether the file holds all that was kept, and if not, why.
    const Result<void, ReportTrouble> &written() const { return written_; }

private:
    Result<void, ReportTrouble> written_;
};

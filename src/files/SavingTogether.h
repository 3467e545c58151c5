// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"
#include "files/UnfinishedFile.h"

#include <QByteArray>
#include <QList>
#include <QString>

/// One file of several that belong together.
struct FileToSave {
    QString path;
    QByteArray bytes;
};

/// A file that holds its new bytes although the others could not be saved, since even taking them
/// back failed. Hardly ever any.
struct NotTakenBack {
    QString path;
    QString olderPath; ///< where what it held lies now; empty if it was not there before

    friend bool operator==(const NotTakenBack &, const NotTakenBack &) = default;
};

/// Why files that belong together were not saved.
struct UnsavedTogether {
    QString path;    ///< of the file that could not be saved
    Failure failure; ///< what was wrong with it
    QList<NotTakenBack> notTakenBack;
};

/// Saves all of \a files, each by the rules of saveWholeFile(), or none of them: all are on the
/// disk before the first takes its place, and when one cannot take its own, or the disk refuses the
/// names in a folder, those that have one go back to what was there. A file that is there already
/// and may not be replaced is a failure, and so is the second of two files for one place.
///
/// A program that is killed between the first and the last may leave some of them saved; the
/// older ones then lie beside them.
Result<void, UnsavedTogether> saveTogether(const QList<FileToSave> &files, Replacing replacing);

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"
#include "files/BoundedSaving.h"

#include <QDeadlineTimer>
#include <QString>
#include <QVariantMap>

/// One INI file on the disk, which other programs and people may change at any time. It is read
/// anew for each question, and a change keeps whatever else is in it at that moment.
///
/// Only a regular file is ever read, changed or moved, and one that could not be opened or read
/// this time is left as it is.
class IniFile {
public:
    /// Why the values in the file are not to be had.
    struct Trouble {
        enum class Kind {
            OutOfReach, ///< the file could not be read or, for change(), not be saved
            Damaged     ///< there is one, and it is no INI text
        };

        Failure failure;
        Kind kind = Kind::OutOfReach;
    };
    /// Every key with its value, as of iniText::values(), or why they are not to be had.
    using Outcome = Result<QVariantMap, Trouble>;
    /// True if there are none because the file is damaged.
    static bool isDamaged(const Outcome &outcome);

    /// The file at the absolute \a path, which need not exist.
    explicit IniFile(const QString &path);

    QString path() const { return path_; }

    /// What is in the file now; nothing if there is none.
    Outcome read() const;
    /// Saves the values of \a changes (key to value) beside what else is in the file, and returns
    /// all of it. On failure the file is as it was. Makes missing folders. Waits until \a deadline
    /// for another program that changes the file, and for the disk, which may follow.
    Outcome change(const QVariantMap &changes, QDeadlineTimer deadline);

    /// Tells what the disk has made of a change that did not wait for it.
    const BoundedSaving &saving() const { return saving_; }

    /// Renames what is at the path to the first unused name of "<path>.damaged",
    /// "<path>.damaged-2", … and returns that name. Nothing is replaced.
    Result<QString> moveAside() const;

private:
    QString path_;
    BoundedSaving saving_;
};

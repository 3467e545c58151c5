// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"

#include <QString>

#include <chrono>
#include <optional>

struct stat;

/// By what a file that was looked at before is known again, without reading it: which file it is,
/// its size in bytes and when it was written last. Two equal stamps of one path mean that nobody
/// has written the file in between.
struct FileStamp {
    quint64 device = 0;
    quint64 inode = 0;
    qint64 size = 0;
    std::chrono::nanoseconds written{}; ///< since 1970

    /// The stamp of the file that \a path leads to; nothing if there is none, or if it cannot be
    /// looked at.
    static std::optional<FileStamp> of(const QString &path);
    /// What is seen of a file: its stamp, or that there is none. A failure if it cannot be looked
    /// at.
    using Look = Result<std::optional<FileStamp>>;
    /// The same for whoever must know which of both it is.
    static Look look(const QString &path);
    /// The stamp that the system's \a facts of a file amount to.
    static FileStamp from(const struct stat &facts);

    /// What a look at \a path gives, as a text to be compared with others: the stamp, "none" where
    /// there is no file, and unknownMark if it cannot be looked at.
    static QString mark(const QString &path);
    static const QString unknownMark;

    friend bool operator==(const FileStamp &, const FileStamp &) = default;
};

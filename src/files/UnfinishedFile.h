// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/FileDescriptor.h"
#include "base/Result.h"
#include "files/FileSaving.h"

#include <QByteArray>
#include <QString>

/// A file that is being written beside the one whose place it is to take. Where the file system
/// can do so it has no name until then, so that a program that is killed leaves nothing behind;
/// else, and for the moment of taking the place, its name bears this program's mark.
class UnfinishedFile {
public:
    /// Begins an empty file beside the one that \a path, a name for the system, stands for. The
    /// folder must exist.
    static Result<UnfinishedFile> beside(const QByteArray &path);
    UnfinishedFile(UnfinishedFile &&other) noexcept = default;
    UnfinishedFile &operator=(UnfinishedFile &&other) noexcept = default;
    /// What has not taken its place is gone.
    ~UnfinishedFile();

    /// To write to.
    int descriptor() const { return file_.get(); }
    /// Puts the file in the place of whatever has the name, in one step. Where it need not outlive
    /// more than the program (\a durability), the disk is left alone.
    Result<void> takePlace(Durability durability = Durability::PowerFailure);

private:
    UnfinishedFile(FileDescriptor file, QByteArray path, QByteArray name)
        : file_(std::move(file)), path_(std::move(path)), name_(std::move(name)) {}

    FileDescriptor file_;
    QByteArray path_;
    QByteArray name_; ///< empty while it has none
};

/// Removes the unfinished files that killed programs left beside the file at \a path; those that
/// are still being written stay, and everything without this program's mark.
void removeUnfinished(const QString &path);

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/FileDescriptor.h"
#include "base/Result.h"

#include <QByteArray>
#include <QString>

#include <utility>

/// What a saved file outlives.
enum class Durability {
    PowerFailure, ///< its bytes and its name are on the disk when saving has ended
    ProgramEnd    ///< the disk gets it when the system sees fit; for what is made anew at a start
};

/// Whether files that are there already may be replaced.
enum class Replacing { Allowed, Refused };

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
    /// Removes what has no place: this file, or the older one that it has replaced.
    ~UnfinishedFile();

    /// To write to.
    int descriptor() const { return file_.get(); }
    /// For whoever closes it later than this goes; there is nothing to write to any more.
    FileDescriptor takeDescriptor() { return std::move(file_); }
    /// Puts the file in the place of whatever has the name, in one step. The disk is left alone.
    Result<void> takePlace();
    /// The same, but the older file is kept under a name with the mark for as long as this lives,
    /// so that giveBackPlace() can put it back. An older file that may not be replaced is a
    /// failure.
    Result<void> takePlaceForNow(Replacing replacing);
    /// Puts the older file back, or none where there was none. Only once, and only after the file
    /// has taken its place. After a failure an older file keeps the name with the mark; there is
    /// none any more where takePlace() could not exchange names.
    Result<void> giveBackPlace();

    /// Where the file belongs, as a name for the system.
    const QByteArray &path() const { return path_; }
    /// The folder of that.
    QByteArray folder() const;
    /// The name with the mark that the older file has kept since giveBackPlace() failed; empty
    /// where there is none.
    const QByteArray &keptName() const { return keptName_; }

private:
    UnfinishedFile(FileDescriptor file, QByteArray path, QByteArray name)
        : file_(std::move(file)), path_(std::move(path)), name_(std::move(name)) {}

    /// Gives a file without a name one beside its place.
    Result<void> takeName();

    FileDescriptor file_;
    QByteArray path_;
    QByteArray name_; ///< empty while it has none; the older file's once that has made room
    QByteArray keptName_;
    bool olderIsGone_ = false; ///< there was one, and it cannot be given its place back
};

/// Has \a file, which has taken its place, give it back for \a failure. Gives that, and where even
/// this fails and the older file is left under another name, says where it is.
Failure givenBackFor(const Failure &failure, UnfinishedFile &file);

/// Removes the unfinished files that killed programs left beside the file at \a path; those that
/// are still being written stay, and everything without this program's mark.
void removeUnfinished(const QString &path);
/// The same for all files in \a folder, which must be this program's own.
void removeAllUnfinished(const QString &folder);

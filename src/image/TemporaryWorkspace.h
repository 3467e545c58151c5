// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"
#include "files/ByteBuffer.h"
#include "files/FileStamp.h"
#include "files/FolderGuard.h"

#include <QStringList>

#include <optional>

class Log;
class SettingsStore;

/// The folder of the temporary files through which the program and the programmer tool exchange
/// images and reports. Paths are read from the settings at the moment of use. Failures are
/// logged and nothing more; no call shows anything to the user.
class TemporaryWorkspace {
public:
    /// \a settings and \a log must outlive this object. \a mayUse says, before anything in the
    /// folder is changed, whether it is this program's; without it, it is.
    TemporaryWorkspace(const SettingsStore &settings, Log &log, FolderGuard mayUse = {});

    /// Makes sure that the temporary folder exists. Anything that stands at its path counts as
    /// existing. A failure is logged; whatever is written there then fails as well.
    void createTempDirectory();

    /// Writes the whole of \a output_data to the temporary output file; the file is replaced in
    /// one step, so the tool never reads half an image. A failure, which is logged, if that did not
    /// work or if \a output_data is null; no older image is then left at the path. The folder is
    /// made for it; in one that is another program's nothing changes.
    Result<void> write_output_data_to_temp_file(const ByteBuffer &output_data);

    /// The same for an image of which only the bytes of \a changed were edited or appended since
    /// the call before: they alone are written, in place, where the file is known to be as that
    /// call left it.
    Result<void> write_output_data_to_temp_file(const ByteBuffer &output_data, ByteRange changed);

    /// Whether the file that a Write or Verify would hand to the tool now holds just
    /// \a output_data; for a null one, whether the system says that there is no such file. A
    /// failure if it cannot be read, or stands behind a link of somebody else's.
    Result<bool> outputFileHolds(const ByteBuffer &output_data) const;

    /// Whether the temporary folder is this program's, or why nothing in it may be changed.
    Result<void> mayUse() const { return mayUse_(); }

    /// The folders of the files that the tool is given or writes, each once, into which others than
    /// the user may put files.
    QStringList sharedFolders() const;

    /// Deletes the output, read and search results files of an earlier run, and in silence those of
    /// other memories beside the read file, if the temporary folder exists and is this program's.
    /// Only files and links are deleted, never a folder. After a failed deletion every later one is
    /// logged as well; one that succeeded bears the description of the failure before it.
    void clear_temp_files();

    /// What the last write_output_data_to_temp_file() came to; no failure before the first.
    const Result<void> &lastWrite() const { return lastWrite_; }

private:
    const SettingsStore &settings_;
    Log &log_;
    FolderGuard mayUse_;
    /// The file as it was left when it was last written; nothing where that failed.
    struct Written {
        QString path;
        QString place; ///< where it really lies: the path may be a link of the user's
        FileStamp stamp;
    };

    Result<void> makeFolder();
    bool patch(const QByteArray &bytes, ByteRange changed);

    Result<void> lastWrite_;
    std::optional<Written> written_;
};

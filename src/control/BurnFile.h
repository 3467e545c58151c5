// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "control/BurnDoubt.h"
#include "files/ByteBuffer.h"
#include "image/TemporaryWorkspace.h"

#include <QObject>

class ActionGate;
class Messages;
class SettingsStore;

/// The file through which the tool gets the data to burn: writes it, says when it could not, and
/// holds it against what the window shows.
class BurnFile final : public QObject {
    Q_OBJECT

public:
    /// Works on the image that \a image refers to at each moment. All must outlive it.
    BurnFile(const ByteBuffer &image, TemporaryWorkspace &workspace, SettingsStore &defaults,
             Messages &messages, const ActionGate &gate);

    /// Writes the image to the file that the settings name; says so if that failed.
    void write();
    /// The same after an edit of the bytes of \a changed alone.
    void write(ByteRange changed);
    /// Says so if others may change one of the files that the tool is given or writes. To be called
    /// at the start; a file at another path is looked at by itself.
    void sayIfShared();
    /// What \a operation would be about if it began now, without its command; of an image only for
    /// Write and Verify.
    BurnSituation situation(Operation operation) const;
    /// The same as write() at the user's wish; says so if it has worked.
    void writeAgain();

private:
    void sayResult(const Result<void> &result);
    QString unwrittenWords(const QString &path) const;
    void followPath(const QString &key);

    const ByteBuffer &image_;
    TemporaryWorkspace &workspace_;
    SettingsStore &defaults_;
    Messages &messages_;
    const ActionGate &gate_;
    bool written_ = false; ///< since the start, whether that worked or not
};

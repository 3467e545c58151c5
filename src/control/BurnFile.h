// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "control/BurnDoubt.h"
#include "control/SecondPress.h"
#include "files/ByteBuffer.h"
#include "image/TemporaryWorkspace.h"

#include <QObject>

class ActionGate;
class SettingsStore;
class ToolTrust;

/// Where a run comes from: a press of the user's, or the repetition of the run before. What was
/// confirmed for that one is confirmed for its repetition, as long as it is the very same.
enum class RunPress { Own, Repeated };

/// The file through which the tool gets the data to burn: writes it, says when it could not, and
/// asks the user before a run gets from it what the window does not show.
class BurnFile final : public QObject {
    Q_OBJECT

public:
    /// Works on the image that \a image refers to at each moment. All must outlive it.
    BurnFile(const ByteBuffer &image, TemporaryWorkspace &workspace, SettingsStore &defaults,
             ToolTrust &toolTrust, Messages &messages, SecondPress &secondPress,
             const ActionGate &gate);

    /// Writes the image to the file that the settings name; says so if that failed.
    void write();
    /// The same after an edit of the bytes of \a changed alone.
    void write(ByteRange changed);
    /// Says so if others may change the file. To be called at the start; a file at another path is
    /// looked at by itself.
    void sayIfShared();
    /// What \a operation would be about if it began now; of an image only for Write and Verify.
    BurnSituation situation(Operation operation) const;
    /// True if the user is asked before the run that \a burn is about; false if there is nothing
    /// to ask, or the same was asked just before: the tool is trusted then. \a revision tells one
    /// image from another. True as well, and said, if another window has the folder through which
    /// files are exchanged with the tool: no press runs it then.
    bool asks(const BurnSituation &burn, quint64 revision, RunPress press);

private:
    bool refusesForeignFolder();
    void sayResult(const Result<void> &result);
    QString unwrittenWords(const QString &path) const;
    void followPath(const QString &key);
    void writeAgain();

    const ByteBuffer &image_;
    TemporaryWorkspace &workspace_;
    SettingsStore &defaults_;
    ToolTrust &toolTrust_;
    Messages &messages_;
    SecondPress &secondPress_;
    const ActionGate &gate_;
    QString confirmed_;    ///< what the newest run was confirmed for; empty if nothing was asked
    bool written_ = false; ///< since the start, whether that worked or not
};

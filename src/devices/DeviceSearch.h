// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "files/FolderGuard.h"
#include "language/DeviceListing.h"
#include "widgets/RepeatedPress.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>

#include <optional>

class ScriptedMiniPro;
class SettingsStore;
class ToolTrust;
class WorkState;

/// A search in the tool's catalogue: asks before an odd command, remarks on a tool that keeps it
/// waiting and tells what it came to. It knows nothing of the panel.
class DeviceSearch final : public QObject {
    Q_OBJECT

public:
    /// What a search has found.
    struct Found {
        DeviceListing listing; ///< empty if it could not be read
        QString outcome;       ///< translated
    };

    /// \a toolTrust knows whose command the tool is; a search takes part in \a work.
    DeviceSearch(SettingsStore &settings, ToolTrust &toolTrust, WorkState &work);

    /// Asks \a mayUseFolder before each search, which goes through the folder of temporary files.
    void setFolderGuard(FolderGuard mayUseFolder);
    /// True if \a term is to be searched for now; else a remark says what is in the way. A command
    /// that is odd, or whose tool was not set here, is shown and run when the same search is asked
    /// for again; once let run, such a tool is not asked about any more.
    bool mayRun(const QString &term);
    /// What was asked is no longer to be seen: the next search is a first one.
    void forgetQuestion() { press_.forget(); }
    /// Has \a run search for \a term. Returns when the tool has exited.
    Found run(ScriptedMiniPro &run, const QString &term);
    /// Ends the search in progress, if any; what was listed until then is found.
    void stop();
    bool isRunning() const { return !current_.isNull(); }

signals:
    /// A search begins (true) or has ended (false).
    void runningChanged(bool running);
    /// Something worth saying, translated.
    void remark(const QString &sentence);

private:
    void say(const QString &sentence);
    bool asksFirst(const QString &term);
    Result<void> clearResults() const;
    Found takeResults(const ScriptedMiniPro &run, const Result<void> &cleared) const;
    void remarkOnWords();
    void remarkOnSilence();

    SettingsStore &defaults_;
    ToolTrust &toolTrust_;
    WorkState &work_;
    FolderGuard mayUseFolder_;
    QPointer<ScriptedMiniPro> current_;
    QTimer silence_;
    qint64 outputSeen_ = 0;
    RepeatedPress press_;
    /// The command, but for its term, that a second press let run.
    std::optional<QString> letRun_;
};

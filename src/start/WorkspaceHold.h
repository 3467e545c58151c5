// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "files/FolderGuard.h"

#include <QObject>
#include <QString>

#include <memory>

class RaiseServer;
class SettingsStore;
class WorkspaceLock;

/// What a running program has of its workspace: the lock, which follows the folder that the
/// settings name, and the address at which other starts on that folder find it.
class WorkspaceHold final : public QObject {
    Q_OBJECT

public:
    /// \a lock, which has been taken, and \a settings must outlive it.
    WorkspaceHold(WorkspaceLock &lock, const SettingsStore &settings);
    ~WorkspaceHold() override;

    /// Whether the folder of temporary files that the settings name now is this program's, or why
    /// not. It is locked for that, and listened for once listen() has been called.
    FolderGuard::Answer mayUseFolder();
    /// Answers other starts from now on.
    void listen();

signals:
    /// Another start asked for the window.
    void raiseRequested();
    /// Follows raiseRequested() where the other start was to open the file at the absolute \a path.
    void openRequested(const QString &path);

private:
    WorkspaceLock &lock_;
    const SettingsStore &settings_;
    std::unique_ptr<RaiseServer> server_; ///< none before listen()
    QString listensAt_;
};

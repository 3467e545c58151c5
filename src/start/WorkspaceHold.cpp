// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "start/WorkspaceHold.h"

#include "settings/FilePaths.h"
#include "start/RaiseChannel.h"
#include "start/WorkspaceLock.h"

WorkspaceHold::WorkspaceHold(WorkspaceLock &lock, const SettingsStore &settings)
    : lock_(lock), settings_(settings) {}

WorkspaceHold::~WorkspaceHold() = default;

FolderGuard::Answer WorkspaceHold::mayUseFolder() {
    const Result<WorkspaceLock::Holder> holder = lock_.holdFolder(temporaryFolder(settings_));
    if (const Failure *failure = holder.failure())
        return FolderTrouble{*failure};
    if (*holder == WorkspaceLock::Holder::Another)
        return folderOfAnotherWindow();
    if (server_ && lock_.address().path != listensAt_)
        listen();
    return {};
}

void WorkspaceHold::listen() {
    const RaiseAddress address = lock_.address();
    server_ = std::make_unique<RaiseServer>(address);
    listensAt_ = address.path;
    // Queued: what is asked may move the lock, and then this server goes.
    connect(server_.get(), &RaiseServer::raiseRequested, this, &WorkspaceHold::raiseRequested,
            Qt::QueuedConnection);
    connect(server_.get(), &RaiseServer::openRequested, this, &WorkspaceHold::openRequested,
            Qt::QueuedConnection);
}

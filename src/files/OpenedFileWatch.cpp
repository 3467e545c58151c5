// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/OpenedFileWatch.h"

#include <QFileInfo>

OpenedFileWatch::OpenedFileWatch(QObject *parent) : QObject(parent) {
    connect(&watcher_, &QFileSystemWatcher::fileChanged, this, &OpenedFileWatch::look);
    connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, &OpenedFileWatch::look);
}

void OpenedFileWatch::watch(const QString &path) {
    const QStringList watched = watcher_.files() + watcher_.directories();
    if (!watched.isEmpty())
        watcher_.removePaths(watched);
    opened_ = FileStamp::of(path);
    path_ = opened_ ? path : QString();
    seen_ = opened_;
    listen();
}

// A file that is replaced is another one to the system, so its folder is watched as well.
void OpenedFileWatch::listen() {
    if (path_.isEmpty())
        return;
    if (QFileInfo::exists(path_) && !watcher_.files().contains(path_))
        watcher_.addPath(path_);
    const QString folder = QFileInfo(path_).path();
    if (!watcher_.directories().contains(folder))
        watcher_.addPath(folder);
}

void OpenedFileWatch::look() {
    if (path_.isEmpty())
        return;
    listen();
    const std::optional<FileStamp> now = FileStamp::of(path_);
    if (now == seen_)
        return;
    seen_ = now;
    emit stateChanged(!now ? State::Gone : now == opened_ ? State::AsOpened : State::Changed);
}

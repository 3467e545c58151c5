// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/OpenedFileWatch.h"

#include "files/SystemName.h"

#include <QFileInfo>

#include <chrono>

namespace {

/// How long nothing must have happened to the file: whoever is told may read it whole, which is in
/// vain while somebody writes it.
constexpr std::chrono::milliseconds quiet(200);

/// How soon a file is looked at again of which nothing is known, or whose changes nobody tells.
constexpr std::chrono::milliseconds later(1000);

/// How often a system may refuse to watch a file, or its folder, before it is looked at alone.
constexpr int mostRefusals = 4;

} // namespace

OpenedFileWatch::OpenedFileWatch(QObject *parent) : QObject(parent) {
    settling_.setSingleShot(true);
    connect(&watcher_, &QFileSystemWatcher::fileChanged, this, [this] { settling_.start(quiet); });
    // Most of what happens in a folder is about others, and need not come to rest.
    connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, [this] {
        if (!settling_.isActive())
            settling_.start(quiet);
    });
    connect(&settling_, &QTimer::timeout, this, &OpenedFileWatch::look);
}

void OpenedFileWatch::watch(const QString &path) {
    watch(path, FileStamp::of(path));
}

void OpenedFileWatch::watch(const QString &path, const std::optional<FileStamp> &opened) {
    const QStringList watched = watcher_.files() + watcher_.directories();
    if (!watched.isEmpty())
        watcher_.removePaths(watched);
    path_ = opened || !isMissing(path) ? path : QString();
    opened_ = opened;
    seen_ = opened;
    refusals_ = 0;
    settling_.stop();
    listen();
    if (!path_.isEmpty())
        settling_.start(quiet);
}

bool OpenedFileWatch::isHeard(const QString &path) const {
    return watcher_.files().contains(path) || watcher_.directories().contains(path);
}

// A file that is replaced is another one to the system, so its folder is watched as well. A system
// that refuses to watch, as one without room for that does, is not asked each time.
void OpenedFileWatch::listen() {
    if (path_.isEmpty() || refusals_ >= mostRefusals)
        return;
    if (QFileInfo::exists(path_) && !isHeard(path_) && !watcher_.addPath(path_))
        ++refusals_;
    const QString folder = QFileInfo(path_).path();
    if (!isHeard(folder) && !watcher_.addPath(folder))
        ++refusals_;
}

void OpenedFileWatch::look() {
    if (path_.isEmpty())
        return;
    listen();
    const std::optional<FileStamp> now = FileStamp::of(path_);
    // Such as a share that does not answer: nothing is known of the file then.
    const bool isUnknown = !now && !isMissing(path_);
    // That it has come back, its folder tells alone.
    if (isUnknown || !isHeard(now ? path_ : QFileInfo(path_).path()))
        settling_.start(later);
    // The first that is known of it.
    if (!opened_) {
        opened_ = now;
        seen_ = now;
    }
    if (now == seen_ || isUnknown)
        return;
    seen_ = now;
    refusals_ = 0;
    emit stateChanged(!now ? State::Gone : now == opened_ ? State::AsOpened : State::Changed);
}

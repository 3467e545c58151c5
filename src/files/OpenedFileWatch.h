// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "files/FileStamp.h"

#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>

#include <optional>

/// Tells when the file whose bytes were opened is no longer the file on the disk.
class OpenedFileWatch final : public QObject {
    Q_OBJECT

public:
    enum class State { AsOpened, Changed, Gone };

    explicit OpenedFileWatch(QObject *parent = nullptr);

    /// Watches the file at the absolute \a path, as it is at this moment, instead of any other. An
    /// empty path, or one without a file, watches nothing. If it cannot be looked at yet, its
    /// state at the first look that works is the opened one.
    void watch(const QString &path);
    /// Watches it from the state with the stamp \a opened on: a change since then is told soon.
    /// Without a stamp, its state at the first look that works is the opened one.
    void watch(const QString &path, const std::optional<FileStamp> &opened);
    /// The watched file; empty if there is none.
    QString path() const { return path_; }

signals:
    /// The file on the disk is now \a state: another one than when this was last told, or opened.
    /// A file that is written twice is told twice, but nothing is told while it is being written.
    void stateChanged(OpenedFileWatch::State state);

private:
    void look();
    void listen();
    bool isHeard(const QString &path) const;

    QFileSystemWatcher watcher_;
    QTimer settling_;
    int refusals_ = 0; ///< to watch the file as it is, or its folder
    QString path_;
    std::optional<FileStamp> opened_;
    std::optional<FileStamp> seen_; ///< when this was last told
};

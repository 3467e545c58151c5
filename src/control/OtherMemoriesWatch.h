// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/WorkState.h"
#include "files/FolderGuard.h"
#include "image/OtherMemories.h"
#include "language/KnownMemories.h"

#include <QHash>
#include <QObject>
#include <QPointer>

#include <optional>

class ScriptedMiniPro;
class SettingsStore;
struct RunRecord;

/// Keeps what the newest Read brought besides code memory, which the next one may write over on the
/// disk, and remembers which devices have such memories.
class OtherMemoriesWatch final : public QObject {
    Q_OBJECT

public:
    /// What it works with; all must outlive it.
    struct Surroundings {
        const SettingsStore &settings;
        const WorkState &work;
        /// Says whether the folder of the temporary files is this program's; without it, it is.
        FolderGuard mayUseFolder;
    };

    explicit OtherMemoriesWatch(const Surroundings &surroundings);

    /// \a run is about to be used. If it is a Read, the files that an older one left are removed as
    /// it begins.
    void follow(ScriptedMiniPro *run);
    /// A run is over. A Read that worked and read \a code replaces what is kept, even if it brought
    /// nothing else; any other run changes nothing.
    void takeRun(const RunRecord &record, const ByteBuffer &code);

    /// What the newest Read that worked brought; nothing if that was code memory alone.
    const std::optional<ReadMemories> &newest() const { return newest_; }
    /// The files beside the last Read that could not be read.
    const QList<OtherMemories::Unread> &unread() const { return unread_; }
    /// What the Reads of this start have shown \a device to hold.
    KnownMemories knownOf(const QString &device) const { return known_.value(device); }

signals:
    /// A Read that worked is over: newest() and unread() are what it brought.
    void readTaken();

private:
    void prepareRead(Work now);

    const Surroundings with_;
    QPointer<ScriptedMiniPro> run_;
    std::optional<OtherMemoryFiles> files_;
    std::optional<ReadMemories> newest_;
    QList<OtherMemories::Unread> unread_;
    QHash<QString, KnownMemories> known_;
};

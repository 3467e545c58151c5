// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "control/Messages.h"
#include "files/ByteBuffer.h"
#include "files/OpenedFileWatch.h"

class ActionGate;

/// The binary file that the user opened: its bytes are loaded whole, and its file is watched, so
/// that the window can say when the bytes are no longer those on the disk.
class OpenedBinary final : public QObject {
    Q_OBJECT

public:
    /// Keeps the bytes in \a bytes, null where there are none. All must outlive it.
    OpenedBinary(ByteBuffer &bytes, Messages &messages, const ActionGate &gate);

    /// Loads the file at the absolute \a path instead of any other, and says so if it cannot be
    /// read, or how it reads. The very same bytes stay the very same buffer. An empty path is no
    /// file.
    void load(const QString &path);

    /// How the file on the disk compares to what was loaded from it.
    OpenedFileWatch::State onDisk() const { return onDisk_; }

signals:
    /// The file on the disk is another one than before, or gone; onDisk() may say the same of it.
    /// load() does not tell.
    void onDiskChanged();
    /// The user wants the file's bytes as they are now, and the tool does not work.
    void reloadAsked();
    /// The user wants what the text in the file at \a path stands for, instead of the text.
    void importAsked(const QString &path);

private:
    bool isOnDisk(const QString &path) const;
    void sayHowItReads(const QString &path);
    void askToReload();
    void fileChanged(OpenedFileWatch::State state);
    void sayOnDisk();

    ByteBuffer &bytes_;
    Messages &messages_;
    const ActionGate &gate_;
    OpenedFileWatch watch_;
    OpenedFileWatch::State onDisk_ = OpenedFileWatch::State::AsOpened;
};

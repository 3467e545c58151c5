// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"

#include <QByteArray>
#include <QByteArrayView>

#include <sys/types.h>
#include <utility>

/// The mode of files that are not the user's alone, which the umask narrows.
inline constexpr mode_t modeOfNewFiles = 0666;

/// Owns one file descriptor and closes it; -1 is none.
class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int descriptor) : value_(descriptor) {}
    FileDescriptor(FileDescriptor &&other) noexcept : value_(std::exchange(other.value_, -1)) {}
    FileDescriptor &operator=(FileDescriptor &&other) noexcept {
        std::swap(value_, other.value_);
        return *this;
    }
    FileDescriptor(const FileDescriptor &) = delete;
    FileDescriptor &operator=(const FileDescriptor &) = delete;
    ~FileDescriptor() { close(); }

    int get() const { return value_; }
    bool isOpen() const { return value_ >= 0; }
    /// Closes the descriptor; does nothing if there is none.
    void close();
    /// Gives the descriptor up: it stays open and is nobody's.
    void release() { value_ = -1; }

private:
    int value_ = -1;
};

/// Whether what is open as \a file is what has the name \a name (for the system) now, be it over
/// links. A failure if nothing has it, or one of both cannot be looked at.
Result<bool> standsAt(const QByteArray &name, const FileDescriptor &file);

/// Writes \a bytes to \a descriptor, in one piece where the system takes them so. After a failure
/// some of them may be written.
Result<void> writeAll(int descriptor, QByteArrayView bytes);

/// Likewise, over what the file of \a descriptor holds from \a offset on.
Result<void> writeAllAt(int descriptor, qint64 offset, QByteArrayView bytes);

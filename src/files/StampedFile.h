// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"
#include "files/ByteBuffer.h"
#include "files/FileStamp.h"

#include <QString>

#include <optional>

/// A file that was read, as it was then.
struct StampedFile {
    QString path;
    ByteBuffer bytes; ///< not null
    /// Of the file before its bytes were read: one that is written meanwhile has another by now.
    std::optional<FileStamp> stamp;
};

/// Loads the whole file at \a path by the rules of loadWholeFile().
Result<StampedFile> loadStamped(const QString &path);

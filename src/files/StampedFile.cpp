// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/StampedFile.h"

#include "files/FileLoading.h"

Result<StampedFile> loadStamped(const QString &path) {
    const FileStamp::Look stamp = FileStamp::look(path);
    if (const Failure *failure = stamp.failure())
        return *failure;
    const Result<ByteBuffer> loaded = loadWholeFile(path);
    if (const Failure *failure = loaded.failure())
        return *failure;
    return StampedFile{path, *loaded, *stamp};
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"
#include "files/ByteBuffer.h"
#include "files/FileStamp.h"

/// Lets the file at \a path hold \a bytes by writing the bytes of \a changed in place, where every
/// other byte of it is known to be right: \a known is its stamp from when it was written last. The
/// file may become longer or shorter. Gives its new stamp.
///
/// Fails without a byte written unless the file is still just that one, a regular file by its only
/// name. A failure while writing leaves the file in a state that nobody knows.
Result<FileStamp> patchFile(const QString &path, const FileStamp &known, const QByteArray &bytes,
                            ByteRange changed);

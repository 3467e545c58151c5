// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"
#include "base/Units.h"
#include "files/ByteBuffer.h"

#include <QByteArrayView>
#include <QString>

/// The largest text file that the program reads: 64 MiB.
inline constexpr qint64 largestText = 64 * mebibyte;

/// Loads the whole file at \a path into a new buffer. Links are followed; folders, FIFOs and
/// devices are refused at once, without blocking on them, and so is a file of more than \a limit
/// bytes. Of a file that grows meanwhile, the part that was there at first is taken; of one that
/// shrinks, what is left.
Result<ByteBuffer> loadWholeFile(const QString &path, qint64 limit = largestImage);

/// The same of a file that others may have put a link in the place of: one that is not the user's
/// is a failure.
Result<ByteBuffer> loadOwnFile(const QString &path, qint64 limit = largestImage);

/// Whether there is a regular file at \a path and it holds just \a bytes; a failure if that cannot
/// be found out. Reads it piece by piece, and no further than to the first piece that differs.
Result<bool> fileHolds(const QString &path, QByteArrayView bytes);

/// Loads the whole file at \a path, by the rules of loadOwnFile(), as UTF-8 text. A file that is
/// not valid UTF-8 throughout is a failure with the number EILSEQ; a leading byte-order mark is a
/// character of the text.
Result<QString> loadUtf8Text(const QString &path, qint64 limit = largestText);
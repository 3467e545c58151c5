// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"

#include <QByteArray>
#include <QString>

class FileDescriptor;

/// \a path as the system's calls take it. A path with a null character, which they would take for
/// its end, fails like one that does not exist.
Result<QByteArray> systemName(const QString &path);

/// True if the system's number \a error, which a look at a name gave, says that nothing has it.
bool saysMissing(int error);
/// True if the system says that \a path leads to nothing, also over the links there. That it
/// cannot be asked just now is not taken for such an answer, and neither is a loop of links.
bool isMissing(const QString &path);

/// Where the link \a name leads, as it stands in the link. What is no link has the system's error
/// EINVAL.
Result<QByteArray> linkTarget(const QByteArray &name);

/// The failure where a folder, a device or a pipe stands and a file is needed.
Failure notRegularFile();
/// True if \a file is none of these.
bool isRegular(const FileDescriptor &file);
/// Opens the regular file \a name with the access that \a flags ask for; children do not get it.
/// Anything else there is refused without being opened, which alone would let the writer of a FIFO
/// go on or rewind a tape.
Result<FileDescriptor> openRegular(const QByteArray &name, int flags);

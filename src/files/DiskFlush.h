// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/FileDescriptor.h"
#include "base/Result.h"

#include <QByteArray>

/// Has the disk take what was written to the open file \a file, and waits for as long as it needs.
/// It has worked, too, where the file system has no such call.
Result<void> flushToDisk(int file);

/// Opens \a folder, a name for the system, for flushFolder(). There is no descriptor, and that is
/// no failure, where the folder may be written to and not be read.
Result<FileDescriptor> openFolder(const QByteArray &folder);

/// Has the disk take the names in \a folder, and waits for as long as it needs. It has worked, too,
/// where there is no descriptor and where the file system has no such call.
Result<void> flushFolder(const FileDescriptor &folder);

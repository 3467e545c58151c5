// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"

#include <QByteArray>

// What there is to do with the names of files; all are names for the system.

/// Gives the file \a from the name \a to, in the place of whatever has that.
Result<void> renameFile(const QByteArray &from, const QByteArray &to);

/// The same without replacing anything: if there is something, the system's error is EEXIST.
Result<void> renameToFree(const QByteArray &from, const QByteArray &to);

/// Takes the name \a name from the file that has it.
Result<void> removeName(const QByteArray &name);

/// Exchanges the names of two files in one step. Not every system can. To rename over an older file
/// would have some file systems write the new one to the disk at once, and whoever renames waits
/// for that.
Result<void> exchangeNames(const QByteArray &one, const QByteArray &other);

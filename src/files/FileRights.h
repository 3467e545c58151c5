// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/FileDescriptor.h"
#include "base/Result.h"

#include <QByteArray>

#include <sys/types.h>

/// Gives the open new \a file, which only the user may use so far, the rights of the file at
/// \a path (a name for the system), whose place it is to take: owner, group, mode and access list,
/// as far as the user may give them, but for the bits that make a program act as its owner. What
/// the group's rights are to be is not known without its number and the list: it has none then.
/// Where there is no file, they are those of one that is made anew, which its owner may read and
/// write whatever the umask.
void giveRightsOf(const QByteArray &path, int file);

/// Opens the file \a name (for the system) as \a flags say. Where there is none it is made with
/// \a mode, and its owner may read and write it whatever the umask; one that is there keeps its
/// rights.
Result<FileDescriptor> openOrMake(const QByteArray &name, int flags, mode_t mode);

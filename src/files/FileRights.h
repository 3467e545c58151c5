// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

/// Gives the open new \a file, which only the user may use so far, the rights of the file at
/// \a path (a name for the system), whose place it is to take: owner, group, mode and access list,
/// as far as the user may give them, but for the bits that make a program act as its owner. What
/// the group's rights are to be is not known without its number and the list: it has none then.
/// Where there is no file, they are those of one that is made anew, which its owner may read and
/// write whatever the umask.
void giveRightsOf(const QByteArray &path, int file);

/// Lets the owner of the open \a file, which has just been made, read and write it, where a umask
/// took that away.
void letOwnerUse(int file);

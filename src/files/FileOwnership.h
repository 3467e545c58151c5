// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"

#include <QString>

/// How many links the system follows on the way to one file.
inline constexpr int maxLinks = 40;

/// True unless the name \a path is a link that somebody else has put there, or may have, or leads
/// on over one: a link is the user's own, or root's, if it belongs to one of them and so does its
/// folder.
bool isNoForeignLink(const QString &path);
/// The failure to use a link that is not.
Failure foreignLink();

/// True if somebody else than the user and root may put files into the folder at \a path.
bool othersMayWriteInto(const QString &path);

/// True if there is a folder at \a path, and no link to one, that belongs to the user and into
/// which nobody else but root may put files.
bool isOwnFolder(const QString &path);

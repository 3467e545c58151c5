// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"

#include <QString>

/// How many links the system follows on the way to one file.
inline constexpr int maxLinks = 40;

/// What stands at a name. A link is the user's own, or root's, if it belongs to one of them and so
/// does its folder, and it is foreign if it leads on over a foreign one.
enum class LinkKind { None, Own, Foreign };

/// Which link the name \a path is; none where there is nothing. Fails if that, or what it leads on
/// over, cannot be looked at.
Result<LinkKind> linkAt(const QString &path);
/// Fails if the name \a path is a foreign link, or that is not known: whoever put it there may
/// lead it elsewhere at any moment.
Result<void> mayFollow(const QString &path);
/// The failure to use a foreign link.
Failure foreignLink();

/// True if somebody else than the user and root may put files into the folder at \a path.
bool othersMayWriteInto(const QString &path);

/// True if there is a folder at \a path, and no link to one, that belongs to the user and into
/// which nobody else but root may put files.
bool isOwnFolder(const QString &path);

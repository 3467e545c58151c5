// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"
#include "files/UnfinishedFile.h"

#include <QByteArray>
#include <QString>

/// What happens to a link that has the name of a saved file.
enum class Links {
    Followed, ///< it stays, and its target is replaced
    Replaced  ///< the file takes its place; for where somebody else may put one
};

/// Replaces the file at \a path by \a bytes in one step: whoever opens it sees the old bytes or
/// the new ones, and a failure leaves the old file as it was. Of a link it is the target
/// that is replaced, unless \a links says otherwise; owner, group and permissions of an existing
/// file are kept, and what could not be given to its group is given to nobody. With
/// Durability::PowerFailure a file that the user may not write to is refused, whatever its folder
/// would allow. Anything but a regular file (a folder, a device, a pipe) is refused, and so is what
/// cannot be looked at.
///
/// With Durability::PowerFailure the disk has taken the bytes before they take the place, and the
/// name behind that. If it refuses the name, the old file is put back, and where that fails as well
/// the failure says where it is; where the file system cannot exchange names the new bytes stay,
/// and a failure of power may take them.
Result<void> saveWholeFile(const QString &path, const QByteArray &bytes,
                           Durability durability = Durability::PowerFailure,
                           Links links = Links::Followed);

/// The first half of that: a file that holds \a bytes and has yet to take the place of the one at
/// \a path.
Result<UnfinishedFile> unfinishedFile(const QString &path, const QByteArray &bytes,
                                      Durability durability, Links links = Links::Followed);

/// Where the file that is saved at \a path really lies, or would: a link leads there, over however
/// many others. Fails if that cannot be found out.
Result<QString> behindLinks(const QString &path);

/// Removes what killed programs left unfinished of the file that is saved at \a path: beside the
/// name, and where a link of the user's leads, if nobody else may put files there.
void removeUnfinishedSaves(const QString &path);

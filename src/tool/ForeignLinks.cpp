// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "tool/ForeignLinks.h"

#include "files/FileOwnership.h"
#include "files/FileRemoval.h"

#include <QDir>

namespace {

/// One that cannot be looked at may be foreign, and is no reason to remove anything.
Result<void, StartTrouble> removeForeignLink(const QString &path) {
    const Result<LinkKind> link = linkAt(path);
    if (link && (*link != LinkKind::Foreign || removeFile(path)))
        return {};
    const Failure failure = link ? foreignLink() : *link.failure();
    return StartTrouble{{QDir::toNativeSeparators(path) + QStringLiteral(": ") + failure.reason,
                         failure.systemError},
                        link ? StartTrouble::Cause::ForeignLink : StartTrouble::Cause::UnknownLink};
}

} // namespace

Result<void, StartTrouble> removeForeignLinks(const QStringList &paths) {
    Result<void, StartTrouble> result;
    for (const QString &path : paths)
        if (const Result<void, StartTrouble> removed = removeForeignLink(path); result)
            result = removed;
    return result;
}

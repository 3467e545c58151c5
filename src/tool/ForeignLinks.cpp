// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "tool/ForeignLinks.h"

#include "files/FileOwnership.h"
#include "files/FileRemoval.h"

#include <QDir>

Result<void> removeForeignLinks(const QStringList &paths) {
    Result<void> result;
    for (const QString &path : paths) {
        if (isNoForeignLink(path) || removeFile(path) || !result)
            continue;
        result =
            Failure{QDir::toNativeSeparators(path) + QStringLiteral(": ") + foreignLink().reason};
    }
    return result;
}

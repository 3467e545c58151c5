// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "structure/SourceTree.h"

#include <QHash>
#include <QSet>

/// What a file brings with it by what it includes, and by what that includes.
class ReachedHeaders {
public:
    explicit ReachedHeaders(const SourceTree &tree) : tree_(tree) {}

    /// The headers that the file \a path reaches, itself among them: the project's by their paths
    /// ("src/base/Log.h"), the toolkit's by the names of their files ("qlabel.h"). The header that
    /// a window's definition becomes brings the classes that stand in the definition.
    const QSet<QString> &of(const QString &path);

private:
    QSet<QString> broughtBy(const QString &path, const Include &include);
    QSet<QString> broughtByWindow(const QString &name, const QString &top);

    const SourceTree &tree_;
    QHash<QString, QSet<QString>> known_;
};

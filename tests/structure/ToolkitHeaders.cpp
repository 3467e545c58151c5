// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "structure/ToolkitHeaders.h"

#include <QDir>
#include <QLibraryInfo>
#include <QMap>
#include <QSet>

namespace {

/// The names under which the toolkit's module \a module offers headers, from its own folder.
QSet<QString> headersOfModule(const QString &module) {
    const QDir folder(QLibraryInfo::path(QLibraryInfo::HeadersPath) + u'/' + module);
    const QStringList names = folder.entryList(QDir::Files);
    return {names.begin(), names.end()};
}

} // namespace

bool isOfModule(const QString &header, const QString &module) {
    static QMap<QString, QSet<QString>> known;
    if (!known.contains(module))
        known.insert(module, headersOfModule(module));
    return header.startsWith(module + u'/') || header == module || known[module].contains(header);
}

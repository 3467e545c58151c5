// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "structure/BuildRules.h"

#include "structure/ToolkitHeaders.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

/// Whether \a include is of \a library. Only the project's folders and the toolkit's modules can
/// be told by their headers; every other library counts as used.
bool isOf(const Include &include, const QString &library) {
    static const QString ours = QStringLiteral("velm_");
    static const QString toolkit = QStringLiteral("Qt6::");
    if (library.startsWith(ours))
        return include.ownHeader && include.target.startsWith(library.mid(ours.size()) + u'/');
    if (library.startsWith(toolkit))
        return !include.ownHeader &&
               isOfModule(include.target, QStringLiteral("Qt") + library.mid(toolkit.size()));
    return true;
}

/// The CMake text \a text without what is compiled for other folders: it must link as they do.
QString withoutPrecompiled(QString text) {
    static const QRegularExpression call(QStringLiteral(R"(\bvelm_precompiled\s*\([^)]*\))"));
    return text.remove(call);
}

bool hasHeaders(const QString &library) {
    return library != u"velm_warnings";
}

} // namespace

QStringList buildRules::linksAreUsed(const SourceTree &tree) {
    QStringList breaches;
    for (auto file = tree.begin(); file != tree.end(); ++file) {
        if (!isBuildFile(file.key()))
            continue;
        const QList<Include> includes = includesUnder(tree, file.key().section(u'/', 0, -2));
        for (const QString &library : linkedLibraries(withoutPrecompiled(file.value()))) {
            const auto usesIt = [&library](const Include &include) {
                return isOf(include, library);
            };
            if (hasHeaders(library) && std::none_of(includes.begin(), includes.end(), usesIt))
                breaches.append(file.key() + QStringLiteral(": links ") + library +
                                QStringLiteral(", which nothing uses"));
        }
    }
    return breaches;
}

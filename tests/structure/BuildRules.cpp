// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "structure/BuildRules.h"

#include "structure/ToolkitHeaders.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

/// The headers that the classes of the window definition \a text come from.
QList<Include> headersOfWindow(const QString &text) {
    static const QRegularExpression header(QStringLiteral("<header>([^<]+)</header>"));
    QList<Include> includes;
    for (auto match = header.globalMatch(text); match.hasNext();)
        includes.append({match.next().captured(1), true});
    return includes;
}

/// Everything that the files in \a folder and its folders include.
QList<Include> includesUnder(const SourceTree &tree, const QString &folder) {
    QList<Include> includes;
    for (auto file = tree.begin(); file != tree.end(); ++file) {
        if (!file.key().startsWith(folder + u'/') || isBuildFile(file.key()))
            continue;
        includes +=
            file.key().endsWith(u".ui") ? headersOfWindow(file.value()) : includesOf(file.value());
    }
    return includes;
}

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

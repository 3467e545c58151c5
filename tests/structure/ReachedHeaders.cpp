// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "structure/ReachedHeaders.h"

#include "structure/ToolkitHeaders.h"

#include <QRegularExpression>

const QSet<QString> &ReachedHeaders::of(const QString &path) {
    if (const auto known = known_.constFind(path); known != known_.constEnd())
        return *known;
    // Headers that include each other find what is known so far.
    known_.insert(path, {path});
    QSet<QString> reached = {path};
    for (const Include &include : includesOf(tree_.value(path)))
        reached.unite(broughtBy(path, include));
    return known_[path] = reached;
}

QSet<QString> ReachedHeaders::broughtBy(const QString &path, const Include &include) {
    if (!include.ownHeader)
        return toolkitHeadersBehind(include.target);
    if (include.target.startsWith(u"ui_"))
        return broughtByWindow(include.target.mid(3).chopped(2), path.section(u'/', 0, 0) + u'/');
    const QString header = headerIncludedBy(tree_, path, include.target);
    return header.isEmpty() ? QSet<QString>() : of(header);
}

QSet<QString> ReachedHeaders::broughtByWindow(const QString &name, const QString &top) {
    static const QRegularExpression use(
        QStringLiteral(R"re(class="(\w+)"|<header>([^<]+)</header>|<(action) name)re"));
    QSet<QString> reached;
    for (auto file = tree_.begin(); file != tree_.end(); ++file) {
        if (!file.key().endsWith(u'/' + name + QStringLiteral(".ui")))
            continue;
        for (auto match = use.globalMatch(file.value()); match.hasNext();) {
            const QRegularExpressionMatch found = match.next();
            if (const QString header = found.captured(2); tree_.contains(top + header))
                reached.unite(of(top + header));
            else
                reached.unite(toolkitHeadersBehind(found.hasCaptured(3) ? QStringLiteral("QAction")
                                                                        : found.captured(1)));
        }
    }
    return reached;
}

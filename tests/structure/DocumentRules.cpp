// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "structure/DocumentRules.h"

#include <QDir>
#include <QRegularExpression>

namespace {

bool isThere(const QDir &top, const QString &folder, const QString &path) {
    for (const QString &from : {QString(), QString(folder + u'/'), QStringLiteral("src/")})
        for (const QString &ending : {QString(), QStringLiteral(".h")})
            if (top.exists(from + path + ending))
                return true;
    return false;
}

} // namespace

QStringList documentRules::namedPaths(const QString &text) {
    static const QRegularExpression quoted(QStringLiteral(R"(`([^`\n]+)`|\]\(([^)\s]+)\))"));
    static const QRegularExpression path(QStringLiteral(R"(^\.?\w[\w.-]*(/[\w.-]+)+/?$)"));
    static const QRegularExpression made(QStringLiteral(R"(^build/)"));
    QStringList paths;
    for (auto match = quoted.globalMatch(text); match.hasNext();) {
        const QRegularExpressionMatch found = match.next();
        const QString name = found.captured(1) + found.captured(2);
        const bool isLink = found.hasCaptured(2) && !name.contains(u"://");
        if ((isLink || path.match(name).hasMatch()) && !made.match(name).hasMatch())
            paths.append(name);
    }
    paths.removeDuplicates();
    return paths;
}

QStringList documentRules::missingPaths(const QStringList &paths, const QString &top,
                                        const QString &folder) {
    QStringList missing = paths;
    missing.removeIf([&](const QString &path) { return isThere(QDir(top), folder, path); });
    return missing;
}

QStringList documentRules::tabledFolders(const QString &text) {
    static const QRegularExpression row(QStringLiteral(R"(^\| `src/([^|\n]+)` \|)"),
                                        QRegularExpression::MultilineOption);
    QStringList folders;
    for (auto match = row.globalMatch(text); match.hasNext();)
        folders += match.next().captured(1).split(QStringLiteral("`, `"));
    return folders;
}

QStringList documentRules::settingsKeysIn(const QString &header) {
    static const QRegularExpression key(QStringLiteral(R"(inline const QString (\w+) =)"));
    QStringList keys;
    for (auto match = key.globalMatch(header); match.hasNext();)
        keys.append(match.next().captured(1));
    return keys;
}

QStringList documentRules::missingNames(const QStringList &names, const QString &pattern,
                                        const QString &text) {
    QStringList missing = names;
    missing.removeIf([&](const QString &name) { return text.contains(pattern.arg(name)); });
    return missing;
}

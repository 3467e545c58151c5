// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "structure/ToolkitHeaders.h"

#include "support/FileHelpers.h"

#include <QDir>
#include <QDirIterator>
#include <QHash>
#include <QLibraryInfo>
#include <QMap>
#include <QRegularExpression>

namespace {

/// The names under which the toolkit's module \a module offers headers, from its own folder.
QSet<QString> headersOfModule(const QString &module) {
    const QDir folder(QLibraryInfo::path(QLibraryInfo::HeadersPath) + u'/' + module);
    const QStringList names = folder.entryList(QDir::Files);
    return {names.begin(), names.end()};
}

/// The paths of all headers that the toolkit offers, by the names of their files.
const QHash<QString, QString> &toolkitFiles() {
    static const QHash<QString, QString> files = [] {
        QHash<QString, QString> paths;
        const QDir modules(QLibraryInfo::path(QLibraryInfo::HeadersPath));
        for (const QString &module : modules.entryList({QStringLiteral("Qt*")}, QDir::Dirs)) {
            QDirIterator headers(modules.filePath(module), QDir::Files);
            while (headers.hasNext()) {
                const QString path = headers.next();
                paths.insert(headers.fileName(), path);
            }
        }
        return paths;
    }();
    return files;
}

/// The names of the files that the toolkit's file \a name includes.
QStringList includedFiles(const QString &name) {
    static const QRegularExpression line(
        QStringLiteral(R"re(^[ \t]*#[ \t]*include[ \t]*["<](?:Qt\w+/)?([\w.]+)[">])re"),
        QRegularExpression::MultilineOption);
    QStringList names;
    const QString text = QString::fromUtf8(readWholeFile(toolkitFiles().value(name)));
    for (auto match = line.globalMatch(text); match.hasNext();)
        names.append(match.next().captured(1));
    return names;
}

} // namespace

bool isOfModule(const QString &header, const QString &module) {
    static QMap<QString, QSet<QString>> known;
    if (!known.contains(module))
        known.insert(module, headersOfModule(module));
    return header.startsWith(module + u'/') || header == module || known[module].contains(header);
}

QString toolkitHeaderOf(const QString &name) {
    static const QRegularExpression className(QStringLiteral("^Q[A-Z]\\w*$"));
    return className.match(name).hasMatch() ? includedFiles(name).value(0) : QString();
}

QSet<QString> toolkitHeadersBehind(const QString &header) {
    static QHash<QString, QStringList> known;
    QSet<QString> reached;
    QStringList left = {header.section(u'/', -1)};
    while (!left.isEmpty()) {
        const QString name = left.takeLast();
        if (!toolkitFiles().contains(name) || reached.contains(name))
            continue;
        reached.insert(name);
        if (!known.contains(name))
            known.insert(name, includedFiles(name));
        left += known.value(name);
    }
    return reached;
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "structure/SourceTree.h"

#include "support/FileHelpers.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QRegularExpression>

namespace {

/// Whether the file's text says that it is a script; those need no ending to their names.
bool isScript(const QString &text) {
    return text.startsWith(u"#!");
}

/// Takes the file \a path into \a tree if a rule may concern it.
void addFile(SourceTree &tree, const QDir &project, const QString &path) {
    static const QStringList endings = {QStringLiteral("h"),  QStringLiteral("cpp"),
                                        QStringLiteral("ui"), QStringLiteral("py"),
                                        QStringLiteral("sh"), QStringLiteral("cmake")};
    const QString ending = QFileInfo(path).suffix();
    if (!endings.contains(ending) && !isBuildFile(path) && !ending.isEmpty())
        return;
    const QString text = QString::fromUtf8(readWholeFile(path));
    if (!ending.isEmpty() || isScript(text))
        tree.insert(project.relativeFilePath(path), text);
}

/// The headers that the classes of the window definition \a text come from.
QList<Include> headersOfWindow(const QString &text) {
    static const QRegularExpression header(QStringLiteral("<header>([^<]+)</header>"));
    QList<Include> includes;
    for (auto match = header.globalMatch(text); match.hasNext();)
        includes.append({match.next().captured(1), true});
    return includes;
}

} // namespace

SourceTree readSourceTree(const QString &top, const QStringList &entries) {
    const QDir project(top);
    SourceTree tree;
    for (const QString &entry : entries) {
        const QString path = project.filePath(entry);
        if (QFileInfo(path).isFile())
            addFile(tree, project, path);
        QDirIterator files(path, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext())
            addFile(tree, project, files.next());
    }
    return tree;
}

QString withoutComments(const QString &text) {
    // Literals are matched only to be passed over: "//" inside one begins no comment.
    static const QRegularExpression piece(
        QStringLiteral(R"re(R"(\w*)\(.*?\)\1"|"(?:\\.|[^"\\\n])*"|'(?:\\.|[^'\\\n])+')re"
                       R"re(|(//[^\n]*|/\*.*?\*/))re"),
        QRegularExpression::DotMatchesEverythingOption);
    QString result;
    qsizetype end = 0;
    for (auto match = piece.globalMatch(text); match.hasNext();) {
        const QRegularExpressionMatch found = match.next();
        if (found.capturedStart(2) < 0)
            continue;
        result += text.mid(end, found.capturedStart(2) - end);
        result += QString(found.captured(2).count(u'\n'), u'\n');
        end = found.capturedEnd(2);
    }
    return result + text.mid(end);
}

QString layerOf(const QString &path) {
    const QStringList parts = path.split(u'/');
    return parts.size() >= 3 && parts[0] == u"src" ? parts[1] : QString();
}

bool isBuildFile(const QString &path) {
    return path.endsWith(u"CMakeLists.txt");
}

QList<Include> includesOf(const QString &text) {
    static const QRegularExpression line(
        QStringLiteral(R"re(^[ \t]*#[ \t]*include[ \t]*(["<])([^">\n]+)[">])re"),
        QRegularExpression::MultilineOption);
    QList<Include> includes;
    for (auto match = line.globalMatch(withoutComments(text)); match.hasNext();) {
        const QRegularExpressionMatch found = match.next();
        includes.append({found.captured(2), found.captured(1) == u"\""});
    }
    return includes;
}

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

QStringList includeFolders(const QString &path) {
    const QString own = path.section(u'/', 0, 0) + u'/';
    // What stands in fuzz tries what the program is made of, with the tests' helpers.
    return own == u"fuzz/" ? QStringList({own, QStringLiteral("src/"), QStringLiteral("tests/")})
                           : QStringList(own);
}

QString headerIncludedBy(const SourceTree &tree, const QString &path, const QString &target) {
    for (const QString &folder : includeFolders(path))
        if (tree.contains(folder + target))
            return folder + target;
    return {};
}

QStringList linkedLibraries(const QString &text) {
    static const QRegularExpression comment(QStringLiteral("#[^\n]*"));
    static const QRegularExpression list(
        QStringLiteral(R"re((?:\bLINKS\b|\btarget_link_libraries\s*\(\s*\S+)([^)]*)\))re"));
    static const QRegularExpression keyword(QStringLiteral("^(PUBLIC|PRIVATE|INTERFACE)$"));
    static const QRegularExpression blanks(QStringLiteral("\\s+"));
    QString code = text;
    code.remove(comment);
    QStringList libraries;
    for (auto match = list.globalMatch(code); match.hasNext();)
        libraries += match.next().captured(1).split(blanks, Qt::SkipEmptyParts);
    libraries.removeIf([](const QString &word) { return keyword.match(word).hasMatch(); });
    return libraries;
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "structure/IncludeRules.h"

#include "structure/ReachedHeaders.h"
#include "structure/StandardNames.h"
#include "structure/ToolkitHeaders.h"

#include <QHash>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <utility>

namespace {

/// "src/grid/GridModel.h" for "src/grid/GridModel.cpp"; empty for what has no header of its name.
QString headerOfSameName(const SourceTree &tree, const QString &path) {
    if (!path.endsWith(u".cpp"))
        return {};
    const QString header = path.chopped(3) + u'h';
    return tree.contains(header) ? header : QString();
}

bool isJudged(const QString &path) {
    static const QRegularExpression pattern(
        QStringLiteral(R"(^(src|simulator|fuzz)/.*\.(h|cpp)$)"));
    return pattern.match(path).hasMatch();
}

/// The C++ text \a text without comments, literals and include lines.
QString codeOf(const QString &text) {
    static const QRegularExpression include(QStringLiteral(R"(^[ \t]*#[ \t]*include\b[^\n]*)"),
                                            QRegularExpression::MultilineOption);
    static const QRegularExpression literal(
        QStringLiteral(R"re(R"(\w*)\((?s:.*?)\)\1"|"(?:\\.|[^"\\\n])*"|'(?:\\.|[^'\\\n])+')re"));
    return withoutComments(text).remove(include).remove(literal);
}

/// What the file \a path includes from the standard library and the toolkit, or the header of its
/// name does.
QSet<QString> systemHeadersOf(const SourceTree &tree, const QString &path) {
    QSet<QString> headers;
    for (const QString &text : {tree.value(path), tree.value(headerOfSameName(tree, path))})
        for (const Include &include : includesOf(text))
            if (!include.ownHeader)
                headers.insert(include.target);
    return headers;
}

QStringList sorted(const QSet<QString> &names) {
    QStringList list(names.begin(), names.end());
    list.sort();
    return list;
}

/// Whether \a word can stand in front of what tells a declaration and declares nothing.
bool isNoName(const QString &word) {
    static const QRegularExpression pattern(
        QStringLiteral("^(?:Q[A-Z]\\w*|\\d\\w*|auto|bool|catch|char|const|constexpr|default|delete|"
                       "double|enum|explicit|false|final|for|if|int|noexcept|nodiscard|nullptr|"
                       "operator|override|return|sizeof|switch|this|true|u?char|q?u?int\\d*|"
                       "qsizetype|void|while)$"));
    return pattern.match(word).hasMatch();
}

/// What the first group of \a pattern captures at each of its places in \a code.
QSet<QString> firstCaptures(const QRegularExpression &pattern, const QString &code) {
    QSet<QString> captures;
    for (auto match = pattern.globalMatch(code); match.hasNext();)
        captures.insert(match.next().captured(1));
    return captures;
}

/// The classes that the C++ text \a text announces without saying what they are.
QSet<QString> announcedClasses(const QString &text) {
    static const QRegularExpression announcement(
        QStringLiteral(R"(^[ \t]*(?:class|struct)\s+(\w+)\s*;)"),
        QRegularExpression::MultilineOption);
    return firstCaptures(announcement, codeOf(text));
}

/// The names that the header \a text declares, of members and enumerators too. Some more words may
/// be among them: what it calls or compares itself.
QSet<QString> declaredNames(const QString &text) {
    static const QRegularExpression type(
        QStringLiteral(R"(\b(?:class|struct|union|namespace|enum(?!\s+(?:class|struct)\b))\s+)"
                       R"((?:\[\[\w+\]\]\s*)?(\w+)\b(?!\s*;))"));
    static const QRegularExpression other(QStringLiteral(R"((?<![\w:.>])(\w+)\s*[({=;])"));
    static const QRegularExpression enumerators(QStringLiteral(R"(\benum\b[^{;]*\{([^}]*)\})"));
    const QString code = codeOf(text);
    QSet<QString> names = firstCaptures(other, code) - announcedClasses(text);
    names.unite(firstCaptures(type, code));
    for (const QString &list : firstCaptures(enumerators, code))
        names.unite(wordsOf(list));
    names.removeIf(isNoName);
    return names;
}

/// The same for each header of \a tree, by its path.
using DeclaredNames = QHash<QString, QSet<QString>>;

DeclaredNames declaredNamesIn(const SourceTree &tree) {
    DeclaredNames names;
    for (auto file = tree.begin(); file != tree.end(); ++file)
        if (isJudged(file.key()) && file.key().endsWith(u".h"))
            names.insert(file.key(), declaredNames(file.value()));
    return names;
}

/// What the file \a path may need a header for: the words in it, and the classes that the header
/// of its name announces, or one that either includes. It may call what these classes inherit, or
/// hand them over as what they are derived from, and not say their names.
QSet<QString> needsOf(const SourceTree &tree, const QString &path) {
    const QString text = tree.value(path);
    const QString header = tree.value(headerOfSameName(tree, path));
    QSet<QString> needs = wordsOf(codeOf(text)) | announcedClasses(header);
    for (const Include &include : includesOf(text) + includesOf(header))
        needs.unite(announcedClasses(tree.value(headerIncludedBy(tree, path, include.target))));
    return needs;
}

/// The headers of \a tree that declare a class, a structure or an enumeration outside of any other,
/// by its name.
QMultiHash<QString, QString> headersOfClasses(const SourceTree &tree) {
    static const QRegularExpression declaration(
        QStringLiteral(R"(^(?:class|struct|enum(?: class)?)\s+(?:\[\[\w+\]\]\s*)?(\w+)[^;{(]*\{)"),
        QRegularExpression::MultilineOption);
    QMultiHash<QString, QString> headers;
    for (auto file = tree.begin(); file != tree.end(); ++file)
        if (isJudged(file.key()) && file.key().endsWith(u".h"))
            for (const QString &name : firstCaptures(declaration, codeOf(file.value())))
                headers.insert(name, file.key());
    return headers;
}

/// Whether the C++ text \a code has no more of the class \a name than pointers and references.
bool onlyPointsTo(const QString &name, const QString &code) {
    const QRegularExpression other(
        QStringLiteral(R"(\b%1\b(?!\s*(?:const\s*)?[*&;>]|::\*|\s+\w+\())").arg(name));
    return !other.match(code).hasMatch();
}

/// The names in the C++ text \a code that nothing qualifies.
QSet<QString> plainNames(const QString &code) {
    static const QRegularExpression name(QStringLiteral(R"((?<![\w.:>])([A-Z]\w*)\b)"));
    return firstCaptures(name, code);
}

/// What templates in the C++ text \a code call their types.
QSet<QString> typeParameters(const QString &code) {
    static const QRegularExpression parameter(QStringLiteral(R"(\btypename (\w+))"));
    return firstCaptures(parameter, code);
}

/// The classes that some header among \a reached announces.
QSet<QString> announcedAmong(const QSet<QString> &reached, const SourceTree &tree) {
    QSet<QString> names;
    for (const QString &path : reached)
        if (tree.contains(path))
            names.unite(announcedClasses(tree.value(path)));
    return names;
}

} // namespace

QStringList includeRules::namedClassesAreReached(const SourceTree &tree) {
    const QMultiHash<QString, QString> declaring = headersOfClasses(tree);
    ReachedHeaders reachedHeaders(tree);
    QStringList breaches;
    for (auto file = tree.begin(); file != tree.end(); ++file) {
        if (!isJudged(file.key()))
            continue;
        const QString code = codeOf(file.value());
        const QRegularExpression inItsFolders(
            QStringLiteral("^(%1)").arg(includeFolders(file.key()).join(u'|')));
        const QSet<QString> reached = reachedHeaders.of(file.key());
        const QSet<QString> announced = announcedAmong(reached, tree);
        const QSet<QString> names = plainNames(code) - declaredNames(file.value()) -
                                    declaredNames(tree.value(headerOfSameName(tree, file.key()))) -
                                    typeParameters(code);
        for (const QString &name : sorted(names)) {
            QStringList headers = declaring.values(name).filter(inItsFolders);
            if (headers.isEmpty())
                headers = QStringList(toolkitHeaderOf(name));
            headers.removeAll(QString());
            const auto isReached = [&](const QString &one) { return reached.contains(one); };
            if (headers.isEmpty() || std::any_of(headers.begin(), headers.end(), isReached) ||
                (announced.contains(name) && onlyPointsTo(name, code)))
                continue;
            breaches.append(file.key() + QStringLiteral(": names ") + name +
                            QStringLiteral(" without ") + headers.join(u'/'));
        }
    }
    return breaches;
}

QStringList includeRules::standardNamesHaveTheirHeader(const SourceTree &tree) {
    QStringList breaches;
    for (auto file = tree.begin(); file != tree.end(); ++file) {
        if (!isJudged(file.key()))
            continue;
        const QSet<QString> included = systemHeadersOf(tree, file.key());
        const QSet<QString> words = wordsOf(codeOf(file.value()));
        for (const QString &name : sorted(words)) {
            const QStringList headers = standardHeadersOf(name);
            const auto isIncluded = [&included](const QString &one) {
                return included.contains(one);
            };
            if (!headers.isEmpty() && std::none_of(headers.begin(), headers.end(), isIncluded))
                breaches.append(file.key() + QStringLiteral(": uses ") + name +
                                QStringLiteral(" without ") + headers.join(u'/'));
        }
    }
    return breaches;
}

QStringList includeRules::standardHeadersAreUsed(const SourceTree &tree) {
    QStringList breaches;
    for (auto file = tree.begin(); file != tree.end(); ++file) {
        if (!isJudged(file.key()))
            continue;
        const QSet<QString> words = wordsOf(codeOf(file.value()));
        for (const Include &include : includesOf(file.value())) {
            const QSet<QString> names = namesOfStandardHeader(include.target);
            if (!include.ownHeader && !names.isEmpty() && !names.intersects(words))
                breaches.append(file.key() + QStringLiteral(": uses nothing of ") + include.target);
        }
    }
    return breaches;
}

QStringList includeRules::ownHeadersAreUsed(const SourceTree &tree) {
    const DeclaredNames declared = declaredNamesIn(tree);
    QStringList breaches;
    for (auto file = tree.begin(); file != tree.end(); ++file) {
        if (!isJudged(file.key()))
            continue;
        const QSet<QString> needs = needsOf(tree, file.key());
        for (const Include &include : includesOf(file.value())) {
            const QString header = headerIncludedBy(tree, file.key(), include.target);
            if (include.ownHeader && declared.contains(header) &&
                header != headerOfSameName(tree, file.key()) && !declared[header].intersects(needs))
                breaches.append(file.key() + QStringLiteral(": uses nothing of ") + include.target);
        }
    }
    return breaches;
}

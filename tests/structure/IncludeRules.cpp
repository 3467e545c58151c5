// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "structure/IncludeRules.h"

#include "structure/StandardNames.h"

#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <utility>

namespace {

/// "src/grid/GridModel.h" for "src/grid/GridModel.cpp"; empty for what has no header of its name.
QString headerOfSameName(const SourceTree &tree, const QString &path) {
    if (!path.endsWith(QLatin1String(".cpp")))
        return {};
    const QString header = path.chopped(3) + u'h';
    return tree.contains(header) ? header : QString();
}

bool isJudged(const QString &path) {
    return (path.startsWith(QLatin1String("src/")) ||
            path.startsWith(QLatin1String("simulator/"))) &&
           (path.endsWith(QLatin1String(".h")) || path.endsWith(QLatin1String(".cpp")));
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

} // namespace

QStringList includeRules::standardNamesHaveTheirHeader(const SourceTree &tree) {
    QStringList breaches;
    for (auto file = tree.begin(); file != tree.end(); ++file) {
        if (!isJudged(file.key()))
            continue;
        const QSet<QString> included = systemHeadersOf(tree, file.key());
        const QSet<QString> words = wordsOf(codeOf(file.value()));
        QStringList names(words.begin(), words.end());
        names.sort();
        for (const QString &name : std::as_const(names)) {
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

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "structure/TextRules.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

constexpr qsizetype longestFile = 500;

bool startsWithOneOf(const QString &path, const QStringList &starts) {
    return std::any_of(starts.begin(), starts.end(),
                       [&path](const QString &start) { return path.startsWith(start); });
}

const QStringList program = {QStringLiteral("src/"), QStringLiteral("simulator/")};

/// One breach for every match of \a pattern in the code (comments aside) of the files whose paths
/// begin with one of \a judged and none of \a excepted.
QStringList matchesInCode(const SourceTree &tree, const QRegularExpression &pattern,
                          const QStringList &excepted = {}, const QStringList &judged = program) {
    QStringList breaches;
    for (auto file = tree.begin(); file != tree.end(); ++file) {
        if (!startsWithOneOf(file.key(), judged) || startsWithOneOf(file.key(), excepted))
            continue;
        const QString code = withoutComments(file.value());
        for (auto match = pattern.globalMatch(code); match.hasNext();)
            breaches.append(file.key() + QStringLiteral(": ") + match.next().captured());
    }
    return breaches;
}

} // namespace

QStringList textRules::coloursStandInThePaletteHelper(const SourceTree &tree) {
    static const QRegularExpression colour(
        QStringLiteral(R"re(#(?:[0-9A-Fa-f]{8}|[0-9A-Fa-f]{6}|[0-9A-Fa-f]{3})(?=["; ]))re"
                       R"re(|\bQt::(?:dark)?(?:red|green|blue|cyan|magenta|yellow|gray)\b)re"
                       R"re(|\bQt::(?:lightGray|black|white)\b)re"
                       R"re(|\bQColor(?:\s+\w+)?[({]\s*\d|\bqRgba?\(\s*\d|<red>)re"),
        QRegularExpression::CaseInsensitiveOption);
    return matchesInCode(tree, colour, {QStringLiteral("src/widgets/Palette.")});
}

QStringList textRules::nothingForks(const SourceTree &tree) {
    // QLocale::system() and the like are other functions of that name.
    static const QRegularExpression call(
        QStringLiteral(R"((?<![\w:.>])(?:std::|::)?(?:system|popen|fork|vfork)\s*\()"));
    return matchesInCode(tree, call, {QStringLiteral("simulator/")});
}

QStringList textRules::descriptorsHaveOneOwner(const SourceTree &tree) {
    static const QRegularExpression call(QStringLiteral(R"((?<![\w>])::close\s*\()"));
    return matchesInCode(
        tree, call, {QStringLiteral("simulator/"), QStringLiteral("src/base/FileDescriptor.")});
}

QStringList textRules::numbersAndTimesHaveOneForm(const SourceTree &tree) {
    static const QRegularExpression ownForm(QStringLiteral(
        R"(\bQLocale\s*(?:\(\)|\{\})\s*\.\s*toString\s*\(|\bQLocale\s+\w+\s*[;({=])"));
    return matchesInCode(
        tree, ownForm,
        {QStringLiteral("src/base/NumberWords.h"), QStringLiteral("src/base/TimeWords.h")});
}

QStringList textRules::textsHaveOneForm(const SourceTree &tree) {
    static const QRegularExpression suffixes(
        QStringLiteral(R"(\bQt::(?:Literals::)?StringLiterals\b)"));
    return matchesInCode(tree, suffixes, {QStringLiteral("tests/structure/")}, {QString()});
}

QStringList textRules::filesAreShort(const SourceTree &tree) {
    QStringList breaches;
    for (auto file = tree.begin(); file != tree.end(); ++file) {
        const qsizetype lines = file.value().count(u'\n');
        if (lines > longestFile)
            breaches.append(QStringLiteral("%1: %2 lines").arg(file.key()).arg(lines));
    }
    return breaches;
}

QStringList textRules::filesNameTheirLicence(const SourceTree &tree) {
    static const QRegularExpression head(
        QStringLiteral(R"re(^(?:#![^\n]*\n)?(//|#) SPDX-FileCopyrightText: [^\n]+\n)re"
                       R"re(\1 SPDX-License-Identifier: MIT\n)re"));
    QStringList breaches;
    for (auto file = tree.begin(); file != tree.end(); ++file)
        if (!file.key().endsWith(u".ui") && !head.match(file.value()).hasMatch())
            breaches.append(file.key() + QStringLiteral(": begins without its licence"));
    return breaches;
}

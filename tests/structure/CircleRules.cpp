// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "structure/CircleRules.h"

#include <QSet>

namespace {

/// Each part and the class whose work it does: it is made by that class, works on it alone, and is
/// a file of its own for the reader's sake.
const QMap<QString, QString> &wholes() {
    static const QString view = QStringLiteral("src/grid/GridView");
    static const QMap<QString, QString> map = {
        {QStringLiteral("src/grid/GridAccessible"), view},
        {QStringLiteral("src/grid/GridAccessibleCell"), view},
        {QStringLiteral("src/grid/GridCopying"), view},
        {QStringLiteral("src/grid/GridDrag"), view},
        {QStringLiteral("src/grid/GridEntries"), view},
        {QStringLiteral("src/grid/GridHint"), view},
        {QStringLiteral("src/grid/GridPainter"), view},
        {QStringLiteral("src/grid/GridSelection"), view},
    };
    return map;
}

bool isSource(const QString &path) {
    return path.endsWith(u".cpp");
}

bool isHeader(const QString &path) {
    return path.endsWith(u".h");
}

/// "src/grid/GridView" for each of its files, parts apart.
QString stemOf(const SourceTree &tree, const QString &path) {
    const QString stem = path.section(u'.', 0, -2);
    for (qsizetype end = stem.size(); end > path.lastIndexOf(u'/') + 1; --end) {
        const bool endsWord = end == stem.size() || stem[end].isUpper();
        if (endsWord && tree.contains(stem.first(end) + QStringLiteral(".h")))
            return stem.first(end);
    }
    return stem;
}

/// What each subject includes, or what comes after it on the way.
using Ways = QMap<QString, QSet<QString>>;

/// The subjects that each one includes, by the names that \a nameOf gives.
template <typename Naming>
Ways includedSubjects(const SourceTree &tree, const Naming &nameOf) {
    Ways included;
    for (auto file = tree.begin(); file != tree.end(); ++file) {
        if (!isSource(file.key()) && !isHeader(file.key()))
            continue;
        const QString top = file.key().section(u'/', 0, 0) + u'/';
        const QString subject = nameOf(stemOf(tree, file.key()));
        for (const Include &include : includesOf(file.value())) {
            const QString header = top + include.target;
            if (!include.ownHeader || !tree.contains(header))
                continue;
            const QString other = nameOf(stemOf(tree, header));
            if (other != subject)
                included[subject].insert(other);
        }
    }
    return included;
}

void follow(const Ways &included, const QString &subject, QSet<QString> &reached) {
    for (const QString &next : included.value(subject)) {
        if (reached.contains(next))
            continue;
        reached.insert(next);
        follow(included, next, reached);
    }
}

/// With each subject those that it comes to.
Ways reachedSubjects(const Ways &included) {
    Ways reached;
    for (auto subject = included.begin(); subject != included.end(); ++subject)
        follow(included, subject.key(), reached[subject.key()]);
    return reached;
}

} // namespace

QStringList circleRules::subjectsFormNoCircle(const SourceTree &tree) {
    const auto nameOf = [](const QString &stem) { return wholes().value(stem, stem); };
    const Ways reached = reachedSubjects(includedSubjects(tree, nameOf));
    QSet<QString> told;
    QStringList breaches;
    for (auto subject = reached.begin(); subject != reached.end(); ++subject) {
        QStringList others;
        for (const QString &other : *subject)
            if (other != subject.key() && reached.value(other).contains(subject.key()))
                others.append(other);
        if (others.isEmpty() || told.contains(subject.key()))
            continue;
        told.unite({others.begin(), others.end()});
        others.sort();
        breaches.append(subject.key() + QStringLiteral(": in a circle with ") +
                        others.join(QStringLiteral(", ")));
    }
    return breaches;
}

QStringList circleRules::partsNeedTheirWhole(const SourceTree &tree) {
    const auto nameOf = [](const QString &stem) { return stem; };
    const Ways reached = reachedSubjects(includedSubjects(tree, nameOf));
    QStringList breaches;
    for (auto part = wholes().begin(); part != wholes().end(); ++part)
        if (!reached.value(part.key()).contains(*part) ||
            !reached.value(*part).contains(part.key()))
            breaches.append(part.key() + QStringLiteral(": in no circle with ") + *part);
    return breaches;
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "structure/LayerRules.h"

#include "structure/ToolkitHeaders.h"

#include <QDir>
#include <QRegularExpression>
#include <QSet>

namespace {

/// What a folder may include besides its own headers: folders, or single headers.
const QMap<QString, QStringList> &arrows() {
    static const auto words = [](const char *text) {
        return QString::fromLatin1(text).split(u' ', Qt::SkipEmptyParts);
    };
    static const QMap<QString, QStringList> map = {
        {QStringLiteral("base"), {}},
        {QStringLiteral("files"), words("base")},
        {QStringLiteral("settings"), words("base files")},
        {QStringLiteral("image"), words("base files settings")},
        {QStringLiteral("inspect"), words("base")},
        {QStringLiteral("formats"), words("base files")},
        {QStringLiteral("orders"), words("base files")},
        {QStringLiteral("process"), words("base")},
        {QStringLiteral("language"), words("base files settings")},
        {QStringLiteral("tool"), words("base files settings process language")},
        {QStringLiteral("widgets"), words("base settings tool/Console.h")},
        {QStringLiteral("grid"), words("base files image language widgets")},
        {QStringLiteral("devices"), words("base files settings language tool widgets")},
        {QStringLiteral("control"),
         words("base files settings image language tool widgets grid devices")},
        {QStringLiteral("imageviews"), words("base files image inspect widgets grid")},
        {QStringLiteral("exchange"), words("base files image inspect formats orders widgets")},
        {QStringLiteral("blocks"), words("base files image formats widgets")},
        {QStringLiteral("views"),
         words("base files settings language tool widgets grid devices control")},
        {QStringLiteral("start"), words("base files settings")},
        {QStringLiteral("app"),
         words("base files settings image formats language tool widgets "
               "grid devices control imageviews exchange blocks views start")},
    };
    return map;
}

/// The folders of the programs beside src, from the bottom up.
const QMap<QString, QStringList> &stacks() {
    static const QMap<QString, QStringList> map = {
        {QStringLiteral("simulator"),
         {QStringLiteral("setup"), QStringLiteral("files"), QStringLiteral("parts"),
          QStringLiteral("session")}},
        {QStringLiteral("bench"), {QStringLiteral("instruments"), QStringLiteral("subjects")}},
    };
    return map;
}

bool isPure(const QString &layer) {
    static const QSet<QString> pure = {QStringLiteral("base"),     QStringLiteral("files"),
                                       QStringLiteral("settings"), QStringLiteral("image"),
                                       QStringLiteral("inspect"),  QStringLiteral("formats"),
                                       QStringLiteral("orders"),   QStringLiteral("process"),
                                       QStringLiteral("language"), QStringLiteral("tool")};
    return pure.contains(layer);
}

bool isCode(const QString &path) {
    return path.endsWith(u".h") || path.endsWith(u".cpp");
}

/// The part of "grid/GridModel.h" before the stroke; empty if there is none.
QString folderOf(const QString &header) {
    return header.section(u'/', 0, -2);
}

QString breach(const QString &path, const QString &what) {
    return path + QStringLiteral(": ") + what;
}

bool isWidgetHeader(const QString &header) {
    return isOfModule(header, QStringLiteral("QtWidgets"));
}

bool isGraphicsHeader(const QString &header) {
    return isWidgetHeader(header) || isOfModule(header, QStringLiteral("QtGui"));
}

bool isGridRule(const QString &path) {
    static const QRegularExpression pattern(QStringLiteral(
        R"(^src/grid/(ByteBlock|CellEdit|Grid(Columns|Model|Presentation|Source|Steps)))"
        R"(\.(h|cpp)$)"));
    return pattern.match(path).hasMatch();
}

/// The first widget header that \a path reaches, following headers of \a tree; empty if none.
QString reachedWidgetHeader(const SourceTree &tree, const QString &path, QSet<QString> &seen) {
    if (seen.contains(path))
        return {};
    seen.insert(path);
    for (const Include &include : includesOf(tree.value(path))) {
        const QString found =
            include.ownHeader
                ? reachedWidgetHeader(tree, QStringLiteral("src/") + include.target, seen)
            : isWidgetHeader(include.target) ? include.target
                                             : QString();
        if (!found.isEmpty())
            return found;
    }
    return {};
}

/// What follows \a prefix in the names of the libraries that the CMake text \a buildFile links.
QStringList linkedNames(const QString &buildFile, const QString &prefix) {
    QStringList names;
    for (const QString &library : linkedLibraries(buildFile))
        if (library.startsWith(prefix))
            names.append(library.mid(prefix.size()));
    return names;
}

} // namespace

QStringList layerRules::arrowsPointDown(const SourceTree &tree) {
    QStringList breaches;
    for (auto file = tree.begin(); file != tree.end(); ++file) {
        const QString layer = layerOf(file.key());
        if (layer.isEmpty() || !isCode(file.key()))
            continue;
        const QStringList allowed = arrows().value(layer);
        for (const Include &include : includesOf(file.value())) {
            const QString folder = folderOf(include.target);
            if (!include.ownHeader || folder.isEmpty() || folder == layer ||
                allowed.contains(folder) || allowed.contains(include.target))
                continue;
            breaches.append(breach(file.key(), QStringLiteral("includes ") + include.target));
        }
    }
    return breaches;
}

QStringList layerRules::arrowsAreUsed(const SourceTree &tree) {
    QMap<QString, QSet<QString>> used;
    for (auto file = tree.begin(); file != tree.end(); ++file) {
        const QString layer = layerOf(file.key());
        if (layer.isEmpty() || !isCode(file.key()))
            continue;
        for (const Include &include : includesOf(file.value()))
            used[layer] << include.target << folderOf(include.target);
    }
    QStringList breaches;
    for (auto layer = used.begin(); layer != used.end(); ++layer)
        for (const QString &allowed : arrows().value(layer.key()))
            if (!layer->contains(allowed))
                breaches.append(breach(QStringLiteral("src/") + layer.key(),
                                       QStringLiteral("includes nothing of ") + allowed));
    return breaches;
}

QStringList layerRules::librariesLinkDown(const SourceTree &tree) {
    QStringList breaches;
    for (auto file = tree.begin(); file != tree.end(); ++file) {
        const QString layer = layerOf(file.key());
        if (layer.isEmpty() || !isBuildFile(file.key()))
            continue;
        for (const QString &library : linkedNames(file.value(), QStringLiteral("velm_")))
            if (arrows().contains(library) && library != layer &&
                !arrows().value(layer).contains(library))
                breaches.append(breach(file.key(), QStringLiteral("links velm_") + library));
    }
    return breaches;
}

QStringList layerRules::librariesLinkWhatTheyInclude(const SourceTree &tree) {
    QStringList breaches;
    for (auto file = tree.begin(); file != tree.end(); ++file) {
        const QString layer = layerOf(file.key());
        if (layer.isEmpty() || !isBuildFile(file.key()))
            continue;
        const QStringList known =
            linkedNames(file.value(), QStringLiteral("velm_")) + QStringList{QString(), layer};
        QStringList missing;
        for (const Include &include : includesUnder(tree, QStringLiteral("src/") + layer)) {
            const QString folder = folderOf(include.target);
            if (include.ownHeader && !known.contains(folder) &&
                !arrows().value(layer).contains(include.target))
                missing.append(breach(file.key(), QStringLiteral("links no velm_") + folder));
        }
        missing.removeDuplicates();
        breaches += missing;
    }
    return breaches;
}

QStringList layerRules::includesNameTheirFolder(const SourceTree &tree) {
    // What the build generates stands in no folder of the sources.
    static const QRegularExpression generated(QStringLiteral(R"(^(ui_\w+\.h|\w+\.moc)$)"));
    QStringList breaches;
    for (auto file = tree.begin(); file != tree.end(); ++file) {
        if (layerOf(file.key()).isEmpty() || !isCode(file.key()))
            continue;
        for (const Include &include : includesOf(file.value()))
            if (include.ownHeader && folderOf(include.target).isEmpty() &&
                !generated.match(include.target).hasMatch())
                breaches.append(breach(file.key(), QStringLiteral("includes ") + include.target));
    }
    return breaches;
}

QStringList layerRules::pureFoldersSeeNoGraphics(const SourceTree &tree) {
    QStringList breaches;
    for (auto file = tree.begin(); file != tree.end(); ++file) {
        if (!isPure(layerOf(file.key())))
            continue;
        for (const Include &include : includesOf(file.value()))
            if (!include.ownHeader && isGraphicsHeader(include.target))
                breaches.append(breach(file.key(), QStringLiteral("includes ") + include.target));
    }
    return breaches;
}

QStringList layerRules::pureFoldersLinkCoreAlone(const SourceTree &tree) {
    QStringList breaches;
    for (auto file = tree.begin(); file != tree.end(); ++file) {
        if (!isPure(layerOf(file.key())) || !isBuildFile(file.key()))
            continue;
        for (const QString &module : linkedNames(file.value(), QStringLiteral("Qt6::")))
            if (module != u"Core")
                breaches.append(breach(file.key(), QStringLiteral("links Qt6::") + module));
    }
    return breaches;
}

QStringList layerRules::gridRulesSeeNoWidgets(const SourceTree &tree) {
    QStringList breaches;
    for (auto file = tree.begin(); file != tree.end(); ++file) {
        if (!isGridRule(file.key()))
            continue;
        QSet<QString> seen;
        const QString header = reachedWidgetHeader(tree, file.key(), seen);
        if (!header.isEmpty())
            breaches.append(breach(file.key(), QStringLiteral("reaches ") + header));
    }
    return breaches;
}

QStringList layerRules::controllerIsUnknownBelow(const SourceTree &tree) {
    QStringList breaches;
    for (auto file = tree.begin(); file != tree.end(); ++file) {
        const QString layer = layerOf(file.key());
        if (!layer.isEmpty() && layer != u"app" && layer != u"control" &&
            file.value().contains(u"AppDelegate"))
            breaches.append(breach(file.key(), QStringLiteral("mentions AppDelegate")));
    }
    return breaches;
}

QStringList layerRules::simulatorStandsAlone(const SourceTree &tree) {
    QStringList breaches;
    for (auto file = tree.begin(); file != tree.end(); ++file) {
        if (!file.key().startsWith(u"simulator/"))
            continue;
        // The simulator has a folder "files" of its own.
        const auto isOwn = [&tree](const Include &include) {
            return tree.contains(QStringLiteral("simulator/") + include.target);
        };
        for (const Include &include : includesOf(file.value()))
            if ((arrows().contains(folderOf(include.target)) && !isOwn(include)) ||
                include.target.startsWith(u'Q'))
                breaches.append(breach(file.key(), QStringLiteral("includes ") + include.target));
        if (!isBuildFile(file.key()))
            continue;
        for (const QString &module : linkedNames(file.value(), QStringLiteral("Qt6::")))
            breaches.append(breach(file.key(), QStringLiteral("links Qt6::") + module));
    }
    return breaches;
}

QStringList layerRules::programsPointDown(const SourceTree &tree) {
    QStringList breaches;
    for (auto file = tree.begin(); file != tree.end(); ++file) {
        const QStringList stack = stacks().value(file.key().section(u'/', 0, 0));
        const qsizetype height = stack.indexOf(file.key().section(u'/', 1, 1));
        if (height < 0)
            continue;
        for (const Include &include : includesOf(file.value())) {
            const QString way = QDir::cleanPath(include.target).remove(QStringLiteral("../"));
            if (stack.indexOf(way.section(u'/', 0, 0)) > height)
                breaches.append(breach(file.key(), QStringLiteral("includes ") + include.target));
        }
    }
    return breaches;
}

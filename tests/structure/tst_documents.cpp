// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "structure/DocumentRules.h"
#include "support/FileHelpers.h"

#include <QDir>
#include <QTest>

using namespace documentRules;

/// What the documents tell developers is so.
class TestDocuments : public QObject {
    Q_OBJECT

private slots:
    void everyNamedPath_isThere_data();
    void everyNamedPath_isThere();
    void everyFolder_isInTheTable();
    void everySettingsKey_isInItsPlaces_data();
    void everySettingsKey_isInItsPlaces();
    void namedPaths_areCodeSpansAndLinks_data();
    void namedPaths_areCodeSpansAndLinks();
    void missingPaths_areNoticed();
    void missingNames_areNoticed();
    void tabledFolders_areThoseOfSrc();
};

namespace {

const QString top = QStringLiteral(VELM_SOURCE_DIR);

QString textOf(const QString &path) {
    return QString::fromUtf8(readWholeFile(QDir(top).filePath(path)));
}

} // namespace

void TestDocuments::everyNamedPath_isThere_data() {
    QTest::addColumn<QString>("folder");
    QTest::addColumn<int>("atLeast");
    QTest::newRow("CONTRIBUTING.md") << QStringLiteral(".") << 25;
    QTest::newRow("README.md") << QStringLiteral(".") << 10;
    QTest::newRow("docs/architecture.md") << QStringLiteral("docs") << 10;
}

void TestDocuments::everyNamedPath_isThere() {
    QFETCH(QString, folder);
    QFETCH(int, atLeast);
    const QStringList paths = namedPaths(textOf(QString::fromLatin1(QTest::currentDataTag())));
    QCOMPARE(missingPaths(paths, top, folder).join(u'\n'), QString());
    QVERIFY2(paths.size() >= atLeast, qPrintable(paths.join(u'\n')));
}

void TestDocuments::everyFolder_isInTheTable() {
    QStringList tabled = tabledFolders(textOf(QStringLiteral("README.md")));
    tabled.sort();
    const QDir sources(QDir(top).filePath(QStringLiteral("src")));
    const QStringList folders = sources.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    QCOMPARE(tabled.join(u' '), folders.join(u' '));
}

void TestDocuments::everySettingsKey_isInItsPlaces_data() {
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QStringList>("without");
    const QStringList noDefault = {QStringLiteral("binary"), QStringLiteral("device"),
                                   QStringLiteral("favourites")};
    QTest::newRow("src/settings/SettingsKeys.cpp") << QStringLiteral("{%1, ") << noDefault;
    QTest::newRow("tests/settings/tst_settings_values.cpp")
        << QStringLiteral("row(\"%1\",") << noDefault;
    QTest::newRow("tests/window/tst_window_restart.cpp")
        << QStringLiteral("settingsKeys::%1,") << QStringList();
}

void TestDocuments::everySettingsKey_isInItsPlaces() {
    QFETCH(QString, pattern);
    QFETCH(QStringList, without);
    const QString place = QString::fromLatin1(QTest::currentDataTag());
    const QStringList keys = settingsKeysIn(textOf(QStringLiteral("src/settings/SettingsKeys.h")));
    QVERIFY(keys.contains(u"skipErase"));
    QCOMPARE(missingNames(keys, pattern, textOf(place)), without);
    QVERIFY(textOf(QStringLiteral("CONTRIBUTING.md")).contains(place));
}

void TestDocuments::namedPaths_areCodeSpansAndLinks_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("paths");
    const auto row = [](const char *name, const char *text, const char *paths) {
        QTest::newRow(name) << QString::fromLatin1(text) << QString::fromLatin1(paths);
    };
    row("code spans", "in `src/a/B.h` and `src/a/`, twice `src/a/B.h`", "src/a/B.h src/a/");
    row("links", "[page](docs/page.md) ![picture](p.svg)", "docs/page.md p.svg");
    row("hidden files", "`.ci/run`", ".ci/run");
    row("single names", "`src` and `ctest`", "");
    row("commands", "`cmake --preset dev` and `./test -R a/b`", "");
    row("plain words", "and/or", "");
    row("elsewhere", "`/usr/bin/x` `~/.config/velm/velm.conf` [x](https://a.b/c)", "");
    row("made by the build", "`build/dev/velm`", "");
}

void TestDocuments::namedPaths_areCodeSpansAndLinks() {
    QFETCH(QString, text);
    QFETCH(QString, paths);
    QCOMPARE(namedPaths(text).join(u' '), paths);
}

void TestDocuments::missingPaths_areNoticed() {
    const QStringList paths = {QStringLiteral("src/base/Log.h"),    QStringLiteral("base/Log.h"),
                               QStringLiteral("control/HandEdits"), QStringLiteral("guide.md"),
                               QStringLiteral("src/base/Absent.h"), QStringLiteral("absent.md")};
    QCOMPARE(missingPaths(paths, top, QStringLiteral("docs")),
             QStringList({QStringLiteral("src/base/Absent.h"), QStringLiteral("absent.md")}));
}

void TestDocuments::missingNames_areNoticed() {
    const QStringList keys = settingsKeysIn(QStringLiteral("inline const QString pad_to = a;\n"
                                                           "inline const QString pad =\n    b;\n"));
    QCOMPARE(keys, QStringList({QStringLiteral("pad_to"), QStringLiteral("pad")}));
    QCOMPARE(missingNames(keys, QStringLiteral("{%1, "), QStringLiteral("{pad_to, 1}")),
             QStringList{QStringLiteral("pad")});
}

void TestDocuments::tabledFolders_areThoseOfSrc() {
    const QString text = QStringLiteral("| folder | what |\n|---|---|\n"
                                        "| `src/base`, `files` | like `src/else` |\n"
                                        "| `src/grid` | `cells` |\n| `tests` | tests |\n");
    QCOMPARE(tabledFolders(text).join(u' '), QStringLiteral("base files grid"));
}

QTEST_GUILESS_MAIN(TestDocuments)
#include "tst_documents.moc"

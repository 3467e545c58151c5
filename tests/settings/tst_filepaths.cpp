// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "settings/FilePaths.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <pwd.h>
#include <unistd.h>

class TestFilePaths : public QObject {
    Q_OBJECT

private slots:
    void init();
    void resolvedPath_ofAStoredPath_data();
    void resolvedPath_ofAStoredPath();
    void resolvedPath_dataHome_data();
    void resolvedPath_dataHome();
    void resolvedPath_withoutHomeAsksTheAccount();
    void resolvedPathOf_readsTheKeyAtTheMomentOfUse();
    void absolutePathOf_countsFromTheCurrentFolder_data();
    void absolutePathOf_countsFromTheCurrentFolder();
    void temporaryFolder_isTheOutputFilesParent_data();
    void temporaryFolder_isTheOutputFilesParent();
    void temporaryFileKeys_areThoseOfTheFoldersInTheirOrder();
};

void TestFilePaths::init() {
    qputenv("HOME", "/home/ada");
    qunsetenv("XDG_DATA_HOME");
}

void TestFilePaths::resolvedPath_ofAStoredPath_data() {
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("resolved");
    const auto row = [](const char *name, const char *stored, const char *resolved) {
        QTest::newRow(name) << QString::fromUtf8(stored) << QString::fromUtf8(resolved);
    };
    row("application support", "~/Library/Application Support/VELM/temp.bin",
        "/home/ada/.local/share/VELM/temp.bin");
    row("application support itself", "~/Library/Application Support/", "/home/ada/.local/share/");
    row("a folder of a similar name", "~/Library/Application Supports/a",
        "/home/ada/Library/Application Supports/a");
    row("another spelling", "~/library/application support/a",
        "/home/ada/library/application support/a");
    row("elsewhere in the home folder", "~/chips/a.bin", "/home/ada/chips/a.bin");
    row("lone tilde", "~", "/home/ada");
    row("tilde and separator", "~/", "/home/ada");
    row("tilde name", "~bob/a.bin", "~bob/a.bin");
    row("tilde later on", "/tmp/~/a.bin", "/tmp/~/a.bin");
    row("absolute", "/tmp/a.bin", "/tmp/a.bin");
    row("application support, absolute", "/x/~/Library/Application Support/a",
        "/x/~/Library/Application Support/a");
    row("relative", "a.bin", "a.bin");
    row("variable", "$HOME/a.bin", "$HOME/a.bin");
    row("empty", "", "");
    row("letters outside ASCII", "~/\u00fcbung.bin", "/home/ada/\u00fcbung.bin");
}

void TestFilePaths::resolvedPath_ofAStoredPath() {
    QFETCH(QString, stored);
    QFETCH(QString, resolved);
    QCOMPARE(resolvedPath(stored), resolved);
}

void TestFilePaths::resolvedPath_dataHome_data() {
    QTest::addColumn<QByteArray>("variable");
    QTest::addColumn<QString>("resolved");
    QTest::newRow("absolute") << QByteArray("/data") << QStringLiteral("/data/VELM/a");
    QTest::newRow("separator at the end") << QByteArray("/data/") << QStringLiteral("/data/VELM/a");
    QTest::newRow("relative") << QByteArray("data")
                              << QStringLiteral("/home/ada/.local/share/VELM/a");
    QTest::newRow("empty") << QByteArray("") << QStringLiteral("/home/ada/.local/share/VELM/a");
}

void TestFilePaths::resolvedPath_dataHome() {
    QFETCH(QByteArray, variable);
    QFETCH(QString, resolved);
    qputenv("XDG_DATA_HOME", variable);
    QCOMPARE(resolvedPath(QStringLiteral("~/Library/Application Support/VELM/a")), resolved);
    QCOMPARE(resolvedPath(QStringLiteral("~/a")), QStringLiteral("/home/ada/a"));
}

void TestFilePaths::resolvedPath_withoutHomeAsksTheAccount() {
    const passwd *account = getpwuid(getuid());
    if (!account)
        QSKIP("this user has no account entry");
    const QString home = QFile::decodeName(account->pw_dir);
    qunsetenv("HOME");
    QCOMPARE(resolvedPath(QStringLiteral("~")), home);
}

void TestFilePaths::resolvedPathOf_readsTheKeyAtTheMomentOfUse() {
    QTemporaryDir folder;
    SettingsStore store(folder.filePath(QStringLiteral("velm.conf")));
    const QString key = settingsKeys::temp_read_from_chip_file;
    QCOMPARE(resolvedPathOf(store, key), QString());
    store.registerDefaults(settingsKeys::startupDefaults());
    QCOMPARE(resolvedPathOf(store, key),
             QStringLiteral("/home/ada/.local/share/VELM/temp_read.bin"));
    store.setValue(key, QStringLiteral("~/r.bin"));
    QCOMPARE(resolvedPathOf(store, key), QStringLiteral("/home/ada/r.bin"));
}

void TestFilePaths::absolutePathOf_countsFromTheCurrentFolder_data() {
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("path");
    const QString here = QDir::currentPath();
    QTest::newRow("absolute") << "/t/a.bin" << QStringLiteral("/t/a.bin");
    QTest::newRow("home") << "~/a.bin" << QStringLiteral("/home/ada/a.bin");
    QTest::newRow("bare name") << "a.bin" << here + QStringLiteral("/a.bin");
    QTest::newRow("below") << "t/a.bin" << here + QStringLiteral("/t/a.bin");
    QTest::newRow("above") << "../a.bin" << here + QStringLiteral("/../a.bin");
    QTest::newRow("another user's tilde") << "~bob/a.bin" << here + QStringLiteral("/~bob/a.bin");
    QTest::newRow("empty") << "" << QString();
}

void TestFilePaths::absolutePathOf_countsFromTheCurrentFolder() {
    QFETCH(QString, stored);
    const QTemporaryDir folder;
    SettingsStore store(folder.filePath(QStringLiteral("velm.conf")));
    store.setValue(settingsKeys::temp_output_file, stored);
    QTEST(absolutePathOf(store, settingsKeys::temp_output_file), "path");
}

void TestFilePaths::temporaryFolder_isTheOutputFilesParent_data() {
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("folder");
    const auto row = [](const char *name, const char *stored, const char *folder) {
        QTest::newRow(name) << QString::fromUtf8(stored) << QString::fromUtf8(folder);
    };
    row("default", "~/Library/Application Support/VELM/temp.bin", "/home/ada/.local/share/VELM");
    row("another folder", "/var/tmp/chips/x.bin", "/var/tmp/chips");
    row("in the root folder", "/x.bin", "/");
    row("separators at the end", "/a/b//", "/a");
    row("doubled separator", "/a//b", "/a");
    row("bare name", "x.bin", "");
    row("relative", "a/x.bin", "a");
    row("empty", "", "");
}

void TestFilePaths::temporaryFolder_isTheOutputFilesParent() {
    QFETCH(QString, stored);
    QFETCH(QString, folder);
    QTemporaryDir settings;
    SettingsStore store(settings.filePath(QStringLiteral("velm.conf")));
    store.setValue(settingsKeys::temp_output_file, stored);
    QCOMPARE(temporaryFolder(store), folder);
}

void TestFilePaths::temporaryFileKeys_areThoseOfTheFoldersInTheirOrder() {
    const QStringList keys = temporaryFileKeys();
    QCOMPARE(keys.size(), 4);
    QCOMPARE(keys.first(), settingsKeys::temp_output_file);
    const QTemporaryDir settings;
    SettingsStore store(settings.filePath(QStringLiteral("velm.conf")));
    QStringList folders;
    for (const QString &key : keys) {
        QVERIFY(isTemporaryFile(key));
        folders << QStringLiteral("/tmp/") + key;
        store.setValue(key, folders.last() + QStringLiteral("/x.bin"));
    }
    QCOMPARE(temporaryFolders(store), folders);
    QVERIFY(!isTemporaryFile(settingsKeys::device));
}

QTEST_GUILESS_MAIN(TestFilePaths)
#include "tst_filepaths.moc"

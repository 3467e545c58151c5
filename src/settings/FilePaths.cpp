// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "settings/FilePaths.h"

#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"

#include <QDir>
#include <QFile>

#include <pwd.h>
#include <unistd.h>

namespace {

constexpr QChar separator = u'/';

/// What this program keeps is below a folder of its own.
const QString ownFolder = QStringLiteral("/velm");

QString withoutTrailingSeparators(QString path) {
    while (path.endsWith(separator))
        path.chop(1);
    return path;
}

QString withoutLastComponent(const QString &path) {
    const QString trimmed = withoutTrailingSeparators(path);
    const qsizetype cut = trimmed.lastIndexOf(separator);
    if (cut < 0)
        return {};
    const QString folder = withoutTrailingSeparators(trimmed.first(cut));
    return folder.isEmpty() ? QString(separator) : folder;
}

/// The folder that the environment variable \a variable names, if that is an absolute path, else
/// the folder \a below of the home folder.
QString xdgFolder(const char *variable, const QString &below) {
    const QString folder = qEnvironmentVariable(variable);
    return QDir::isAbsolutePath(folder) ? withoutTrailingSeparators(folder) : homeFolder() + below;
}

} // namespace

// A bare service environment has no HOME.
QString homeFolder() {
    const QString home = qEnvironmentVariable("HOME");
    if (!home.isEmpty())
        return withoutTrailingSeparators(home);
    if (const passwd *account = getpwuid(getuid()))
        return withoutTrailingSeparators(QFile::decodeName(account->pw_dir));
    return {};
}

QString dataFolder() {
    return xdgFolder("XDG_DATA_HOME", QStringLiteral("/.local/share"));
}

QString configFolder() {
    return xdgFolder("XDG_CONFIG_HOME", QStringLiteral("/.config")) + ownFolder;
}

QString stateFolder() {
    return xdgFolder("XDG_STATE_HOME", QStringLiteral("/.local/state")) + ownFolder;
}

QString importFolder() {
    return dataFolder() + ownFolder;
}

QString withHomeFolder(const QString &path) {
    return path.startsWith(u"~/") ? homeFolder() + path.sliced(1) : path;
}

QString resolvedPath(const QString &storedPath) {
    static const QString support = QStringLiteral("~/Library/Application Support/");
    if (storedPath.startsWith(support))
        return dataFolder() + separator + storedPath.sliced(support.size());
    if (storedPath == u"~" || storedPath == u"~/") {
        const QString home = homeFolder();
        return home.isEmpty() ? QString(separator) : home;
    }
    return withHomeFolder(storedPath);
}

QString resolvedPathOf(const SettingsStore &settings, const QString &key) {
    return resolvedPath(settings.stringValue(key));
}

QString absolutePathOf(const SettingsStore &settings, const QString &key) {
    const QString path = resolvedPathOf(settings, key);
    return path.isEmpty() ? path : QDir::current().absoluteFilePath(path);
}

QString temporaryFolder(const SettingsStore &settings) {
    return withoutLastComponent(resolvedPathOf(settings, settingsKeys::temp_output_file));
}

QStringList temporaryFileKeys() {
    return {settingsKeys::temp_output_file, settingsKeys::temp_read_from_chip_file,
            settingsKeys::temp_search_results_file,
            settingsKeys::temp_logic_chip_test_results_file};
}

bool isTemporaryFile(const QString &key) {
    return temporaryFileKeys().contains(key);
}

QStringList temporaryFolders(const SettingsStore &settings) {
    QStringList folders;
    for (const QString &key : temporaryFileKeys())
        folders << withoutLastComponent(resolvedPathOf(settings, key));
    folders.removeAll(QString());
    folders.removeDuplicates();
    return folders;
}

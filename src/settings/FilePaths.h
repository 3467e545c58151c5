// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>

class SettingsStore;

/// The home folder: that of $HOME, or of the account where there is none.
QString homeFolder();

/// The folder for data of the user's own programs: $XDG_DATA_HOME if that is absolute, else
/// ~/.local/share.
QString dataFolder();

/// The folder for this program's settings, which need not be there yet: velm in $XDG_CONFIG_HOME
/// if that is absolute, else in ~/.config.
QString configFolder();

/// The folder for what this program remembers for itself, which need not be there yet: velm in
/// $XDG_STATE_HOME if that is absolute, else in ~/.local/state.
QString stateFolder();

/// Where the bytes of imported files are kept, which outlive the program, unlike the temporary
/// files; it need not be there yet: velm in dataFolder().
QString importFolder();

/// \a path with the home folder for a leading "~/".
QString withHomeFolder(const QString &path);

/// Turns a stored path into one that can be opened. A leading "~/Library/Application Support/"
/// becomes dataFolder(), any other leading "~/" (or a lone "~") the home folder; "~name" and
/// everything else stay as they are.
QString resolvedPath(const QString &storedPath);

/// resolvedPath() of the current value of \a key; empty if the key has no value.
QString resolvedPathOf(const SettingsStore &settings, const QString &key);

/// resolvedPathOf() for a program that starts in another folder: a relative path is made absolute
/// against the current one. An empty path stays empty.
QString absolutePathOf(const SettingsStore &settings, const QString &key);

/// The folder of the temporary files: resolvedPathOf(temp_output_file) less its last component.
QString temporaryFolder(const SettingsStore &settings);

/// The keys of the four files that the program shares with the tool, temp_output_file first.
QStringList temporaryFileKeys();
/// True if \a key is one of them.
bool isTemporaryFile(const QString &key);
/// The folders of those files, each once, that of temp_output_file first.
QStringList temporaryFolders(const SettingsStore &settings);

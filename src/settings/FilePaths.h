// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

class SettingsStore;

/// Turns a stored path into one that can be opened. A leading "~/Library/Application Support/"
/// becomes the XDG data home ($XDG_DATA_HOME if it is absolute, else ~/.local/share), any other
/// leading "~/" (or a lone "~") the home folder; "~name" and everything else stay as they are.
QString resolvedPath(const QString &storedPath);

/// The folder that the environment variable \a variable names, if that is an absolute path, else
/// the folder \a below ("/.local/share") of the home folder, which without HOME is the account's.
QString xdgFolder(const char *variable, const QString &below);

/// resolvedPath() of the current value of \a key; empty if the key has no value.
QString resolvedPathOf(const SettingsStore &settings, const QString &key);

/// resolvedPathOf() for a program that starts in another folder: a relative path is made absolute
/// against the current one. An empty path stays empty.
QString absolutePathOf(const SettingsStore &settings, const QString &key);

/// The folder of the temporary files: resolvedPathOf(temp_output_file) less its last component.
QString temporaryFolder(const SettingsStore &settings);

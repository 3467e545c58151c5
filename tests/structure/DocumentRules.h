// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>

/// What the documents say of the sources, held against them.
namespace documentRules {

/// The files and folders that the Markdown text \a text names in code spans and links, each once,
/// as they stand there: what has a stroke between two names. Paths outside of the project, those
/// that the build makes, and addresses do not count.
QStringList namedPaths(const QString &text);

/// Those of \a paths that are not in the project at \a top. A document in \a folder may count from
/// there; "tool/Console.h" and "app/HandEdits" stand for headers below src.
QStringList missingPaths(const QStringList &paths, const QString &top, const QString &folder);

/// The folders of src that the tables of the Markdown text \a text have rows for, as they stand
/// there: "base" and "files" of a row that begins with "`src/base`, `files`".
QStringList tabledFolders(const QString &text);

/// The names of the settings keys that \a header declares.
QStringList settingsKeysIn(const QString &header);

/// Those of \a names that do not stand in \a text as \a pattern writes them, with %1 for the name.
QStringList missingNames(const QStringList &names, const QString &pattern, const QString &text);

} // namespace documentRules

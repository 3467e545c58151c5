// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

/// Files to be judged: path from the project's top folder ("src/grid/GridModel.h") to text.
using SourceTree = QMap<QString, QString>;

/// Those of \a entries, files and folders of the project at \a top, that a rule may concern: C++,
/// CMake, window definitions and scripts.
SourceTree readSourceTree(const QString &top, const QStringList &entries);

/// \a text with its comments blanked: line breaks and literals stay where they were.
QString withoutComments(const QString &text);

/// "src/grid/GridModel.h" gives "grid"; empty for what is not in a folder of src.
QString layerOf(const QString &path);

/// Whether the file \a path tells CMake what to build.
bool isBuildFile(const QString &path);

/// One #include line of a C++ file.
struct Include {
    QString target;
    /// Written in quotes, not in angle brackets.
    bool ownHeader = false;
};

/// The includes of the C++ text \a text, in order; those in comments do not count.
QList<Include> includesOf(const QString &text);

/// Everything that the files in \a folder of \a tree and its folders include; a window definition
/// includes the headers of its classes.
QList<Include> includesUnder(const SourceTree &tree, const QString &folder);

/// Where what the file \a path includes in quotes is looked for, in order: "src/" for what is in
/// it.
QStringList includeFolders(const QString &path);

/// The path of the header that the file \a path includes in quotes as \a target; empty if \a tree
/// has none.
QString headerIncludedBy(const SourceTree &tree, const QString &path, const QString &target);

/// The libraries that the CMake text \a text links, in order: "velm_base", "Qt6::Core".
QStringList linkedLibraries(const QString &text);

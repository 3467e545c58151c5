// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QSet>
#include <QString>

/// Whether \a header, as an include names it, belongs to the toolkit's module \a module:
/// "QLabel" and "QtWidgets/QLabel" to "QtWidgets". The installed headers tell.
bool isOfModule(const QString &header, const QString &module);

/// The file in which the toolkit declares the class \a name, "qlabel.h" for "QLabel"; empty if
/// that is no class of the toolkit's with a header of its name.
QString toolkitHeaderOf(const QString &name);

/// The names of the toolkit's files that come with its header \a header, as an include names it,
/// whatever their conditions; none if it is not the toolkit's.
QSet<QString> toolkitHeadersBehind(const QString &header);

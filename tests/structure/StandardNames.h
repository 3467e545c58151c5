// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

/// The headers of the standard library that give \a name ("std::move", "errno"), any of which will
/// do; none for a name that the table does not have.
QStringList standardHeadersOf(const QString &name);

/// The names that the table has for the standard header \a header; none for a header that it does
/// not have, and for those of C, which give names without "std::" as well.
QSet<QString> namesOfStandardHeader(const QString &header);

/// The words of the C++ text \a code; "std::move" is one of them, and says nothing of "move".
QSet<QString> wordsOf(const QString &code);

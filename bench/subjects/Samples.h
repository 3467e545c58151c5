// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Units.h"

#include <QByteArray>
#include <QString>

// What is measured with. The same seed gives the same bytes in every run.

/// Bytes of every value, without an order.
QByteArray randomBytes(qint64 size);
/// Lines of printable ASCII.
QByteArray asciiText(qint64 size);
/// Valid UTF-8 in which characters of one, two, three and four bytes take turns; up to three
/// bytes shorter than \a size.
QByteArray multiByteText(qint64 size);

/// Adds up \a bytes as words: a pass over memory, which cannot be much faster.
quint64 passOver(const QByteArray &bytes);

/// Writes \a bytes into a new file at \a path. Throws if that failed.
void writeFile(const QString &path, const QByteArray &bytes);
/// The whole file at \a path. Throws if it cannot be read.
QByteArray readFile(const QString &path);

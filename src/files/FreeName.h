// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"
#include "files/SavingTogether.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

/// Whether something has the name \a path, be it a link to nothing; a failure if that cannot be
/// found out.
Result<bool> isNameTaken(const QString &path);

/// True if the file at \a path holds just \a bytes. One that cannot be read counts as another one.
bool holdsAlready(const QString &path, QByteArrayView bytes);

/// Saves \a bytes, by the rules of saveWholeFile(), as a file of that name in \a folder, or under
/// the first of "name-2", "name-3" and so on where a file of that name holds other bytes. Nothing
/// is replaced, not even what comes meanwhile, and one that holds the bytes already is left as it
/// is. Gives the path.
Result<QString, UnsavedTogether> saveUnderFreeName(const QString &folder, const QString &name,
                                                   const QString &suffix, const QByteArray &bytes);

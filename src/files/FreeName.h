// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArrayView>
#include <QString>

/// True if something has the name \a path, be it a link to nothing.
bool isNameTaken(const QString &path);

/// The path in \a folder of a file for \a bytes that is called \a name with \a suffix behind it, or
/// "name-2", "name-3" and so on where a file of that name holds other bytes.
QString freePath(const QString &folder, const QString &name, const QString &suffix,
                 QByteArrayView bytes);

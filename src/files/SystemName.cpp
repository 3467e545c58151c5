// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/SystemName.h"

#include <QCoreApplication>
#include <QFile>

#include <cerrno>

Result<QByteArray> systemName(const QString &path) {
    if (path.contains(QChar::Null))
        return Failure::ofSystem(ENOENT);
    return QFile::encodeName(path);
}

Failure notRegularFile() {
    return {QCoreApplication::translate("Files", "Not a regular file")};
}

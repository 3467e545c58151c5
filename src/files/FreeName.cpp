// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/FreeName.h"

#include "files/FileLoading.h"

#include <QFileInfo>

bool isNameTaken(const QString &path) {
    const QFileInfo file(path);
    return file.exists() || file.isSymLink();
}

QString freePath(const QString &folder, const QString &name, const QString &suffix,
                 QByteArrayView bytes) {
    const QString begin = folder + u'/' + name;
    QString path = begin + suffix;
    for (int number = 2; isNameTaken(path) && !fileHolds(path, bytes); ++number)
        path = begin + QStringLiteral("-%1").arg(number) + suffix;
    return path;
}

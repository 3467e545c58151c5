// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/FreeName.h"

#include "files/FileLoading.h"

#include <QFileInfo>

QString freePath(const QString &folder, const QString &name, const QString &suffix,
                 QByteArrayView bytes) {
    const QString begin = folder + u'/' + name;
    QString path = begin + suffix;
    const auto isTaken = [bytes](const QString &by) {
        const QFileInfo file(by);
        return (file.exists() || file.isSymLink()) && !fileHolds(by, bytes);
    };
    for (int number = 2; isTaken(path); ++number)
        path = begin + QStringLiteral("-%1").arg(number) + suffix;
    return path;
}

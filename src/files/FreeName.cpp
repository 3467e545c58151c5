// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/FreeName.h"

#include "files/FileLoading.h"

#include <QFileInfo>

#include <cerrno>

bool isNameTaken(const QString &path) {
    const QFileInfo file(path);
    return file.exists() || file.isSymLink();
}

// A file that cannot be read counts as another one.
bool holdsAlready(const QString &path, QByteArrayView bytes) {
    const Result<bool> holds = fileHolds(path, bytes);
    return holds && *holds;
}

QString freePath(const QString &folder, const QString &name, const QString &suffix,
                 QByteArrayView bytes) {
    const QString begin = folder + u'/' + name;
    QString path = begin + suffix;
    for (int number = 2; isNameTaken(path) && !holdsAlready(path, bytes); ++number)
        path = begin + QStringLiteral("-%1").arg(number) + suffix;
    return path;
}

Result<QString, UnsavedTogether> saveUnderFreeName(const QString &folder, const QString &name,
                                                   const QString &suffix, const QByteArray &bytes) {
    while (true) {
        const QString path = freePath(folder, name, suffix, bytes);
        if (holdsAlready(path, bytes))
            return path;
        const Result<void, UnsavedTogether> saved =
            saveTogether({{path, bytes}}, Replacing::Refused);
        const UnsavedTogether *unsaved = saved.failure();
        if (!unsaved)
            return path;
        const bool wasTakenMeanwhile = unsaved->failure.systemError == EEXIST && isNameTaken(path);
        if (!wasTakenMeanwhile)
            return *unsaved;
    }
}

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

bool holdsAlready(const QString &path, QByteArrayView bytes) {
    const Result<bool> holds = fileHolds(path, bytes);
    return holds && *holds;
}

namespace {

/// The path in \a folder of a file for \a bytes that is called \a name with \a suffix behind it, or
/// "name-2", "name-3" and so on where a file of that name holds other bytes.
QString freePath(const QString &folder, const QString &name, const QString &suffix,
                 QByteArrayView bytes) {
    const QString begin = folder + u'/' + name;
    QString path = begin + suffix;
    for (int number = 2; isNameTaken(path) && !holdsAlready(path, bytes); ++number)
        path = begin + QStringLiteral("-%1").arg(number) + suffix;
    return path;
}

} // namespace

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

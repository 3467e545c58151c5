// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/FreeName.h"

#include "files/FileLoading.h"
#include "files/SystemName.h"

#include <cerrno>
#include <sys/stat.h>

Result<bool> isNameTaken(const QString &path) {
    const Result<QByteArray> name = systemName(path);
    struct stat facts = {};
    if (!name)
        return false;
    if (::lstat(name->constData(), &facts) == 0)
        return true;
    if (saysMissing(errno))
        return false;
    return Failure::ofSystem(errno);
}

bool holdsAlready(const QString &path, QByteArrayView bytes) {
    const Result<bool> holds = fileHolds(path, bytes);
    return holds && *holds;
}

namespace {

/// The path in \a folder of a file for \a bytes that is called \a name with \a suffix behind it, or
/// "name-2", "name-3" and so on where a file of that name holds other bytes. A look that fails
/// ends this: in a folder that cannot be looked into no name would be a free one.
Result<QString, UnsavedTogether> freePath(const QString &folder, const QString &name,
                                          const QString &suffix, QByteArrayView bytes) {
    const QString begin = folder + u'/' + name;
    QString path = begin + suffix;
    for (int number = 2;; ++number) {
        const Result<bool> taken = isNameTaken(path);
        if (const Failure *failure = taken.failure())
            return UnsavedTogether{path, *failure, {}};
        if (!*taken || holdsAlready(path, bytes))
            return path;
        path = begin + QStringLiteral("-%1").arg(number) + suffix;
    }
}

} // namespace

Result<QString, UnsavedTogether> saveUnderFreeName(const QString &folder, const QString &name,
                                                   const QString &suffix, const QByteArray &bytes) {
    while (true) {
        const Result<QString, UnsavedTogether> path = freePath(folder, name, suffix, bytes);
        if (!path || holdsAlready(*path, bytes))
            return path;
        const Result<void, UnsavedTogether> saved =
            saveTogether({{*path, bytes}}, Replacing::Refused);
        const UnsavedTogether *unsaved = saved.failure();
        if (!unsaved)
            return path;
        if (unsaved->failure.systemError != EEXIST)
            return *unsaved;
        const Result<bool> wasTakenMeanwhile = isNameTaken(*path);
        if (!wasTakenMeanwhile || !*wasTakenMeanwhile)
            return *unsaved;
    }
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "settings/IniFile.h"

#include "base/Units.h"
#include "files/FileLoading.h"
#include "files/FileLock.h"
#include "files/FileSaving.h"
#include "files/PrivateFolder.h"
#include "files/Renaming.h"
#include "files/SystemName.h"
#include "settings/IniText.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <cerrno>

namespace {

/// In bytes; a heavy user's settings have some tens of thousands.
constexpr qint64 largestFile = mebibyte;
/// How many damaged files are kept beside each other; nobody damages so many.
constexpr int maxCopies = 1000;

using Trouble = IniFile::Trouble;

Trouble damage() {
    return {Failure{QCoreApplication::translate("IniFile", "The file there is damaged")},
            Trouble::Kind::Damaged};
}

enum class IfAbsent { Empty, Failure };

/// The text of the file at \a path, which is no larger than a settings file.
Result<QByteArray, Trouble> load(const QString &path, IfAbsent ifAbsent) {
    const Result<ByteBuffer> loaded = loadWholeFile(path, largestFile);
    if (loaded)
        return **loaded;
    const int error = loaded.failure()->systemError;
    // A path that is too long is trouble: no file can ever be saved there.
    const bool isAbsent = error == ENOENT || error == ENOTDIR;
    if (isAbsent && ifAbsent == IfAbsent::Empty)
        return QByteArray();
    if (error == EFBIG)
        return damage();
    return Trouble{*loaded.failure()};
}

IniFile::Outcome valuesIn(const QByteArray &text) {
    if (const auto values = iniText::values(text))
        return *values;
    return damage();
}

} // namespace

IniFile::IniFile(const QString &path) : path_(path) {
    removeUnfinishedSaves(path_);
}

bool IniFile::isDamaged(const Outcome &outcome) {
    const Trouble *trouble = outcome.failure();
    return trouble && trouble->kind == Trouble::Kind::Damaged;
}

IniFile::Outcome IniFile::read() const {
    const Result<QByteArray, Trouble> text = load(path_, IfAbsent::Empty);
    if (const Trouble *trouble = text.failure())
        return *trouble;
    return valuesIn(*text);
}

IniFile::Outcome IniFile::change(const QVariantMap &changes, QDeadlineTimer deadline) {
    const Result<void> made = makePrivateFolder(QFileInfo(path_).path());
    if (const Failure *failure = made.failure())
        return Trouble{*failure};
    const auto lock = FileLock::take(path_, deadline);
    if (const Failure *failure = lock.failure())
        return Trouble{*failure};
    // There is one, since it is locked: if it has gone, somebody is about to replace it.
    const Result<QByteArray, Trouble> before = load(path_, IfAbsent::Failure);
    if (const Trouble *trouble = before.failure())
        return *trouble;
    if (Outcome found = valuesIn(*before); !found)
        return found;
    const QByteArray after = iniText::changed(*before, changes);
    if (after.size() > largestFile)
        return Trouble{Failure::ofSystem(EFBIG)};
    if (after != *before || saving_.isRefused())
        if (const auto saved = saving_.save(path_, after, deadline); !saved)
            return Trouble{*saved.failure()};
    return valuesIn(after);
}

Result<QString> IniFile::moveAside() const {
    const Result<QByteArray> from = systemName(path_);
    if (!from)
        return *from.failure();
    const QString first = path_ + QStringLiteral(".damaged");
    for (int copy = 1; copy <= maxCopies; ++copy) {
        const QString name = copy == 1 ? first : first + u'-' + QString::number(copy);
        const Result<void> renamed = renameToFree(*from, QFile::encodeName(name));
        if (renamed)
            return name;
        if (renamed.failure()->systemError != EEXIST)
            return *renamed.failure();
    }
    return Failure::ofSystem(EEXIST);
}

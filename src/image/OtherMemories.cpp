// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "image/OtherMemories.h"

#include "files/FileLoading.h"
#include "files/FileRemoval.h"
#include "settings/FilePaths.h"
#include "settings/SettingsKeys.h"

#include <QFileInfo>

#include <algorithm>
#include <cstddef>
#include <tuple>

namespace {

/// True if \a path is one of the four files that the settings name.
bool isNamed(const SettingsStore &settings, const QString &path) {
    const QStringList keys = temporaryFileKeys();
    return std::any_of(keys.begin(), keys.end(),
                       [&](const QString &key) { return absolutePathOf(settings, key) == path; });
}

bool isInFolder(const QString &folder, const QString &path) {
    const QString canonical = QFileInfo(folder).canonicalFilePath();
    return !canonical.isEmpty() &&
           QFileInfo(QFileInfo(path).path()).canonicalFilePath() == canonical;
}

/// True if the read file has the name that the program gives it: under another it may lie among the
/// user's own files.
bool hasItsUsualName(const QString &readFile) {
    const QString usual =
        settingsKeys::startupDefaults().value(settingsKeys::temp_read_from_chip_file).toString();
    return QFileInfo(readFile).fileName() == QFileInfo(usual).fileName();
}

Result<ByteBuffer> load(const QString &path, OtherMemory memory) {
    return loadOwnFile(path, memory == OtherMemory::Fuses ? OtherMemoryFiles::largestFuseText
                                                          : OtherMemoryFiles::largestMemory);
}

/// The file of \a memory at \a path if it has come or changed since the look \a before; null if it
/// has not. A failure if that is not known.
Result<ByteBuffer> loadIfNew(const QString &path, OtherMemory memory,
                             const FileStamp::Look &before) {
    const FileStamp::Look now = FileStamp::look(path);
    if (const Failure *failure = now.failure())
        return *failure;
    if (!*now)
        return ByteBuffer();
    if (const Failure *failure = before.failure())
        return *failure;
    return *now == *before ? ByteBuffer() : load(path, memory);
}

void put(OtherMemories &memories, OtherMemory memory, const ByteBuffer &bytes) {
    switch (memory) {
    case OtherMemory::Data:
        memories.data = bytes;
        break;
    case OtherMemory::User:
        memories.user = bytes;
        break;
    case OtherMemory::Fuses:
        memories.fuseText = bytes;
        memories.fuses = readFuseText(*bytes);
        break;
    }
}

} // namespace

QString endingOf(OtherMemory memory) {
    switch (memory) {
    case OtherMemory::Data:
        return QStringLiteral(".eeprom.bin");
    case OtherMemory::User:
        return QStringLiteral(".user.bin");
    case OtherMemory::Fuses:
        break;
    }
    return QStringLiteral(".fuses.conf");
}

QString otherMemoryFile(const QString &readFile, OtherMemory memory) {
    const qsizetype dot = readFile.lastIndexOf(u'.');
    return (dot < 0 ? readFile : readFile.first(dot)) + endingOf(memory);
}

QStringList otherMemoryFiles(const QString &readFile) {
    QStringList files;
    for (const OtherMemory memory : otherMemories)
        files.append(otherMemoryFile(readFile, memory));
    return files;
}

const ByteBuffer &OtherMemories::bytesOf(OtherMemory memory) const {
    switch (memory) {
    case OtherMemory::Data:
        return data;
    case OtherMemory::User:
        return user;
    case OtherMemory::Fuses:
        break;
    }
    return fuseText;
}

void removeOtherMemoryFiles(const SettingsStore &settings) {
    const QString readFile = absolutePathOf(settings, settingsKeys::temp_read_from_chip_file);
    if (!hasItsUsualName(readFile))
        return;
    for (const OtherMemory memory : otherMemories) {
        const QString path = otherMemoryFile(readFile, memory);
        if (isInFolder(temporaryFolder(settings), path) && !isNamed(settings, path)) {
            // One that stays is known again by its stamp.
            std::ignore = removeFile(path);
        }
    }
}

OtherMemoryFiles::OtherMemoryFiles(const QString &readFile) : readFile_(readFile) {
    for (const OtherMemory memory : otherMemories)
        before_ << FileStamp::look(otherMemoryFile(readFile, memory));
}

OtherMemories OtherMemoryFiles::loadNew() const {
    OtherMemories memories;
    for (std::size_t i = 0; i < otherMemories.size(); ++i) {
        const QString path = otherMemoryFile(readFile_, otherMemories.at(i));
        const Result<ByteBuffer> bytes =
            loadIfNew(path, otherMemories.at(i), before_.at(qsizetype(i)));
        if (const Failure *failure = bytes.failure())
            memories.unread.append({path, *failure});
        else if (lengthOf(*bytes) > 0)
            put(memories, otherMemories.at(i), *bytes);
    }
    return memories;
}

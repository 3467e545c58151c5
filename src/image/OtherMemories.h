// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"
#include "base/Units.h"
#include "files/ByteBuffer.h"
#include "files/FileStamp.h"
#include "image/FuseText.h"

#include <QDateTime>
#include <QList>
#include <QString>

#include <array>

class SettingsStore;

/// What a chip holds besides the code memory that an image is of.
enum class OtherMemory { Data, User, Fuses };

inline constexpr std::array otherMemories = {OtherMemory::Data, OtherMemory::User,
                                             OtherMemory::Fuses};

/// How the name of a file of \a memory ends: "NAME.eeprom.bin" lies beside "NAME.bin".
QString endingOf(OtherMemory memory);

/// The file beside \a readFile into which the programmer tool puts \a memory. The tool takes the
/// path up to its last dot, wherever that is.
QString otherMemoryFile(const QString &readFile, OtherMemory memory);
/// All of them.
QStringList otherMemoryFiles(const QString &readFile);

/// What a Read brought besides the code memory. A buffer is null where there was nothing.
struct OtherMemories {
    /// A file that came and cannot be read, or of which it is not known whether it came.
    struct Unread {
        QString path;
        Failure failure;
    };

    ByteBuffer data;
    ByteBuffer user;
    ByteBuffer fuseText;   ///< as the tool wrote it
    QList<FuseLine> fuses; ///< what it says
    QList<Unread> unread;

    bool isEmpty() const { return !data && !user && !fuseText; }
    /// The bytes of \a memory, for fuses their text; null where there was nothing.
    const ByteBuffer &bytesOf(OtherMemory memory) const;
};

/// All that one Read brought.
struct ReadMemories {
    QString device;
    QDateTime endedAt;
    ByteBuffer code;
    OtherMemories others;
};

/// Removes the files of other memories that an earlier Read left beside the temporary file of the
/// next one. Only files and links go, and only in the folder of temporary files, where the read
/// file has its usual name: others may be somebody's own.
void removeOtherMemoryFiles(const SettingsStore &settings);

/// Tells the files that one Read has left from those that lay there before it.
class OtherMemoryFiles {
public:
    /// The largest file of bytes that is loaded, 16 MiB, and the largest text of fuses, 64 KiB.
    static constexpr qint64 largestMemory = 16 * mebibyte;
    static constexpr qint64 largestFuseText = 64 * kibibyte;

    /// Looks at what lies beside \a readFile, an absolute path, before the Read.
    explicit OtherMemoryFiles(const QString &readFile);

    /// Loads what has come since, after the Read. A file that is as it was does not count, nor does
    /// an empty one; through a link of somebody else's nothing is read.
    OtherMemories loadNew() const;

private:
    QString readFile_;
    QList<FileStamp::Look> before_; ///< at the files of otherMemories
};

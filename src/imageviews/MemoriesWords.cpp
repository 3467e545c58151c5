// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "imageviews/MemoriesWords.h"

#include "base/Digits.h"
#include "base/NumberWords.h"
#include "image/FuseText.h"

#include <QCoreApplication>
#include <QDir>
#include <QStringList>

namespace {

class MemoriesWording {
    Q_DECLARE_TR_FUNCTIONS(MemoriesWords)

public:
    static QString data(qint64 bytes) {
        return bytes == 1 ? tr("1 byte of data memory")
                          : tr("%1 bytes of data memory").arg(grouped(bytes));
    }
    static QString user(qint64 bytes) {
        return bytes == 1 ? tr("1 byte of user memory")
                          : tr("%1 bytes of user memory").arg(grouped(bytes));
    }
    static QString fuses(qint64 count) {
        return count == 1 ? tr("1 fuse") : tr("%1 fuses").arg(grouped(count));
    }
    static QString otherLines(qint64 count) {
        return count == 1 ? tr("1 line that says no fuse")
                          : tr("%1 lines that say no fuse").arg(grouped(count));
    }
};

} // namespace

QString memoriesWords(const OtherMemories &memories) {
    QStringList words;
    if (memories.data)
        words << MemoriesWording::data(memories.data->size());
    if (memories.user)
        words << MemoriesWording::user(memories.user->size());
    const qsizetype fuses = countFuses(memories.fuses);
    const qsizetype otherLines = memories.fuses.size() - fuses;
    if (fuses > 0)
        words << MemoriesWording::fuses(fuses);
    if (otherLines > 0)
        words << MemoriesWording::otherLines(otherLines);
    return words.join(QStringLiteral(", "));
}

QString memoryName(OtherMemory memory) {
    switch (memory) {
    case OtherMemory::Data:
        return MemoriesWording::tr("Data memory");
    case OtherMemory::User:
        return MemoriesWording::tr("User memory");
    case OtherMemory::Fuses:
        break;
    }
    return MemoriesWording::tr("Fuses");
}

QString unreadWords(const QList<OtherMemories::Unread> &unread) {
    QStringList sentences;
    for (const OtherMemories::Unread &file : unread)
        sentences << MemoriesWording::tr("It is not known what the Read left in %1: %2.")
                         .arg(QDir::toNativeSeparators(file.path), file.failure.reason);
    return sentences.join(u' ');
}

QString hexadecimalWords(const Fuse &fuse) {
    return QStringLiteral("0x") + hexDigits(fuse.value, fuse.digits);
}

QString binaryWords(const Fuse &fuse) {
    const QString bits = QString::number(fuse.value, binaryBase)
                             .rightJustified(qsizetype(fuse.digits) * bitsInHexDigit, u'0');
    QStringList groups;
    for (qsizetype i = 0; i < bits.size(); i += bitsInHexDigit)
        groups << bits.sliced(i, bitsInHexDigit);
    return groups.join(u' ');
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "image/BlockWords.h"

#include "base/NumberWords.h"
#include "files/ByteBuffer.h"
#include "image/AddressWords.h"

#include <QCoreApplication>

#include <algorithm>
#include <variant>

namespace {

class BlockWording {
    Q_DECLARE_TR_FUNCTIONS(BlockWords)

public:
    static QString trouble(BlockTrouble trouble) {
        switch (trouble) {
        case BlockTrouble::NoBytes:
            return tr("There are no bytes to write.");
        case BlockTrouble::BehindEnd:
            return tr("There are no such bytes in the data to burn.");
        case BlockTrouble::TooLarge:
            return tr("The data to burn would be larger than %1.").arg(boundWords(largestImage));
        }
        return {};
    }

    static QString size(qint64 size) {
        if (size == 0)
            return tr("no bytes");
        return size == 1 ? tr("1 byte") : tr("%1 bytes").arg(grouped(size));
    }

    static QString bytesAt(ByteRange bytes) {
        const QString address = addressWords(bytes.offset);
        return bytes.length == 1 ? tr("1 byte at %1").arg(address)
                                 : tr("%1 bytes at %2").arg(grouped(bytes.length), address);
    }

    static QString doNotFit(qint64 length, qint64 offset, qint64 there) {
        return tr("%1 of %2 bytes do not fit, since from %3 on there are %4.")
            .arg(grouped(length - there), grouped(length), addressWords(offset), grouped(there));
    }

    static QString filled(ByteRange bytes, const BlockContent &content) {
        /// In bytes: what is read at a glance, and fits into a line with the rest.
        constexpr qsizetype longestShown = 8;
        const QString where = bytesAt(bytes);
        const auto *repeated = std::get_if<RepeatedBytes>(&content);
        if (!repeated)
            return tr("Filled %1 with random bytes.").arg(where);
        const QByteArray &pattern = repeated->pattern;
        if (pattern.size() > longestShown)
            return tr("Filled %1 with a pattern of %2 bytes.").arg(where, grouped(pattern.size()));
        return tr("Filled %1 with %2.")
            .arg(where, QString::fromLatin1(pattern.toHex(' ').toUpper()));
    }

    static QString pasted(ByteRange bytes) { return tr("Pasted %1.").arg(bytesAt(bytes)); }
    static QString fileWritten(const QString &name, ByteRange bytes) {
        return tr("Wrote %1 over %2.").arg(name, bytesAt(bytes));
    }
    static QString fileInserted(const QString &name, ByteRange bytes) {
        return tr("Inserted %1: %2.").arg(name, bytesAt(bytes));
    }
};

} // namespace

QString blockTroubleWords(BlockTrouble trouble) {
    return BlockWording::trouble(trouble);
}

QString sizeWords(qint64 size) {
    return BlockWording::size(size);
}

QString bytesAtWords(ByteRange bytes) {
    return BlockWording::bytesAt(bytes);
}

QString doNotFitWords(qint64 length, qint64 offset, qint64 imageSize) {
    return BlockWording::doNotFit(length, offset, std::max<qint64>(imageSize - offset, 0));
}

QString filledWords(ByteRange bytes, const BlockContent &content) {
    return BlockWording::filled(bytes, content);
}

QString pastedWords(ByteRange bytes) {
    return BlockWording::pasted(bytes);
}

QString fileWrittenWords(const QString &name, ByteRange bytes) {
    return BlockWording::fileWritten(name, bytes);
}

QString fileInsertedWords(const QString &name, ByteRange bytes) {
    return BlockWording::fileInserted(name, bytes);
}

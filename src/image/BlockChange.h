// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"
#include "files/ByteBuffer.h"

#include <QByteArray>

#include <variant>

/// Bytes that are repeated until there are enough; there is at least one.
struct RepeatedBytes {
    QByteArray pattern;
};

/// Bytes that look random; the same \a seed gives the same ones.
struct RandomBytes {
    quint32 seed = 0;
};

using BlockContent = std::variant<RepeatedBytes, RandomBytes>;

/// Some bytes of an image that others replace. In a fill as many come as go; in an insertion none
/// go.
struct BlockChange {
    qint64 offset = 0;
    qint64 replaced = 0; ///< how many bytes go
    qint64 length = 0;   ///< how many come
    BlockContent content;

    /// Where the bytes are that have come.
    ByteRange written() const { return {offset, length}; }
};

/// The bytes of \a where become \a content.
BlockChange fillOf(ByteRange where, BlockContent content);
/// The bytes from \a offset on become \a bytes, in an image of \a imageSize bytes: where these are
/// more than there are, the image becomes longer.
BlockChange overwriteOf(qint64 offset, const QByteArray &bytes, qint64 imageSize);
/// \a bytes come before the byte at \a offset, which moves up with all behind it.
BlockChange insertionOf(qint64 offset, const QByteArray &bytes);

/// Why a change cannot be made.
enum class BlockTrouble {
    NoBytes,   ///< none go and none come
    BehindEnd, ///< it is about bytes that are not there
    TooLarge,  ///< the image would be larger than the largest
};

/// Whether \a change can be made in an image of \a imageSize bytes, and if not, why.
Result<void, BlockTrouble> canBeMade(const BlockChange &change, qint64 imageSize);

/// The bytes that differ once \a change has been made in an image of \a imageSize bytes, or taken
/// back: all behind it, too, where they move.
ByteRange touchedBy(const BlockChange &change, qint64 imageSize);

/// The bytes of \a image that \a change is about to replace, in memory of their own.
QByteArray replacedBytes(const QByteArray &image, const BlockChange &change);

/// Makes \a change, which it must be possible to make, in \a image. Throws std::bad_alloc, with the
/// image untouched, where there is no memory for it.
void makeChange(QByteArray &image, const BlockChange &change);

/// Takes \a change back, which was made in \a image: the bytes that it replaced are \a replaced.
/// Throws as makeChange() does.
void takeBackChange(QByteArray &image, const BlockChange &change, const QByteArray &replaced);

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "inspect/BlockClass.h"

#include <optional>
#include <vector>

/// An image in a bounded number of blocks of one size, and what each of them looks like. It is
/// counted in turns, between which the caller may do something else; after a
/// change only the blocks that have changed are counted again.
class BlockMap {
public:
    /// The most blocks: about as many as the map of a tall window has rows of pixels.
    static constexpr qint64 maxBlocks = 1024;
    /// The size of a block is this many bytes, doubled as often as it must be.
    static constexpr qint64 smallestBlock = 16;

    /// Begins with another image, of \a size bytes: none of its blocks is known.
    void begin(qint64 size);
    /// The \a length bytes at \a offset have other values, and the image \a size bytes now. What
    /// was known of their blocks holds until these are counted again.
    void change(qint64 offset, qint64 length, qint64 size);

    /// Counts on in \a image, which has the size that was told: at most \a max bytes, but at least
    /// a block. True once there is nothing more to count.
    bool advance(QByteArrayView image, qsizetype max);

    qint64 size() const { return size_; }
    qint64 blockSize() const { return blockSize_; }
    qint64 blockCount() const { return qint64(blocks_.size()); }
    /// The class of the blocks from \a first to the one before \a end together, at least one;
    /// nothing while one of them has never been counted. Where each is blank or zero, it is what
    /// most of their bytes are; what one alone holds besides is never hidden by the others.
    std::optional<BlockClass> classOfBlocks(qint64 first, qint64 end) const;

private:
    struct Block {
        ByteKinds kinds; ///< no bytes while they have never been counted
        bool isCurrent = false;
    };

    void resize(qint64 size);
    void outdate(qint64 offset, qint64 end);

    std::vector<Block> blocks_;
    qint64 size_ = 0;
    qint64 blockSize_ = smallestBlock;
};

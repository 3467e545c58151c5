// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "inspect/BlockMap.h"

#include <algorithm>

namespace {

qint64 mapBlockSizeFor(qint64 size) {
    qint64 blockSize = BlockMap::smallestBlock;
    while (blockSize * BlockMap::maxBlocks < size)
        blockSize *= 2;
    return blockSize;
}

} // namespace

void BlockMap::begin(qint64 size) {
    blocks_.clear();
    blockSize_ = mapBlockSizeFor(size);
    resize(size);
}

void BlockMap::change(qint64 offset, qint64 length, qint64 size) {
    if (mapBlockSizeFor(size) != blockSize_)
        return begin(size);
    // The block in which the image ended, or ends now, has another length.
    const qint64 firstMoved = std::min(size, size_);
    const qint64 endMoved = std::max(size, size_);
    resize(size);
    outdate(offset, offset + length);
    outdate(firstMoved, endMoved);
}

void BlockMap::resize(qint64 size) {
    size_ = size;
    blocks_.resize(size_t((size + blockSize_ - 1) / blockSize_));
}

void BlockMap::outdate(qint64 offset, qint64 end) {
    if (offset >= end)
        return;
    const qint64 endBlock = std::min((end + blockSize_ - 1) / blockSize_, blockCount());
    for (qint64 block = std::max<qint64>(offset, 0) / blockSize_; block < endBlock; ++block)
        blocks_[size_t(block)].isCurrent = false;
}

bool BlockMap::advance(QByteArrayView image, qsizetype max) {
    qsizetype taken = 0;
    for (size_t number = 0; number < blocks_.size(); ++number) {
        Block &block = blocks_[number];
        if (block.isCurrent)
            continue;
        const qsizetype start = qsizetype(number) * blockSize_;
        const QByteArrayView bytes = image.sliced(start, std::min(blockSize_, size_ - start));
        if (taken > 0 && taken + bytes.size() > max)
            return false;
        block = {kindsOf(bytes), true};
        taken += bytes.size();
    }
    return true;
}

// Where one filling ends and another begins there is nothing else; bytes of both in one block are a
// pattern that somebody made.
std::optional<BlockClass> BlockMap::classOfBlocks(qint64 first, qint64 end) const {
    ByteKinds kinds;
    bool isFilling = true;
    for (qint64 number = first; number < end; ++number) {
        const ByteKinds &block = blocks_[size_t(number)].kinds;
        if (block.bytes == 0)
            return std::nullopt;
        isFilling &= block.blank == block.bytes || block.zero == block.bytes;
        kinds += block;
    }
    if (isFilling)
        return kinds.blank >= kinds.zero ? BlockClass::Blank : BlockClass::Zero;
    return classOf(kinds);
}

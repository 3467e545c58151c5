// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "inspect/ImageDifferences.h"

#include "base/WordAt.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace {

constexpr qint64 smallestBlock = 16;
constexpr qint64 word = sizeof(quint64);
/// What is passed over at once where it is equal; the C library compares it fastest.
constexpr qint64 stride = 4096;

quint64 wordAt(QByteArrayView bytes, qint64 offset) {
    return ::wordAt<quint64>(bytes.data() + offset);
}

/// The highest bit of every byte of \a value that is not zero.
quint64 nonZeroBytes(quint64 value) {
    return (((value & ~highestBitOfBytes) + ~highestBitOfBytes) | value) & highestBitOfBytes;
}

bool isEqual(QByteArrayView one, QByteArrayView other, qint64 offset, qint64 length) {
    return std::memcmp(one.data() + offset, other.data() + offset, size_t(length)) == 0;
}

void count(quint64 one, quint64 other, ImageDifferences &found) {
    if (one == other)
        return;
    found.bytes += std::popcount(nonZeroBytes(one ^ other));
    found.bitsToErase += std::popcount(other & ~one);
}

/// Adds the differences among \a length bytes from \a offset on, which are not all equal.
void countIn(QByteArrayView one, QByteArrayView other, qint64 offset, qint64 length,
             ImageDifferences &found) {
    const qint64 end = offset + length;
    for (; end - offset >= word; offset += word)
        count(wordAt(one, offset), wordAt(other, offset), found);
    for (; offset < end; ++offset)
        count(quint8(one[offset]), quint8(other[offset]), found);
}

qint64 common(QByteArrayView one, QByteArrayView other) {
    return std::min(one.size(), other.size());
}

qint64 comparedBlockSizeFor(qint64 length) {
    const qint64 minSize = length / ImageDifferencesReader::maxBlocks;
    return std::max<qint64>(smallestBlock, qint64(std::bit_ceil(quint64(minSize) + 1)));
}

/// The first differing byte in [\a offset, \a end), or \a end.
qint64 firstDiffering(QByteArrayView one, QByteArrayView other, qint64 offset, qint64 end) {
    while (end - offset >= stride && isEqual(one, other, offset, stride))
        offset += stride;
    while (end - offset >= word && wordAt(one, offset) == wordAt(other, offset))
        offset += word;
    while (offset < end && one[offset] == other[offset])
        ++offset;
    return offset;
}

/// The first equal byte in [\a offset, \a end), or \a end.
qint64 firstEqual(QByteArrayView one, QByteArrayView other, qint64 offset, qint64 end) {
    while (end - offset >= word &&
           nonZeroBytes(wordAt(one, offset) ^ wordAt(other, offset)) == highestBitOfBytes)
        offset += word;
    while (offset < end && one[offset] != other[offset])
        ++offset;
    return offset;
}

/// Behind the last differing byte before \a end, or 0.
qint64 behindLastDiffering(QByteArrayView one, QByteArrayView other, qint64 end) {
    while (end >= stride && isEqual(one, other, end - stride, stride))
        end -= stride;
    while (end >= word && wordAt(one, end - word) == wordAt(other, end - word))
        end -= word;
    while (end > 0 && one[end - 1] == other[end - 1])
        --end;
    return end;
}

/// Behind the last equal byte before \a end, or 0.
qint64 behindLastEqual(QByteArrayView one, QByteArrayView other, qint64 end) {
    while (end >= word &&
           nonZeroBytes(wordAt(one, end - word) ^ wordAt(other, end - word)) == highestBitOfBytes)
        end -= word;
    while (end > 0 && one[end - 1] != other[end - 1])
        --end;
    return end;
}

} // namespace

bool ImageDifferencesReader::advance(QByteArrayView one, QByteArrayView other, qsizetype max) {
    const qint64 all = common(one, other);
    if (blockSize_ == 0) {
        blockSize_ = comparedBlockSizeFor(all);
        differing_.resize(size_t((all + blockSize_ - 1) / blockSize_));
    }
    const qint64 end = std::min<qint64>(all, found_.compared + max);
    while (found_.compared < end) {
        const qint64 offset = found_.compared;
        const qint64 inBlock = blockSize_ - offset % blockSize_;
        const qint64 length = std::min({inBlock, stride, end - offset});
        if (!isEqual(one, other, offset, length)) {
            countIn(one, other, offset, length, found_);
            differing_[size_t(offset / blockSize_)] = true;
        }
        found_.compared += length;
    }
    return found_.compared >= all;
}

// A place may go on from one block into the next, so the look at a block begins a byte before it.
std::optional<qint64> ImageDifferencesReader::next(QByteArrayView one, QByteArrayView other,
                                                   qint64 offset) const {
    if (found_.compared == 0 || common(one, other) != found_.compared)
        return std::nullopt;
    const auto blocks = qint64(differing_.size());
    for (qint64 block = std::max<qint64>(offset, 0) / blockSize_; block < blocks; ++block) {
        if (!differing_[size_t(block)])
            continue;
        const qint64 begin = block * blockSize_;
        const qint64 end = std::min(begin + blockSize_, found_.compared);
        const auto place =
            nextDifference(one.first(end), other.first(end), std::max(offset, begin - 1));
        if (place)
            return place;
    }
    return std::nullopt;
}

// No place crosses the begin of differing blocks that follow each other up to \a end; it is \a end
// itself if the block before that is the same.
qint64 ImageDifferencesReader::beginOfDiffering(qint64 end) const {
    qint64 begin = end;
    while (begin > 0 && differing_[size_t((begin - 1) / blockSize_)])
        begin = (begin - 1) / blockSize_ * blockSize_;
    return begin;
}

std::optional<qint64> ImageDifferencesReader::previous(QByteArrayView one, QByteArrayView other,
                                                       qint64 offset) const {
    if (common(one, other) != found_.compared)
        return std::nullopt;
    qint64 end = std::clamp<qint64>(offset, 0, found_.compared);
    while (end > 0) {
        const qint64 begin = beginOfDiffering(end);
        const auto place = previousDifference(one.sliced(begin), other.sliced(begin), end - begin);
        if (place)
            return begin + *place;
        end = std::min(begin, (end - 1) / blockSize_ * blockSize_);
    }
    return std::nullopt;
}

std::optional<qint64> nextDifference(QByteArrayView one, QByteArrayView other, qint64 offset) {
    const qint64 end = common(one, other);
    const qint64 past = offset < 0 ? 0 : firstEqual(one, other, std::min<qint64>(offset, end), end);
    const qint64 place = firstDiffering(one, other, past, end);
    return place < end ? std::optional(place) : std::nullopt;
}

std::optional<qint64> previousDifference(QByteArrayView one, QByteArrayView other, qint64 offset) {
    const qint64 behind =
        behindLastDiffering(one, other, std::clamp<qint64>(offset, 0, common(one, other)));
    return behind > 0 ? std::optional(behindLastEqual(one, other, behind)) : std::nullopt;
}

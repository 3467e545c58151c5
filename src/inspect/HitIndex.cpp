// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "inspect/HitIndex.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <numeric>

namespace {

/// A number of bytes that the compiler knows, so that it looks at many at a time.
constexpr qsizetype searchedLane = 128;

/// The places at which a hit may begin, and the two bytes of the pattern that tell most.
class Candidates {
public:
    Candidates(QByteArrayView image, const BytePattern &pattern, qsizetype from, qsizetype end)
        : pattern_(pattern),
          image_(reinterpret_cast<const uchar *>(image.data())),
          from_(std::max<qsizetype>(from, 0)),
          end_(std::min(end, image.size() - pattern.size() + 1)) {
        if (pattern.isEmpty()) {
            end_ = from_;
            return;
        }
        places_ = pattern.telling();
        one_ = pattern[places_[0]];
        other_ = pattern[places_[1]];
    }

    qsizetype from() const { return from_; }
    qsizetype end() const { return end_; }
    bool isHit(qsizetype offset) const { return pattern_.hits(image_ + offset); }

    /// In how many of the places from \a offset on, a whole lane of them, the two bytes fit.
    int inLane(qsizetype offset) const {
        const uchar *const ones = image_ + offset + places_[0];
        const uchar *const others = image_ + offset + places_[1];
        quint8 fits = 0;
        for (qsizetype i = 0; i < searchedLane; ++i)
            fits = quint8(fits + (int(one_.hits(ones[i])) & int(other_.hits(others[i]))));
        return fits;
    }

private:
    const BytePattern &pattern_;
    const uchar *image_;
    qsizetype from_;
    qsizetype end_;
    std::array<qsizetype, 2> places_{};
    BytePattern::Byte one_;
    BytePattern::Byte other_;
};

qsizetype countOf(const Candidates &places, qsizetype from, qsizetype end) {
    qsizetype hits = 0;
    for (qsizetype offset = from; offset < end; ++offset)
        hits += places.isHit(offset) ? 1 : 0;
    return hits;
}

std::optional<qsizetype> firstOf(const Candidates &places, qsizetype from, qsizetype end) {
    for (qsizetype offset = from; offset < end; ++offset)
        if (places.isHit(offset))
            return offset;
    return std::nullopt;
}

std::optional<qsizetype> lastOf(const Candidates &places, qsizetype from, qsizetype end) {
    for (qsizetype offset = end - 1; offset >= from; --offset)
        if (places.isHit(offset))
            return offset;
    return std::nullopt;
}

/// The offset of the last hit in \a image that begins at \a from or behind it, but before \a end.
std::optional<qsizetype> lastHit(QByteArrayView image, const BytePattern &pattern, qsizetype from,
                                 qsizetype end) {
    const Candidates places(image, pattern, from, end);
    qsizetype stop = places.end();
    for (; stop - places.from() >= searchedLane; stop -= searchedLane)
        if (places.inLane(stop - searchedLane) > 0)
            if (const auto hit = lastOf(places, stop - searchedLane, stop))
                return hit;
    return lastOf(places, places.from(), stop);
}

/// How many such hits there are.
qsizetype hitsBetween(QByteArrayView image, const BytePattern &pattern, qsizetype from,
                      qsizetype end) {
    const Candidates places(image, pattern, from, end);
    const bool twoBytesAreAll = pattern.size() <= 2;
    qsizetype hits = 0;
    qsizetype offset = places.from();
    for (; places.end() - offset >= searchedLane; offset += searchedLane) {
        const int candidates = places.inLane(offset);
        if (candidates > 0)
            hits += twoBytesAreAll ? candidates : countOf(places, offset, offset + searchedLane);
    }
    return hits + countOf(places, offset, places.end());
}

} // namespace

std::optional<qsizetype> firstHit(QByteArrayView image, const BytePattern &pattern, qsizetype from,
                                  qsizetype end) {
    const Candidates places(image, pattern, from, end);
    qsizetype offset = places.from();
    for (; places.end() - offset >= searchedLane; offset += searchedLane)
        if (places.inLane(offset) > 0)
            if (const auto hit = firstOf(places, offset, offset + searchedLane))
                return hit;
    return firstOf(places, offset, places.end());
}

bool isPartOfHit(QByteArrayView image, const BytePattern &pattern, qsizetype offset) {
    return firstHit(image, pattern, offset - pattern.size() + 1, offset + 1).has_value();
}

void HitIndex::forget(qsizetype offset, qsizetype end) {
    // A hit that begins before the bytes may reach into them.
    const qsizetype first = std::max<qsizetype>(offset - pattern_.size() + 1, 0) / blockSize;
    const qsizetype last = std::min((end + blockSize - 1) / blockSize, blocks());
    for (qsizetype block = first; block < last; ++block)
        counts_[std::size_t(block)] = notCounted;
    next_ = std::min(next_, first);
}

void HitIndex::resize(qsizetype size) {
    const qsizetype smaller = std::min(size, size_);
    counts_.resize(std::size_t((size + blockSize - 1) / blockSize), notCounted);
    size_ = size;
    forget(smaller, size + blockSize);
}

bool HitIndex::advance(QByteArrayView image, qsizetype max) {
    if (image.size() != size_)
        resize(image.size());
    for (; next_ < blocks() && max > 0; ++next_) {
        int &count = counts_[std::size_t(next_)];
        if (count != notCounted)
            continue;
        const qsizetype start = next_ * blockSize;
        count = int(hitsBetween(image, pattern_, start, start + blockSize));
        --max;
    }
    return next_ >= blocks();
}

std::optional<qsizetype> HitIndex::total() const {
    if (next_ < blocks())
        return std::nullopt;
    return std::accumulate(counts_.begin(), counts_.end(), qsizetype(0));
}

qsizetype HitIndex::hitsBefore(QByteArrayView image, qsizetype offset) const {
    const qsizetype block = std::clamp<qsizetype>(offset / blockSize, 0, blocks());
    const qsizetype before =
        std::accumulate(counts_.begin(), counts_.begin() + block, qsizetype(0));
    return before + hitsBetween(image, pattern_, block * blockSize, offset);
}

HitAnswer HitIndex::firstFrom(QByteArrayView image, qsizetype from) const {
    if (image.size() != size_)
        return {HitAnswer::Kind::NotYet};
    for (qsizetype block = from / blockSize; block < blocks(); ++block) {
        const int count = counts_[std::size_t(block)];
        if (count == notCounted)
            return {HitAnswer::Kind::NotYet};
        if (count == 0)
            continue;
        const qsizetype start = block * blockSize;
        if (const auto hit = firstHit(image, pattern_, std::max(from, start), start + blockSize))
            return {HitAnswer::Kind::Hit, *hit};
    }
    return {HitAnswer::Kind::None};
}

HitAnswer HitIndex::lastBefore(QByteArrayView image, qsizetype end) const {
    if (image.size() != size_)
        return {HitAnswer::Kind::NotYet};
    for (qsizetype block = std::min((end + blockSize - 1) / blockSize, blocks()); block > 0;
         --block) {
        const int count = counts_[std::size_t(block - 1)];
        if (count == notCounted)
            return {HitAnswer::Kind::NotYet};
        if (count == 0)
            continue;
        const qsizetype stop = block * blockSize;
        if (const auto hit = lastHit(image, pattern_, stop - blockSize, std::min(end, stop)))
            return {HitAnswer::Kind::Hit, *hit};
    }
    return {HitAnswer::Kind::None};
}

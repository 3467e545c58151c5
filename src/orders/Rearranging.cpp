// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "orders/Rearranging.h"

#include "base/HugePages.h"
#include "base/Units.h"
#include "files/ByteBuffer.h"
#include "orders/ByteMoves.h"

#include <algorithm>
#include <cstring>

namespace {

/// What is looked at several times stays in the cache of the processor; a multiple of every word.
constexpr qsizetype sliceSize = 32 * kibibyte;

} // namespace

Rearranging::Rearranging(const Arrangement &arrangement, const QList<qint64> &lengths)
    : arrangement_(arrangement),
      length_(wholeLength(lengths)),
      splitLength_(splitLength(arrangement, lengths)),
      repeated_(splitLength_),
      slice_(std::min(length_, sliceSize), Qt::Uninitialized) {
    const qsizetype goal = std::max<qsizetype>(splitLength_, arrangement_.filled);
    for (int part = 0; part < arrangement_.split.parts; ++part)
        parts_.append(uninitializedBytes(goal));
}

bool Rearranging::advance(const QList<QByteArrayView> &parts, qsizetype max) {
    const qsizetype begin = at_;
    while (at_ < length_ && at_ - begin < max)
        arrange(parts, std::min(slice_.size(), length_ - at_));
    const qsizetype goal = parts_.first().size();
    if (at_ == length_ && repeated_ < goal && at_ - begin < max)
        repeat((max - (at_ - begin)) / parts_.size() + 1);
    return at_ == length_ && repeated_ == goal;
}

void Rearranging::arrange(const QList<QByteArrayView> &parts, qsizetype size) {
    const Lanes &joined = arrangement_.joined;
    const Lanes &split = arrangement_.split;
    char *slice = slice_.data();
    for (int part = 0; part < joined.parts; ++part)
        putPart(slice, parts[part].sliced(at_ / joined.parts, size / joined.parts), joined, part);
    swapBytes(slice, size, arrangement_.swapped);
    if (arrangement_.bitsReversed)
        reverseBits(slice, size);
    for (int part = 0; part < split.parts; ++part)
        takePart(parts_[part].data() + at_ / split.parts, QByteArrayView(slice, size), split, part);
    at_ += size;
}

// Goes on by at most \a max bytes of each part.
void Rearranging::repeat(qsizetype max) {
    const qsizetype goal = parts_.first().size();
    const qsizetype stop = repeated_ + std::min(max, goal - repeated_);
    while (repeated_ < stop) {
        const qsizetype size = std::min(splitLength_, stop - repeated_);
        for (QByteArray &part : parts_)
            std::memcpy(part.data() + repeated_, part.constData() + repeated_ - splitLength_,
                        std::size_t(size));
        repeated_ += size;
    }
}

QList<QByteArray> rearranged(const Arrangement &arrangement, const QList<QByteArrayView> &parts) {
    Rearranging work(arrangement, lengthsOf(parts));
    while (!work.advance(parts, largestImage)) {
    }
    return work.takeParts();
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Units.h"
#include "inspect/BytePattern.h"

#include <QByteArrayView>

#include <optional>
#include <utility>
#include <vector>

// Hits of a pattern in an image. Every byte at which the pattern fits is one, also where two of
// them overlap: going from each to the next comes to all that are counted.

/// The offset of the first hit in \a image that begins at \a from or behind it, but before
/// \a end; nothing if there is none.
std::optional<qsizetype> firstHit(QByteArrayView image, const BytePattern &pattern, qsizetype from,
                                  qsizetype end);
/// True if the byte at \a offset of \a image is part of a hit.
bool isPartOfHit(QByteArrayView image, const BytePattern &pattern, qsizetype offset);

/// Where a search leads.
struct HitAnswer {
    enum class Kind {
        Hit,
        None,
        NotYet, ///< the image has not been looked at so far
    };
    Kind kind = Kind::None;
    qsizetype offset = 0; ///< of the hit
};

/// Counts the hits in an image block by block, in as many turns as the caller likes, and finds its
/// way by the counts. It keeps no bytes: each call is given the image, which must have changed
/// nowhere but where forget() was told. It may be longer or shorter than before.
class HitIndex {
public:
    /// What is counted in one piece, in bytes.
    static constexpr qsizetype blockSize = 16 * kibibyte;

    explicit HitIndex(BytePattern pattern = {}) : pattern_(std::move(pattern)) {}

    const BytePattern &pattern() const { return pattern_; }

    /// The bytes of the image from \a offset to \a end have changed.
    void forget(qsizetype offset, qsizetype end);
    /// Counts on, at most \a max blocks. True once all are counted.
    bool advance(QByteArrayView image, qsizetype max);

    /// How many hits there are, once all blocks are counted.
    std::optional<qsizetype> total() const;
    /// How many of them begin before \a offset. Meaningful only once all blocks are counted.
    qsizetype hitsBefore(QByteArrayView image, qsizetype offset) const;

    /// The first hit that begins at \a from or behind it.
    HitAnswer firstFrom(QByteArrayView image, qsizetype from) const;
    /// The last hit that begins before \a end.
    HitAnswer lastBefore(QByteArrayView image, qsizetype end) const;

private:
    static constexpr int notCounted = -1;

    qsizetype blocks() const { return qsizetype(counts_.size()); }
    void resize(qsizetype size);

    BytePattern pattern_;
    qsizetype size_ = 0;      ///< of the image when it was last seen
    std::vector<int> counts_; ///< of the hits that begin in each block
    qsizetype next_ = 0;      ///< all blocks before it are counted
};

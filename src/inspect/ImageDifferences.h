// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArrayView>

#include <optional>
#include <vector>

/// How two images differ where both have bytes; what one has beyond the other is no difference.
struct ImageDifferences {
    qint64 compared = 0; ///< bytes that both have
    qint64 bytes = 0;    ///< of them, those that differ
    /// Bits that are 0 in the first image and 1 in the second: what a chip with the bytes of the
    /// first must be erased for before it can hold the second.
    qint64 bitsToErase = 0;

    friend bool operator==(const ImageDifferences &, const ImageDifferences &) = default;
};

/// Compares two images in turns, between which the caller may do something else.
class ImageDifferencesReader {
public:
    /// The most blocks that differing() tells of.
    static constexpr qint64 maxBlocks = 4096;

    /// Compares on, at most \a max bytes of each image, which must have the same bytes at each
    /// call. True once all that both have has been compared.
    bool advance(QByteArrayView one, QByteArrayView other, qsizetype max);
    /// What came of the bytes that have been compared.
    const ImageDifferences &differences() const { return found_; }
    /// The size in bytes of a block, a power of two; 0 before the first turn.
    qint64 blockSize() const { return blockSize_; }
    /// Of each block from the first on, whether it has a differing byte.
    const std::vector<bool> &differing() const { return differing_; }

    /// What nextDifference() and previousDifference() give for the images that have been compared
    /// to the end; nothing for others of another length. No look is taken at blocks that are the
    /// same.
    std::optional<qint64> next(QByteArrayView one, QByteArrayView other, qint64 offset) const;
    std::optional<qint64> previous(QByteArrayView one, QByteArrayView other, qint64 offset) const;

private:
    qint64 beginOfDiffering(qint64 end) const;

    ImageDifferences found_;
    qint64 blockSize_ = 0;
    std::vector<bool> differing_;
};

/// Bytes that differ and follow each other are one place. The offset of the first place behind
/// \a offset that does not reach back to it, in the bytes that both images have; -1 for before the
/// first byte. Nothing if there is none.
std::optional<qint64> nextDifference(QByteArrayView one, QByteArrayView other, qint64 offset);
/// The offset of the last place that begins before \a offset.
std::optional<qint64> previousDifference(QByteArrayView one, QByteArrayView other, qint64 offset);

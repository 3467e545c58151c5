// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "formats/ImageFlattening.h"

#include "base/HugePages.h"
#include "base/Units.h"

#include <algorithm>
#include <cstring>
#include <memory>

namespace {

/// The largest chips that a programmer of this kind takes hold no more bytes than this.
constexpr qint64 largestChip = 64 * mebibyte;

} // namespace

Result<void, NoImage> canBeFlattened(const AddressedBytes &bytes, qint64 base) {
    if (bytes.isEmpty())
        return NoImage::NoBytes;
    if (bytes.first() < base)
        return NoImage::BeforeBase;
    if (bytes.end() - base > largestImage)
        return NoImage::TooLarge;
    return {};
}

qint64 usualBase(const AddressedBytes &bytes) {
    return bytes.first() < largestChip ? 0 : bytes.first();
}

ImageFlattening::ImageFlattening(const AddressedBytes &bytes, qint64 base, char fill)
    : base_(base),
      fill_(fill),
      piece_(bytes.pieces().begin()),
      image_(std::make_shared<QByteArray>(uninitializedBytes(bytes.end() - base))) {}

bool ImageFlattening::advance(qsizetype max) {
    char *to = image_->data();
    const qsizetype stop = at_ + std::min(max, image_->size() - at_);
    while (at_ < stop) {
        const qsizetype begin = offsetOf(piece_);
        if (at_ < begin) {
            const qsizetype gap = std::min(begin, stop) - at_;
            std::memset(to + at_, fill_, std::size_t(gap));
            at_ += gap;
            continue;
        }
        const QByteArray &piece = piece_->second;
        const qsizetype taken = std::min(begin + piece.size(), stop) - at_;
        std::memcpy(to + at_, piece.constData() + (at_ - begin), std::size_t(taken));
        at_ += taken;
        if (at_ == begin + piece.size())
            ++piece_;
    }
    return at_ == image_->size();
}

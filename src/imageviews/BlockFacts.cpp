// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "imageviews/BlockFacts.h"

#include "base/TurnOfWork.h"

#include <QByteArrayView>

#include <algorithm>
#include <utility>

bool BlockFacts::readOn(const ShownImage &image, ByteRange block) {
    if (!isTheSame(image, block)) {
        known_ = {image.bytes, image.revision};
        block_ = block;
        reader_ = {};
        isKnown_ = false;
    }
    if (isKnown_ || block.length == 0 || !image.bytes)
        return false;
    // The grid may still show what the image was a turn ago.
    const qint64 length = lengthOf(image.bytes);
    const qint64 first = std::min(block.offset, length);
    const QByteArrayView bytes = QByteArrayView(std::as_const(*image.bytes))
                                     .sliced(first, std::min(block.length, length - first));
    isKnown_ = reader_.advance(bytes, maxBytesInTurn);
    return !isKnown_;
}

std::optional<ImageFacts> BlockFacts::facts() const {
    return isKnown_ ? std::optional(reader_.facts()) : std::nullopt;
}

bool BlockFacts::isTheSame(const ShownImage &image, ByteRange block) const {
    return block_.offset == block.offset && block_.length == block.length &&
           known_.is(image.bytes, image.revision);
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "imageviews/ShownImageReader.h"

#include "base/TurnOfWork.h"

bool ShownImageReader::readOn(const ShownImage &image) {
    if (!isTheSame(image))
        beginWith(image);
    const QByteArrayView bytes = viewOf(image.bytes);
    if (!factsAreKnown_)
        factsAreKnown_ = facts_.advance(bytes, maxBytesInTurn);
    else if (isReadingSha256() && reader_->advance(bytes, maxSha256InTurn))
        sha256_ = QString::fromLatin1(reader_->digest().toHex());
    return !factsAreKnown_ || isReadingSha256();
}

std::optional<ImageFacts> ShownImageReader::facts() const {
    return factsAreKnown_ ? std::optional(facts_.facts()) : std::nullopt;
}

void ShownImageReader::askForSha256(const ShownImage &image) {
    if (!isTheSame(image))
        beginWith(image);
    reader_.emplace();
    sha256_.clear();
}

bool ShownImageReader::isTheSame(const ShownImage &image) const {
    return known_.is(image.bytes, image.revision);
}

void ShownImageReader::beginWith(const ShownImage &image) {
    known_ = {image.bytes, image.revision};
    facts_ = {};
    factsAreKnown_ = false;
    reader_.reset();
    sha256_.clear();
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "files/ByteBuffer.h"
#include "imageviews/KnownImage.h"
#include "imageviews/ShownImageReader.h"

#include <optional>

/// Reads the facts of a block of the image that is shown, in turns of less than a frame. It keeps
/// no image alive.
class BlockFacts {
public:
    /// Takes a turn at \a block of \a image, from its beginning if these are not those of the turn
    /// before. An empty block is forgotten. True while there is more to read.
    bool readOn(const ShownImage &image, ByteRange block);

    /// The facts of the block; nothing until they are known, and without a block.
    std::optional<ImageFacts> facts() const;

private:
    bool isTheSame(const ShownImage &image, ByteRange block) const;

    KnownImage known_;
    ByteRange block_;
    ImageFactsReader reader_;
    bool isKnown_ = false;
};

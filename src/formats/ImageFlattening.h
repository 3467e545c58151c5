// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"
#include "files/ByteBuffer.h"
#include "formats/AddressedBytes.h"

/// Why bytes at addresses make no image.
enum class NoImage {
    NoBytes,
    BeforeBase, ///< some lie at lower addresses than the image begins
    TooLarge    ///< it would be larger than largestImage
};

/// Whether \a bytes make an image whose first byte is that of address \a base, and if not, why.
Result<void, NoImage> canBeFlattened(const AddressedBytes &bytes, qint64 base);

/// The base that is usually meant: 0, unless all bytes lie beyond what chips for a programmer have,
/// as those of a microcontroller's flash memory may; then the lowest address.
qint64 usualBase(const AddressedBytes &bytes);

/// Makes an image of bytes at addresses in as many turns as the caller likes.
class ImageFlattening {
public:
    /// Of \a bytes, which it must be possible to flatten, and which must outlive it. The image
    /// begins with address \a base and has \a fill in its gaps.
    ImageFlattening(const AddressedBytes &bytes, qint64 base, char fill);

    /// Goes on by at most \a max bytes of the image. True once it is whole.
    bool advance(qsizetype max);
    /// The image, once it is whole.
    const ByteBuffer &image() const { return image_; }

private:
    qsizetype offsetOf(AddressedBytes::Pieces::const_iterator piece) const {
        return piece->first - base_;
    }

    qint64 base_;
    char fill_;
    AddressedBytes::Pieces::const_iterator piece_;
    qsizetype at_ = 0;
    ByteBuffer image_;
};

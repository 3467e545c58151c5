// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "imageviews/ReadOnlyImage.h"

void ReadOnlyImage::setBytes(const ByteBuffer &bytes) {
    bytes_ = bytes;
    text_ = DisplayText(bytes);
}

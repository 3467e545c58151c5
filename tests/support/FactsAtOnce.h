// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "inspect/ImageFacts.h"

/// The facts of \a image, read in one turn.
inline ImageFacts factsOf(QByteArrayView image) {
    ImageFactsReader reader;
    reader.advance(image, image.size());
    return reader.facts();
}

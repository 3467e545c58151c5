// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "inspect/Sha256.h"

#include <algorithm>

bool Sha256Reader::advance(QByteArrayView image, qsizetype max) {
    const qsizetype start = std::min(read_, image.size());
    const QByteArrayView next = image.sliced(start, std::min(max, image.size() - start));
    hash_.addData(next);
    read_ += next.size();
    return read_ >= image.size();
}

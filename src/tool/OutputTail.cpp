// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "tool/OutputTail.h"

#include <algorithm>

// The front is cut off now and then and not at each piece, which would move all the rest.
void OutputTail::append(QStringView piece) {
    printed_ += piece.size();
    if (isReleased_)
        return;
    kept_.append(piece.last(std::min(piece.size(), largest)));
    if (kept_.size() > 2 * largest)
        kept_ = kept_.right(largest);
}

QString OutputTail::text() const {
    QString text = kept_.right(largest);
    if (text.size() < printed_ && !text.isEmpty() && text.front().isLowSurrogate())
        text.remove(0, 1);
    text.squeeze();
    return text;
}

void OutputTail::release() {
    isReleased_ = true;
    kept_ = QString();
}

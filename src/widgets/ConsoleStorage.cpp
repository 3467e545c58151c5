// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "widgets/ConsoleStorage.h"

#include <algorithm>
#include <utility>

namespace {

/// Small pieces are gathered into chunks of about this many UTF-16 units.
constexpr qsizetype chunkLength = qsizetype(64) * 1024;

} // namespace

bool ConsoleStorage::append(const QString &piece) {
    if (piece.isEmpty())
        return false;
    if (!chunks_.empty() && chunks_.back().size() + piece.size() <= chunkLength)
        chunks_.back().append(piece);
    else
        beginChunk(piece);
    length_ += piece.size();
    if (length_ <= limit_)
        return false;
    trim();
    return !std::exchange(trimmed_, true);
}

void ConsoleStorage::beginChunk(const QString &piece) {
    if (!chunks_.empty())
        chunks_.back().pack();
    chunks_.emplace_back(piece);
}

void ConsoleStorage::clear() {
    *this = ConsoleStorage(limit_);
}

QString ConsoleStorage::text() const {
    return start(length_);
}

// The first units of the text, of which there may be fewer.
QString ConsoleStorage::start(qsizetype count) const {
    QString text;
    text.reserve(std::min(count, length_));
    qsizetype skip = skipped_;
    for (auto chunk = chunks_.begin(); chunk != chunks_.end() && text.size() < count; ++chunk) {
        chunk->copyTo(text, skip, std::min(chunk->size() - skip, count - text.size()));
        skip = 0;
    }
    return text;
}

void ConsoleStorage::trim() {
    dropFront(length_ - limit_ - 1);
    dropFront(unitsToGoodStart(start(nearestBreak)));
}

// How many units stand before a good new start: that of a line, or else of a whole character. The
// first unit goes in any case.
qsizetype ConsoleStorage::unitsToGoodStart(const QString &text) {
    const qsizetype lineBreak = text.indexOf(u'\n');
    if (lineBreak >= 0)
        return lineBreak + 1;
    const bool halfCharacter = text.size() > 1 && text[1].isLowSurrogate();
    return halfCharacter ? 2 : 1;
}

void ConsoleStorage::dropFront(qsizetype count) {
    length_ -= count;
    while (count > 0 && count >= chunks_.front().size() - skipped_) {
        count -= chunks_.front().size() - skipped_;
        chunks_.pop_front();
        skipped_ = 0;
    }
    skipped_ += count;
    if (skipped_ > chunkLength) {
        chunks_.front().removeFirst(skipped_);
        skipped_ = 0;
    }
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "formats/AddressedBytes.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace {

/// Enlarged by a call of its own, which lets the system move large pieces without copying them: a
/// copy of some hundred megabytes would hold the window up.
void append(QByteArray &piece, QByteArrayView bytes) {
    if (piece.size() + bytes.size() > piece.capacity())
        piece.reserve(std::max(2 * piece.capacity(), piece.size() + bytes.size()));
    const qsizetype size = piece.size();
    piece.resize(size + bytes.size());
    std::memcpy(piece.data() + size, bytes.data(), std::size_t(bytes.size()));
}

} // namespace

bool AddressedBytes::put(qint64 address, QByteArrayView bytes) {
    // Nearly all records follow the one before.
    if (!pieces_.empty() && endOf(std::prev(pieces_.end())) == address) {
        append(std::prev(pieces_.end())->second, bytes);
        count_ += bytes.size();
        return false;
    }
    bool covered = false;
    while (!bytes.isEmpty()) {
        const Piece next = pieces_.upper_bound(address);
        const bool inside = next != pieces_.begin() && address < endOf(std::prev(next));
        qsizetype taken = bytes.size();
        if (inside) {
            const Piece piece = std::prev(next);
            taken = std::min<qsizetype>(taken, endOf(piece) - address);
            std::memcpy(piece->second.data() + (address - piece->first), bytes.data(),
                        std::size_t(taken));
            covered = true;
        } else {
            if (next != pieces_.end())
                taken = std::min<qsizetype>(taken, next->first - address);
            fillGap(address, bytes.first(taken), next);
        }
        address += taken;
        bytes = bytes.sliced(taken);
    }
    return covered;
}

void AddressedBytes::fillGap(qint64 address, QByteArrayView bytes, Piece next) {
    count_ += bytes.size();
    const bool touchesNext = next != pieces_.end() && next->first == address + bytes.size();
    const bool touchesBefore = next != pieces_.begin() && endOf(std::prev(next)) == address;
    if (touchesBefore && touchesNext)
        join(std::prev(next), bytes, next);
    else if (touchesBefore)
        append(std::prev(next)->second, bytes);
    else if (touchesNext)
        prepend(next, bytes);
    else
        pieces_.emplace_hint(next, address, bytes.toByteArray());
}

// The shorter one is copied: whatever the order in which gaps are closed, no byte moves often.
void AddressedBytes::join(Piece one, QByteArrayView between, Piece other) {
    if (one->second.size() >= other->second.size()) {
        append(one->second, between);
        append(one->second, other->second);
        pieces_.erase(other);
        return;
    }
    const QByteArray before = one->second + between.toByteArray();
    pieces_.erase(one);
    prepend(other, before);
}

void AddressedBytes::prepend(Piece piece, QByteArrayView bytes) {
    QByteArray joined = std::move(piece->second);
    joined.prepend(bytes);
    const qint64 address = piece->first - bytes.size();
    pieces_.emplace_hint(pieces_.erase(piece), address, std::move(joined));
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "image/EditedBytes.h"

#include <iterator>

void EditedBytes::note(const BlockChange &change) {
    const qint64 end = change.offset + change.replaced;
    cutAt(change.offset);
    cutAt(end);
    ends_.erase(ends_.lower_bound(change.offset), ends_.lower_bound(end));
    if (change.length != change.replaced)
        moveFrom(end, change.length - change.replaced);
    if (change.length > 0)
        add(change.written());
}

bool EditedBytes::contains(qint64 offset) const {
    const auto behind = ends_.upper_bound(offset);
    return behind != ends_.begin() && offset < std::prev(behind)->second;
}

// Makes two pieces of one that goes across \a offset.
void EditedBytes::cutAt(qint64 offset) {
    const auto behind = ends_.lower_bound(offset);
    if (behind == ends_.begin())
        return;
    const auto before = std::prev(behind);
    if (before->second <= offset)
        return;
    ends_.emplace_hint(behind, offset, before->second);
    before->second = offset;
}

void EditedBytes::moveFrom(qint64 offset, qint64 by) {
    const auto first = ends_.lower_bound(offset);
    std::map<qint64, qint64> moved;
    for (auto piece = first; piece != ends_.end(); ++piece)
        moved.emplace_hint(moved.end(), piece->first + by, piece->second + by);
    ends_.erase(first, ends_.end());
    ends_.merge(moved);
}

// Adds \a piece where there is none; pieces that touch become one.
void EditedBytes::add(ByteRange piece) {
    qint64 end = piece.end();
    if (const auto behind = ends_.find(end); behind != ends_.end()) {
        end = behind->second;
        ends_.erase(behind);
    }
    const auto next = ends_.lower_bound(piece.offset);
    if (next != ends_.begin() && std::prev(next)->second == piece.offset)
        std::prev(next)->second = end;
    else
        ends_.emplace_hint(next, piece.offset, end);
}

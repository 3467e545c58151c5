// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "grid/ByteBlock.h"

#include "base/Units.h"

#include <algorithm>

namespace {

qint64 unclamped(GridStep step, qint64 offset, int rowsInPage, qint64 count) {
    const qint64 rowStart = offset - offset % bytesInRow;
    const qint64 page = qint64(rowsInPage) * bytesInRow;
    switch (step) {
    case GridStep::Back:
        return offset - 1;
    case GridStep::On:
        return offset + 1;
    case GridStep::RowUp:
        return offset - bytesInRow;
    case GridStep::RowDown:
        return offset + bytesInRow;
    case GridStep::PageUp:
        return offset - page;
    case GridStep::PageDown:
        return offset + page;
    case GridStep::RowStart:
        return rowStart;
    case GridStep::RowEnd:
        return rowStart + bytesInRow - 1;
    case GridStep::First:
        return 0;
    case GridStep::Last:
        break;
    }
    return count - 1;
}

} // namespace

ByteRange ByteBlock::bytes() const {
    const qint64 first = std::min(anchor, lead);
    return {first, std::max(anchor, lead) - first + 1};
}

std::optional<ByteBlock> clipped(const ByteBlock &block, qint64 count) {
    if (block.bytes().offset >= count)
        return std::nullopt;
    return ByteBlock{std::min(block.anchor, count - 1), std::min(block.lead, count - 1)};
}

qint64 byteAfter(GridStep step, qint64 offset, int rowsInPage, qint64 count) {
    return std::clamp<qint64>(unclamped(step, offset, rowsInPage, count), 0, count - 1);
}

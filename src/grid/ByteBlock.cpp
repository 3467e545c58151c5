// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "grid/ByteBlock.h"

#include "grid/GridColumns.h"

#include <algorithm>

namespace {

qint64 unclamped(ByteStep step, qint64 offset, int rowsInPage, qint64 count) {
    const qint64 rowStart = offset - offset % bytesInRow;
    const qint64 page = qint64(rowsInPage) * bytesInRow;
    switch (step) {
    case ByteStep::Back:
        return offset - 1;
    case ByteStep::On:
        return offset + 1;
    case ByteStep::RowUp:
        return offset - bytesInRow;
    case ByteStep::RowDown:
        return offset + bytesInRow;
    case ByteStep::PageUp:
        return offset - page;
    case ByteStep::PageDown:
        return offset + page;
    case ByteStep::RowStart:
        return rowStart;
    case ByteStep::RowEnd:
        return rowStart + bytesInRow - 1;
    case ByteStep::First:
        return 0;
    case ByteStep::Last:
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

qint64 byteAfter(ByteStep step, qint64 offset, int rowsInPage, qint64 count) {
    return std::clamp<qint64>(unclamped(step, offset, rowsInPage, count), 0, count - 1);
}

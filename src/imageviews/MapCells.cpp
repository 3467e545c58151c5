// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "imageviews/MapCells.h"

#include <algorithm>

namespace {

/// The byte that begins \a block, or the end behind the last one.
qint64 offsetOf(const BlockMap &map, qint64 block) {
    return std::min(block * map.blockSize(), map.size());
}

/// The blocks from \a block to the one before \a next as a piece.
MapCell pieceOf(const BlockMap &map, const DifferingBlocks &differing, qint64 block, qint64 next) {
    MapCell cell;
    cell.first = offsetOf(map, block);
    cell.end = offsetOf(map, next);
    cell.looks = map.classOfBlocks(block, next);
    cell.differs = differing.anyIn(cell.first, cell.end);
    return cell;
}

} // namespace

bool DifferingBlocks::anyIn(qint64 first, qint64 end) const {
    if (blockSize <= 0 || first >= end)
        return false;
    const qint64 count = qint64(blocks.size());
    const auto from = blocks.begin() + std::min(first / blockSize, count);
    const auto to = blocks.begin() + std::min((end + blockSize - 1) / blockSize, count);
    return std::find(from, to, true) != to;
}

int heightOf(qint64 offset, qint64 size, int height) {
    return int(offset * height / size);
}

// Where more than one byte begins at a height, the first; where a byte has many heights, that one.
qint64 offsetAt(int y, qint64 size, int height) {
    const qint64 rounding = size >= height ? height - 1 : 0;
    return std::clamp<qint64>((qint64(y) * size + rounding) / height, 0, size - 1);
}

QList<MapCell> mapCells(const BlockMap &map, const DifferingBlocks &differing, int height) {
    QList<MapCell> cells;
    const qint64 blocks = map.blockCount();
    const qint64 maxCells = std::max(1, height / minCellHeight);
    const qint64 inCell = std::max<qint64>(1, (blocks + maxCells - 1) / maxCells);
    for (qint64 block = 0, next = 0; block < blocks; block = next) {
        next = std::min(block + inCell, blocks);
        if (height - heightOf(offsetOf(map, next), map.size(), height) < minCellHeight)
            next = blocks;
        MapCell cell = pieceOf(map, differing, block, next);
        cell.top = heightOf(cell.first, map.size(), height);
        cell.height = heightOf(cell.end, map.size(), height) - cell.top;
        cells.append(cell);
    }
    return cells;
}

MapCell blockAt(const BlockMap &map, const DifferingBlocks &differing, qint64 offset) {
    const qint64 block = offset / map.blockSize();
    return pieceOf(map, differing, block, block + 1);
}

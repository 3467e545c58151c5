// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "inspect/BlockMap.h"

#include <QList>

#include <optional>
#include <vector>

/// The blocks of an image, each of \a blockSize bytes, and which of them differ from another
/// image. Beyond the last one nothing is known to differ.
struct DifferingBlocks {
    qint64 blockSize = 0;
    std::vector<bool> blocks;

    /// True if one of the bytes from \a first to the one before \a end may differ.
    bool anyIn(qint64 first, qint64 end) const;
};

/// A piece of the map: some blocks that are seen as one, since each alone would be too flat.
struct MapCell {
    int top = 0; ///< in pixels of the strip
    int height = 0;
    qint64 first = 0;                ///< offset of its first byte
    qint64 end = 0;                  ///< and behind its last one
    std::optional<BlockClass> looks; ///< nothing while that is not known
    bool differs = false;
};

/// The least height of a piece, in pixels; only a strip that has less is one flatter piece.
inline constexpr int minCellHeight = 3;

/// The pieces of a strip of \a height pixels, at least 1, that stands for the image of \a map from
/// the top down; none for no bytes.
QList<MapCell> mapCells(const BlockMap &map, const DifferingBlocks &differing, int height);

/// The block with the byte at \a offset, which must exist, as a piece without a place in a strip.
MapCell blockAt(const BlockMap &map, const DifferingBlocks &differing, qint64 offset);

/// Where the byte at \a offset of \a size bytes, at least 1, begins in a strip of \a height pixels.
int heightOf(qint64 offset, qint64 size, int height);
/// The offset of the byte that such a strip shows at \a y, or the nearest to it.
qint64 offsetAt(int y, qint64 size, int height);

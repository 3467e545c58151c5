// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "files/ByteBuffer.h"

#include <optional>

/// The bytes from where a selection began to where it has come to, both among them. A single one
/// is where the cursor is, and where a selection would begin.
struct ByteBlock {
    qint64 anchor = 0; ///< where it began
    qint64 lead = 0;   ///< where it has come to

    bool isOneByte() const { return anchor == lead; }
    ByteRange bytes() const;

    friend bool operator==(const ByteBlock &, const ByteBlock &) = default;
};

/// The part of \a block among the first \a count bytes; nothing if none of it is there.
std::optional<ByteBlock> clipped(const ByteBlock &block, qint64 count);

/// A movement through the grid.
enum class GridStep { Back, On, RowUp, RowDown, PageUp, PageDown, RowStart, RowEnd, First, Last };

/// Where \a step leads from \a offset among \a count bytes, of which there must be one; the nearest
/// byte where it would lead beyond them. \a rowsInPage is what the view shows at once.
qint64 byteAfter(GridStep step, qint64 offset, int rowsInPage, qint64 count);

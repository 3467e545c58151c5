// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "grid/ByteBlock.h"

#include <QObject>

class GridView;
class QKeyEvent;
class QModelIndex;

/// Which bytes of a grid are selected. A block of them and selected rows are never there together:
/// whoever selects rows or moves the cursor ends the block. It keeps two offsets, however many
/// bytes lie between them.
class GridSelection final : public QObject {
    Q_OBJECT

public:
    /// Of \a view, which this belongs to.
    explicit GridSelection(GridView &view);

    /// True if more is selected than where the cursor is.
    bool hasBlock() const { return !block_.isOneByte(); }
    /// The bytes of the block, else the one under the cursor; none where the cursor is on none.
    ByteRange bytes() const;

    /// Selects \a bytes as far as there are any, with the cursor on the first of them and in view.
    /// Nothing changes if there are none.
    void select(ByteRange bytes);
    /// Selects all bytes and leaves the cursor where it is. False, with nothing changed, if there
    /// are none.
    bool selectAll();
    /// Has the selection reach from \a anchor to \a lead, where the cursor goes, or from and to the
    /// bytes nearest to them.
    void extend(qint64 anchor, qint64 lead);
    /// Has the next extension begin at \a offset instead of at the cursor; there must be no block.
    void beginAt(qint64 offset) { block_ = {offset, offset}; }
    /// Gives the block up for the row of the cursor.
    void end();

    /// The selection as it is, for restore().
    const ByteBlock &block() const { return block_; }
    /// Brings \a block back after the contents were shown anew, as far as its bytes still exist.
    void restore(const ByteBlock &block);

    /// The cursor is at another cell.
    void takeCursor();
    /// Other rows are selected.
    void takeRows();

    /// Follows a key if it is one of those that select. False if it has another meaning.
    bool press(const QKeyEvent &key);

signals:
    /// Other bytes may be selected.
    void changed();

private:
    qint64 byteCount() const;
    qint64 nearestByte(const QModelIndex &cell) const;
    void take(const ByteBlock &block);
    void moveCursorTo(qint64 offset);
    void showRowsOrBlock();

    GridView &view_;
    ByteBlock block_;
    bool leading_ = false; ///< the cursor and the rows follow the block at this moment
};

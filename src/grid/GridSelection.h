// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "grid/ByteBlock.h"

#include <QList>
#include <QObject>

#include <optional>

class GridView;
class QKeyEvent;
class QModelIndex;

/// Which bytes of a grid are selected. A block of them and selected rows are never there together:
/// selecting rows or moving the cursor ends the block. It keeps two offsets, however many bytes lie
/// between them.
class GridSelection final : public QObject {
    Q_OBJECT

public:
    /// The selection of \a view, which owns it.
    explicit GridSelection(GridView &view);

    /// True if more bytes are selected than the one at the cursor.
    bool hasBlock() const { return !block_.isOneByte(); }
    /// The bytes of the block. Without one they are those of the selected rows; of a single row
    /// with the cursor on a byte, or on a character that was clicked, that byte. In the order of
    /// their offsets; bytes that follow each other are one range.
    QList<ByteRange> ranges() const;
    /// ranges() if they are a single one; else empty, at offset 0.
    ByteRange bytes() const;
    /// The number of selected rows; 0 where there is a block.
    qint64 rowCount() const;

    /// Selects \a bytes as far as there are any, with the cursor on the first of them and in view.
    /// Nothing changes if there are none.
    void select(ByteRange bytes);
    /// Selects all bytes and leaves the cursor where it is. False, with nothing changed, if there
    /// are none.
    bool selectAll();
    /// Selects from \a anchor to \a lead, where the cursor goes, or the bytes nearest to these.
    void extend(qint64 anchor, qint64 lead);
    /// The pointer was at \a offset: the next extension begins there instead of at the cursor, and
    /// among characters it is that byte which is meant. There must be no block.
    void beginAt(qint64 offset);
    /// Gives the block up, if there is one, for the row of the cursor.
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
    /// Other bytes may be selected, or the same ones hold others.
    void changed();
    /// There is another block than before, or the same one of contents that are shown anew.
    void blockChanged();

private:
    qint64 byteCount() const;
    bool isPointedAt(const QModelIndex &cell) const;
    std::optional<qint64> meantByte() const;
    qint64 nearestByte() const;
    void take(const ByteBlock &block);
    void takeRowOfCursor();
    void moveCursorTo(qint64 offset);
    void showRowsOrBlock();

    GridView &view_;
    ByteBlock block_;
    std::optional<qint64>
        pointed_;          ///< the byte that was clicked; kept while the cursor stays there
    bool leading_ = false; ///< the cursor and the rows follow the block at this moment
};

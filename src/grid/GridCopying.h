// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "image/BytesAsText.h"

#include <QItemSelection>
#include <QObject>

class GridView;

/// Puts what is selected in a grid on the clipboard. Does nothing without a selection; one that is
/// too large leaves the clipboard alone and is told by a signal.
class GridCopying final : public QObject {
    Q_OBJECT

public:
    /// The most rows, or bytes, that are copied in one piece.
    static constexpr qint64 largest = 1 << 20;

    /// Copies from \a view, which owns it.
    explicit GridCopying(GridView &view);

    /// Copies the hexadecimal digits of a block, or the selected rows if there is none.
    void copy();
    /// Copies the selected rows, or those that hold the block, as lines of text: address, bytes and
    /// characters side by side, or the fields of a logic test separated by tabs.
    void copyRows();
    /// Copies the selected bytes in \a notation; rows of them need not follow each other.
    void copyBytes(ByteNotation notation);

signals:
    /// Nothing was copied: \a rows are more than `largest`.
    void rowsRefused(qint64 rows);
    /// Nothing was copied: \a bytes are more than `largest`.
    void bytesRefused(qint64 bytes);

private:
    QItemSelection rows() const;

    GridView &view_;
};

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "files/ByteBuffer.h"
#include "image/BytesAsText.h"

#include <QItemSelection>
#include <QObject>

class GridView;

/// Puts what is selected in a grid on the clipboard. Nothing happens if that is nothing; what is
/// too much leaves the clipboard alone and is told.
class GridCopying final : public QObject {
    Q_OBJECT

public:
    /// The most rows, or bytes, that are copied in one piece.
    static constexpr qint64 largest = 1 << 20;

    /// Of \a view, which this belongs to.
    explicit GridCopying(GridView &view);

    /// Copies the hexadecimal digits of a block, or the selected rows if there is none.
    void copy();
    /// Copies the selected rows, or those that hold the block, as lines of text: address, bytes and
    /// characters side by side, or the fields of a logic test separated by tabs.
    void copyRows();
    /// Copies the selected bytes, of rows that need not follow each other as well, in \a notation.
    void copyBytes(ByteNotation notation);

signals:
    /// \a rows are more than the largest number.
    void rowsRefused(qint64 rows);
    /// \a bytes are more than the largest number.
    void bytesRefused(qint64 bytes);

private:
    QItemSelection rows() const;

    GridView &view_;
};

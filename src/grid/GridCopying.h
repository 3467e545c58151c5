// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Units.h"
#include "image/BytesAsText.h"

#include <QItemSelection>
#include <QObject>

#include <functional>

class GridView;

/// Puts what is selected in a grid on the clipboard. Does nothing without a selection; one that is
/// too large leaves the clipboard alone and is told by a signal.
class GridCopying final : public QObject {
    Q_OBJECT

public:
    /// The most bytes that are copied in one piece, and the most rows: as text these are those of
    /// as many bytes.
    static constexpr qint64 largest = 256 * kibibyte;
    static constexpr qint64 maxRows = largest / bytesInRow;

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
    /// Nothing was copied: \a rows are more than maxRows.
    void rowsRefused(qint64 rows);
    /// Nothing was copied: \a bytes are more than `largest`.
    void bytesRefused(qint64 bytes);
    /// Nothing was copied: there is not enough memory for the text.
    void memoryLacked();

private:
    QItemSelection rows() const;
    void place(const std::function<QString()> &makeText);

    GridView &view_;
};

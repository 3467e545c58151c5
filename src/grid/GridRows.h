// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QAbstractItemView>

/// The rows of a view that stands for any number of them: all of one height, and one of them
/// begins at its upper edge. Heights are in pixels of the view.
struct GridRows {
    int top;        ///< the row at the upper edge
    int rowHeight;  ///< at least 1
    int viewHeight; ///< of all that is shown

    /// Number of rows that are wholly visible, at least 1.
    int inPage() const;
    /// The row at a height of the view, also above and below it; rows beyond the last one count as
    /// if they existed.
    qint64 at(int y) const;
    /// The height of a row's upper edge in the view. Rows that are too far away for an int are held
    /// to what it can tell.
    int edgeOf(qint64 row) const;
    /// How far the first row is above the view, within the same limits.
    int offset() const;
    /// The visible part of the rows from \a first to \a last, \a width pixels wide.
    QRect areaOf(qint64 first, qint64 last, int width) const;
    /// The row to have at the upper edge for showing \a row as \a hint says; it may be one that
    /// does not exist.
    int topFor(int row, QAbstractItemView::ScrollHint hint) const;
};

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "grid/GridRows.h"

#include <algorithm>
#include <limits>

namespace {

/// The farthest that a position is told from the view, with room within an int for adding what
/// a screen measures. With rows of up to 31 pixels all rows of the largest image lie closer.
constexpr qint64 farthest = std::numeric_limits<int>::max() - (1 << 20);

int clamped(qint64 position) {
    return int(std::clamp(position, -farthest, farthest));
}

} // namespace

int GridRows::inPage() const {
    return std::max(1, viewHeight / rowHeight);
}

qint64 GridRows::at(int y) const {
    const int rounding = y < 0 ? rowHeight - 1 : 0;
    return top + (qint64(y) - rounding) / rowHeight;
}

int GridRows::edgeOf(qint64 row) const {
    return clamped((row - top) * rowHeight);
}

int GridRows::offset() const {
    return clamped(qint64(top) * rowHeight);
}

QRect GridRows::areaOf(qint64 first, qint64 last, int width) const {
    const qint64 firstVisible = std::max<qint64>(first, top);
    const qint64 lastVisible = std::min(last, at(viewHeight - 1));
    if (firstVisible > lastVisible)
        return {};
    return {QPoint(0, edgeOf(firstVisible)), QPoint(width - 1, edgeOf(lastVisible + 1) - 1)};
}

int GridRows::topFor(int row, QAbstractItemView::ScrollHint hint) const {
    const int lowest = row - inPage() + 1;
    switch (hint) {
    case QAbstractItemView::EnsureVisible:
        break;
    case QAbstractItemView::PositionAtTop:
        return row;
    case QAbstractItemView::PositionAtBottom:
        return lowest;
    case QAbstractItemView::PositionAtCenter:
        return row - inPage() / 2;
    }
    // The nearest row on top with which the wanted one is in view.
    return std::clamp(top, lowest, row);
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "grid/GridCopying.h"

#include "grid/GridText.h"
#include "grid/GridView.h"
#include "widgets/ViewPlace.h"

#include <QClipboard>
#include <QGuiApplication>

#include <new>

GridCopying::GridCopying(GridView &view) : QObject(&view), view_(view) {}

QItemSelection GridCopying::rows() const {
    if (!view_.gridModel())
        return {};
    if (!view_.selection().hasBlock())
        return view_.selectionModel()->selection();
    const ByteRange block = view_.selection().bytes();
    return wholeRows(*view_.gridModel(), block.offset / bytesInRow, (block.end() - 1) / bytesInRow);
}

void GridCopying::copy() {
    if (view_.selection().hasBlock())
        copyBytes(ByteNotation::Hexadecimal);
    else
        copyRows();
}

void GridCopying::copyRows() {
    const QItemSelection selected = rows();
    const qint64 count = rowCountOf(selected);
    if (count > maxRows)
        emit rowsRefused(count);
    else if (count > 0)
        place([&] { return gridText(*view_.gridModel(), selected); });
}

// Where a text finds no memory, the clipboard keeps what it has.
void GridCopying::place(const std::function<QString()> &makeText) {
    try {
        QGuiApplication::clipboard()->setText(makeText());
    } catch (const std::bad_alloc &) {
        emit memoryLacked();
    }
}

void GridCopying::copyBytes(ByteNotation notation) {
    const QList<ByteRange> selected = view_.selection().ranges();
    qint64 count = 0;
    for (const ByteRange &range : selected)
        count += range.length;
    if (count > largest)
        return emit bytesRefused(count);
    if (count == 0)
        return;
    place([&] {
        QByteArray all;
        for (const ByteRange &range : selected)
            all += view_.gridModel()->bytes(range);
        return bytesAsText(all, notation);
    });
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "grid/GridCopying.h"

#include "base/Units.h"
#include "grid/GridText.h"
#include "grid/GridView.h"
#include "widgets/ViewPlace.h"

#include <QClipboard>
#include <QGuiApplication>

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
    if (count > largest)
        emit rowsRefused(count);
    else if (count > 0)
        QGuiApplication::clipboard()->setText(gridText(*view_.gridModel(), selected));
}

void GridCopying::copyBytes(ByteNotation notation) {
    const QList<ByteRange> selected = view_.selection().ranges();
    qint64 count = 0;
    for (const ByteRange &range : selected)
        count += range.length;
    if (count > largest)
        return emit bytesRefused(count);
    QByteArray all;
    for (const ByteRange &range : selected)
        all += view_.gridModel()->bytes(range);
    if (!all.isEmpty())
        QGuiApplication::clipboard()->setText(bytesAsText(all, notation));
}

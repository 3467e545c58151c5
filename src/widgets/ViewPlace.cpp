// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "widgets/ViewPlace.h"

#include <QAbstractItemView>
#include <QScrollBar>

#include <algorithm>

ViewPlace placeOf(const QAbstractItemView &view) {
    const QModelIndex current = view.currentIndex();
    ViewPlace place{{view.horizontalScrollBar()->value(), view.verticalScrollBar()->value()},
                    current.row(),
                    current.column(),
                    {}};
    for (const QItemSelectionRange &range : view.selectionModel()->selection())
        place.selectedRows.append({range.top(), range.bottom()});
    return place;
}

void returnTo(const ViewPlace &place, QAbstractItemView &view) {
    const QAbstractItemModel &model = *view.model();
    QItemSelection selection;
    for (const auto &[first, last] : place.selectedRows)
        selection.append(wholeRows(model, first, last));
    view.selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    view.selectionModel()->setCurrentIndex(model.index(place.row, place.column),
                                           QItemSelectionModel::NoUpdate);
    view.horizontalScrollBar()->setValue(place.scrolled.x());
    view.verticalScrollBar()->setValue(place.scrolled.y());
}

QItemSelection wholeRows(const QAbstractItemModel &model, qint64 first, qint64 last) {
    const qint64 top = std::max<qint64>(first, 0);
    const qint64 bottom = std::min<qint64>(last, model.rowCount() - 1);
    if (top > bottom)
        return {};
    return {model.index(int(top), 0), model.index(int(bottom), model.columnCount() - 1)};
}

qint64 rowCountOf(const QItemSelection &selection) {
    qint64 count = 0;
    for (const QItemSelectionRange &range : selection)
        count += range.height();
    return count;
}

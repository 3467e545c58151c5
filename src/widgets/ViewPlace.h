// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QItemSelection>
#include <QList>
#include <QPair>
#include <QPoint>

class QAbstractItemView;

/// What a view loses with a reset of its model: how far it is scrolled, its cursor and its
/// selected rows, as pairs of first and last.
struct ViewPlace {
    QPoint scrolled;
    int row = -1;
    int column = -1;
    QList<QPair<int, int>> selectedRows;
};

ViewPlace placeOf(const QAbstractItemView &view);
/// Brings \a view back to \a place, as far as its rows still exist.
void returnTo(const ViewPlace &place, QAbstractItemView &view);

/// All cells of the rows from \a first to \a last that \a model has.
QItemSelection wholeRows(const QAbstractItemModel &model, qint64 first, qint64 last);
/// The number of rows of \a selection, which holds whole ones.
qint64 rowCountOf(const QItemSelection &selection);

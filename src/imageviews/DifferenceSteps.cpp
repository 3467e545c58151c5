// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "imageviews/DifferenceSteps.h"

#include "files/ByteBuffer.h"
#include "grid/GridColumns.h"
#include "grid/GridView.h"
#include "imageviews/ImageComparison.h"

#include <algorithm>
#include <utility>

DifferenceSteps::DifferenceSteps(GridView &grid, const ImageComparison &comparison,
                                 std::function<void(const QString &sentence)> say, QObject *parent)
    : QObject(parent), grid_(grid), comparison_(comparison), say_(std::move(say)) {
    next_.setText(tr("Ne&xt difference"));
    next_.setShortcut(Qt::ALT | Qt::Key_Down);
    previous_.setText(tr("Previous &difference"));
    previous_.setShortcut(Qt::ALT | Qt::Key_Up);
    // Until the images have been compared, a step may have to look through both: a held key would
    // queue such looks.
    next_.setAutoRepeat(false);
    previous_.setAutoRepeat(false);
    connect(&next_, &QAction::triggered, this, [this] {
        step(&ImageComparison::nextFrom, -1, tr("From the end on to the first difference."));
    });
    connect(&previous_, &QAction::triggered, this, [this] {
        step(&ImageComparison::previousFrom, largestImage,
             tr("From the beginning on to the last difference."));
    });
}

void DifferenceSteps::step(Find find, qint64 beyond, const QString &wrapped) {
    std::optional<qint64> place = (comparison_.*find)(cursor());
    const bool wraps = !place;
    if (wraps)
        place = (comparison_.*find)(beyond);
    if (!place || !comparison_.isShown()) {
        say_(whyNone());
        return;
    }
    grid_.showAddress(*place);
    if (wraps)
        say_(wrapped);
}

QString DifferenceSteps::whyNone() const {
    if (!comparison_.isShown())
        return tr("There are no differences among the logic test results.");
    if (!comparison_.hasBoth())
        return tr("There is nothing to compare: it takes data read from a chip and data to burn.");
    return tr("The data read from the chip and the data to burn do not differ.");
}

// The offset of the byte under the cursor; of the first in its row beside the bytes, and -1
// without a cursor.
qint64 DifferenceSteps::cursor() const {
    const QModelIndex cell = grid_.currentIndex();
    if (!cell.isValid())
        return -1;
    const int column = std::clamp(cell.column(), firstByteColumn, lastByteColumn);
    return qint64(byteIndex(cell.row(), column));
}

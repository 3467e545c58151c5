// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "grid/GridText.h"

#include "base/VisibleText.h"
#include "grid/GridColumns.h"
#include "grid/GridModel.h"
#include "image/RowText.h"

#include <QPair>

#include <algorithm>

namespace {

QString dumpLine(const GridModel &model, int row) {
    QStringList bytes;
    for (int column = firstByteColumn; column <= lastByteColumn; ++column)
        bytes.append(model.cell(row, column).text);
    return QStringList{model.cell(row, addressColumn).text, bytes.join(rowText::blank),
                       model.cell(row, charactersColumn).text}
        .join(rowText::gap);
}

QString fieldsLine(const GridModel &model, int row) {
    QStringList fields;
    for (int column = 0; column < gridColumns; ++column)
        fields.append(onOneLine(model.cell(row, column).text));
    while (!fields.isEmpty() && fields.last().isEmpty())
        fields.removeLast();
    return fields.join(u'\t');
}

} // namespace

QString gridText(const GridModel &model, const QItemSelection &selection) {
    QList<QPair<int, int>> ranges;
    for (const QItemSelectionRange &range : selection)
        ranges.append({range.top(), range.bottom()});
    std::sort(ranges.begin(), ranges.end());

    QString text;
    for (const auto &[first, last] : ranges)
        for (int row = first; row <= last; ++row)
            text += (model.heading() == GridHeading::Bytes ? onOneLine(dumpLine(model, row))
                                                           : fieldsLine(model, row)) +
                    u'\n';
    return text;
}

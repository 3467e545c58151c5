// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "grid/GridHeader.h"

#include "base/Digits.h"
#include "grid/CharacterPlaces.h"
#include "grid/GridColumns.h"

#include <QFontMetrics>
#include <QtMath>

#include <algorithm>

namespace {

/// Digits that the address column has room for: those of the largest image.
constexpr int addressDigits = 8;

int charactersIn(int column) {
    if (column == addressColumn)
        return addressDigits;
    return column == charactersColumn ? bytesInRow : hexDigitsInByte;
}

} // namespace

GridHeader::GridHeader(QWidget *parent) : QHeaderView(Qt::Horizontal, parent) {
    setSectionsClickable(false);
    setHighlightSections(false);
    setSectionResizeMode(Interactive);
    connect(this, &QHeaderView::sectionHandleDoubleClicked, this,
            [this](int column) { resizeSection(column, neededWidth(column)); });
}

void GridHeader::setCellFont(const QFont &font) {
    cellFont_ = font;
    setMinimumSectionSize(QFontMetrics(font).horizontalAdvance(u'0') * hexDigitsInByte);
    resetWidths();
}

void GridHeader::setModel(QAbstractItemModel *model) {
    QHeaderView::setModel(model);
    resetWidths();
}

int GridHeader::neededWidth(int column) const {
    const double characterWidth = QFontMetricsF(cellFont_).horizontalAdvance(u'0');
    return qCeil(characterWidth * (charactersIn(column) + 2 * CharacterPlaces::paddingShare));
}

void GridHeader::resetWidths() {
    for (int column = 0; column < count(); ++column)
        resizeSection(column, neededWidth(column));
}

void GridHeader::fill(int width) {
    if (count() > 0)
        resizeSection(charactersColumn, std::max(neededWidth(charactersColumn),
                                                 width - sectionPosition(charactersColumn)));
}

int GridHeader::offsetFor(int column) const {
    const int left = sectionPosition(column);
    const int right = left + sectionSize(column);
    // The left end wins where the view is narrower than the column.
    return std::min(std::max(offset(), right - width()), left);
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "grid/CharacterPlaces.h"

#include "base/Units.h"

#include <QFontMetricsF>
#include <QtMath>

#include <algorithm>

CharacterPlaces::CharacterPlaces(const QFont &font)
    : width_(QFontMetricsF(font).horizontalAdvance(u'0')),
      padding_(qRound(width_ * paddingShare)) {}

QRect CharacterPlaces::rectOf(int first, int count, const QRect &cell) const {
    const int left = cell.left() + padding_ + qRound(first * width_);
    const int right = cell.left() + padding_ + qRound((first + count) * width_);
    return {left, cell.top(), right - left, cell.height()};
}

int CharacterPlaces::placeAt(int x) const {
    return std::clamp(qFloor((x - padding_) / width_), 0, bytesInRow - 1);
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QRect>

class QFont;

/// Where the characters of a row stand within their cell: one beside the other, each as wide as a
/// digit. Measures are in pixels.
class CharacterPlaces {
public:
    /// What cells keep free on each side, in characters.
    static constexpr double paddingShare = 0.75;

    explicit CharacterPlaces(const QFont &font);

    /// Of one character.
    double width() const { return width_; }
    /// What cells keep free on both sides.
    int padding() const { return padding_; }

    /// The part of \a cell in which \a count characters stand from the one at \a first on.
    QRect rectOf(int first, int count, const QRect &cell) const;
    /// The number of the character, from 0 on, nearest to \a x pixels right of the cell's edge.
    int placeAt(int x) const;

private:
    double width_;
    int padding_;
};

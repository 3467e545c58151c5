// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "language/PinLevels.h"

#include <QMap>
#include <QSize>
#include <QString>

class QFont;
class QPainter;
class QPalette;
class QRect;

/// What a picture of a chip shows.
struct PackagePicture {
    /// What was tested, and which vectors the pins are shown in.
    QString caption;
    /// In their order, an even number.
    QList<TestedPin> pins;
    /// In how many of how many runs which pin failed, by its number; nothing for a single test.
    QMap<int, int> failedRuns = {};
    int runs = 0;
    /// How many there will be; for so many there is room.
    int plannedRuns = 0;
};

/// The room that a package of \a pins pins takes with \a font, in pixels; its caption may be wider.
/// With \a plannedRuns there is room for counts up to that many beside the pins.
QSize packageSize(qsizetype pins, const QFont &font, int plannedRuns = 0);

/// Draws \a picture as it is seen from above into \a place, with the font of \a painter and the
/// colours of \a palette: pins are counted down on the left, from the one that is marked, and up on
/// the right. A pin that failed is red and has a cross, a good one is green and has a tick, one
/// that was not checked is hollow. Beside its sign stands in how many runs a pin failed, as "2/10".
/// What does not fit is cut, and a long caption shortened.
void drawPackage(QPainter &painter, const QRect &place, const PackagePicture &picture,
                 const QPalette &palette);

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "imageviews/MapCells.h"

class QPainter;
class QPalette;
class QRect;

// How the pieces of the map look. Each class has a texture of its own, of an ink that can be read
// on the ground, and the more of it the more the bytes say: so they differ in texture, shade and
// colour.

/// Fills \a place with what \a cell looks like; nothing is drawn while that is not known. Where it
/// differs, a bar stands along the edge that is read first: the right one if \a mirrored.
void paintCell(QPainter &painter, const QRect &place, const MapCell &cell, const QPalette &palette,
               bool mirrored);

/// Draws the frame around the part that is in view along the inside of \a place. It is seen on
/// every cell and beside them.
void paintViewFrame(QPainter &painter, const QRect &place, const QPalette &palette);
/// The thickness of that frame, in pixels.
int viewFrameWidth();

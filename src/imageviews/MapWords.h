// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "imageviews/MapCells.h"

#include <QString>

// What is said of the map, translated.

/// That \a offset of \a size bytes is in view, and what \a cell, which it is in, looks like.
QString positionWords(qint64 offset, qint64 size, const MapCell &cell);

/// Which bytes \a cell stands for and what they look like.
QString cellWords(const MapCell &cell);

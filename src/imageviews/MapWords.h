// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "imageviews/MapCells.h"

#include <QString>

#include <optional>

// What is said of the map, translated.

/// What a part looks like; empty while that is not known.
QString lookWords(std::optional<BlockClass> looks, bool differs);

/// That \a offset of \a size bytes is in view, and what \a cell, which it is in, looks like.
QString positionWords(qint64 offset, qint64 size, const MapCell &cell);

/// Which bytes \a cell stands for and what they look like.
QString cellWords(const MapCell &cell);

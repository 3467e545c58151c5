// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "orders/Arrangement.h"

#include <QByteArrayView>

// The single moves of which an arrangement is made.

/// Turns each group of \a group bytes (1, 2 or 4) round; \a size is a multiple of that.
void swapBytes(char *bytes, qsizetype size, int group);

/// Turns the bits of each of \a size bytes round.
void reverseBits(char *bytes, qsizetype size);

/// Copies what \a part, counted from 0, has of \a whole to \a to; the size of \a whole is a
/// multiple of the word that \a lanes make.
void takePart(char *to, QByteArrayView whole, const Lanes &lanes, int part);

/// The reverse: copies \a from, the bytes of \a part, to where they belong in the whole at
/// \a whole.
void putPart(char *whole, QByteArrayView from, const Lanes &lanes, int part);

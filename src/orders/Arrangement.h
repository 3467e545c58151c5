// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"

#include <QByteArrayView>
#include <QList>

/// How a system of more than 8 bits spreads its bytes over chips: unit by unit in turn.
struct Lanes {
    /// The most chips side by side: four of 8 bits make a word of 32.
    static constexpr int maxParts = 4;

    int parts = 1; ///< 1, 2 or 4
    int unit = 1;  ///< bytes that follow each other in one part, 1 or 2

    /// How many bytes it takes until it is the first part's turn again.
    int word() const { return parts == 1 ? 1 : parts * unit; }

    friend bool operator==(const Lanes &, const Lanes &) = default;
};

/// What is done with bytes: parts are joined to a whole, the order in that is changed, it is split
/// into parts, and each of these is repeated.
struct Arrangement {
    Lanes joined = {};         ///< what comes in
    int swapped = 1;           ///< in groups of so many bytes (1, 2, 4) the first becomes the last
    bool bitsReversed = false; ///< in each byte
    Lanes split = {};          ///< what goes out
    qint64 filled = 0;         ///< bytes that each part has then; 0 for no more than there are

    /// True if what goes out is what came in.
    bool changesNothing() const { return *this == Arrangement(); }

    friend bool operator==(const Arrangement &, const Arrangement &) = default;
};

/// Why bytes cannot be arranged as they should be.
enum class NoArrangement {
    PartsMissing,     ///< there are more or fewer parts than are to be joined
    DifferentLengths, ///< of the parts that are to be joined
    NoWholeUnits,     ///< a part ends in the middle of a unit
    NoWholeGroups,    ///< the last bytes to swap are fewer than a group has
    NoEqualParts,     ///< the bytes cannot be split into parts of the same length
    NoWholeRepeats,   ///< a part cannot be repeated so that the last time is a whole one
    TooLarge          ///< more than largestImage, in one part or together
};

/// How long each of \a parts is, in bytes.
QList<qint64> lengthsOf(const QList<QByteArrayView> &parts);

/// How long parts of \a lengths are together, in bytes.
qint64 wholeLength(const QList<qint64> &lengths);

/// How long each part that goes out is before it is repeated, in bytes, if parts of \a lengths come
/// in. Only for lengths that can be arranged.
qint64 splitLength(const Arrangement &arrangement, const QList<qint64> &lengths);

/// Whether parts of \a lengths, in bytes, can be arranged, and if not, why.
Result<void, NoArrangement> canBeArranged(const Arrangement &arrangement,
                                          const QList<qint64> &lengths);

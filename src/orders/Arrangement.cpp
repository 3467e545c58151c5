// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "orders/Arrangement.h"

#include "files/ByteBuffer.h"

#include <algorithm>
#include <numeric>

namespace {

Result<void, NoArrangement> canBeJoined(const Lanes &lanes, const QList<qint64> &lengths) {
    if (lengths.size() != lanes.parts)
        return NoArrangement::PartsMissing;
    const auto differs = [first = lengths.first()](qint64 length) { return length != first; };
    if (std::any_of(lengths.begin(), lengths.end(), differs))
        return NoArrangement::DifferentLengths;
    if (lanes.parts > 1 && lengths.first() % lanes.unit != 0)
        return NoArrangement::NoWholeUnits;
    return {};
}

Result<void, NoArrangement> canBeRepeated(qint64 length, qint64 filled) {
    const bool isMultiple = length > 0 && filled > length && filled % length == 0;
    if (filled == 0 || filled == length || isMultiple)
        return {};
    return NoArrangement::NoWholeRepeats;
}

} // namespace

QList<qint64> lengthsOf(const QList<QByteArrayView> &parts) {
    QList<qint64> lengths;
    for (const QByteArrayView part : parts)
        lengths.append(part.size());
    return lengths;
}

qint64 wholeLength(const QList<qint64> &lengths) {
    return std::accumulate(lengths.begin(), lengths.end(), qint64(0));
}

qint64 splitLength(const Arrangement &arrangement, const QList<qint64> &lengths) {
    return wholeLength(lengths) / arrangement.split.parts;
}

Result<void, NoArrangement> canBeArranged(const Arrangement &arrangement,
                                          const QList<qint64> &lengths) {
    if (const auto joined = canBeJoined(arrangement.joined, lengths); !joined)
        return joined;
    const qint64 length = wholeLength(lengths);
    if (length % arrangement.swapped != 0)
        return NoArrangement::NoWholeGroups;
    if (length % arrangement.split.word() != 0)
        return NoArrangement::NoEqualParts;
    if (const auto repeated = canBeRepeated(splitLength(arrangement, lengths), arrangement.filled);
        !repeated)
        return repeated;
    if (std::max(length, arrangement.filled * arrangement.split.parts) > largestImage)
        return NoArrangement::TooLarge;
    return {};
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "formats/IntelHexDecoding.h"

#include "formats/RecordTroubles.h"

#include <algorithm>
#include <optional>

namespace {

/// Count, address, type and checksum.
constexpr qsizetype typeField = 3;
constexpr qsizetype dataField = 4;
constexpr qsizetype withoutData = 5;
constexpr qint64 segmentSize = qint64(1) << 16;

enum Type : quint32 {
    Data,
    EndOfFile,
    SegmentBase,
    SegmentStart,
    LinearBase,
    LinearStart,
};

/// How many data bytes a record of \a type has; nothing if it may have any number.
std::optional<qsizetype> lengthOf(quint32 type) {
    switch (type) {
    case EndOfFile:
        return 0;
    case SegmentBase:
    case LinearBase:
        return 2;
    case SegmentStart:
    case LinearStart:
        return 4;
    default:
        return std::nullopt;
    }
}

std::optional<TroubleKind> troubleOf(RecordBytes bytes) {
    if (bytes.size() < withoutData || bytes.size() != withoutData + qsizetype(bytes[0]))
        return TroubleKind::BadCount;
    const quint32 type = bytes[typeField];
    if (type > LinearStart)
        return TroubleKind::UnknownType;
    if (lengthOf(type).value_or(bytes[0]) != qsizetype(bytes[0]))
        return TroubleKind::BadCount;
    return bytes.sum() == 0 ? std::nullopt : std::optional(TroubleKind::BadChecksum);
}

} // namespace

bool IntelHexDecoding::take(RecordBytes bytes, qint64 line, DecodedRecords &decoded) {
    if (const auto trouble = troubleOf(bytes)) {
        decoded.troubles.add(*trouble, line);
        if (losesBytes(*trouble))
            return false;
    }
    switch (bytes[typeField]) {
    case Data:
        takeData(bytes, line, decoded);
        break;
    case EndOfFile:
        return true;
    case SegmentBase:
    case LinearBase:
        segmented_ = bytes[typeField] == SegmentBase;
        base_ = qint64(bytes.number(dataField, 2)) << (segmented_ ? 4 : 16);
        break;
    case SegmentStart:
        decoded.entry = (bytes.number(dataField, 2) << 4) + bytes.number(dataField + 2, 2);
        break;
    case LinearStart:
        decoded.entry = bytes.number(dataField, 4);
        break;
    }
    return false;
}

// Within a segment, addresses go round; linear ones go on.
void IntelHexDecoding::takeData(RecordBytes bytes, qint64 line, DecodedRecords &decoded) {
    const qint64 offset = bytes.number(1, 2);
    const QByteArrayView data = bytes.sliced(dataField, qsizetype(bytes[0]));
    const qsizetype straight =
        segmented_ ? std::min<qsizetype>(data.size(), segmentSize - offset) : data.size();
    if (base_ + offset + straight > endOfAddresses)
        return decoded.troubles.add(TroubleKind::Past4GiB, line);
    ++decoded.dataRecords;
    const bool covers = decoded.bytes.put(base_ + offset, data.first(straight));
    const bool coversRound = decoded.bytes.put(base_, data.sliced(straight));
    if (covers || coversRound)
        decoded.troubles.add(TroubleKind::Overlap, line);
}

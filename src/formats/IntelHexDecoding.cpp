// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "formats/IntelHexDecoding.h"

#include "base/Result.h"
#include "formats/RecordText.h"
#include "formats/RecordTroubles.h"

#include <algorithm>
#include <optional>

namespace {

/// Count, address, type and checksum.
constexpr qsizetype typeField = 3;
constexpr qsizetype dataField = 4;
constexpr qsizetype withoutData = 5;
constexpr qint64 segmentSize = qint64(1) << 16;

/// How many data bytes a record of \a type has; nothing if it may have any number.
std::optional<qsizetype> lengthOf(quint32 type) {
    switch (type) {
    case intelHex::LastRecord:
        return 0;
    case intelHex::SegmentBase:
    case intelHex::LinearBase:
        return 2;
    case intelHex::SegmentStart:
    case intelHex::LinearStart:
        return 4;
    default:
        return std::nullopt;
    }
}

Result<void, TroubleKind> checked(RecordBytes bytes) {
    if (bytes.size() < withoutData || bytes.size() != withoutData + qsizetype(bytes[0]))
        return TroubleKind::BadCount;
    const quint32 type = bytes[typeField];
    if (type > intelHex::LinearStart)
        return TroubleKind::UnknownType;
    if (lengthOf(type).value_or(bytes[0]) != qsizetype(bytes[0]))
        return TroubleKind::BadCount;
    if (bytes.sum() != 0)
        return TroubleKind::BadChecksum;
    return {};
}

} // namespace

bool IntelHexDecoding::take(RecordBytes bytes, qint64 line, DecodedRecords &decoded) {
    const auto check = checked(bytes);
    if (const TroubleKind *trouble = check.failure()) {
        decoded.troubles.add(*trouble, line);
        if (losesBytes(*trouble))
            return false;
    }
    switch (bytes[typeField]) {
    case intelHex::Data:
        takeData(bytes, line, decoded);
        break;
    case intelHex::LastRecord:
        return true;
    case intelHex::SegmentBase:
    case intelHex::LinearBase:
        segmented_ = bytes[typeField] == intelHex::SegmentBase;
        base_ = qint64(bytes.number(dataField, 2)) << (segmented_ ? 4 : 16);
        break;
    case intelHex::SegmentStart:
        decoded.entry = (bytes.number(dataField, 2) << 4) + bytes.number(dataField + 2, 2);
        break;
    case intelHex::LinearStart:
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

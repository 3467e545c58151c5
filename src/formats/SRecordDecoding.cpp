// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "formats/SRecordDecoding.h"

#include "base/Result.h"
#include "base/Units.h"
#include "formats/RecordTroubles.h"

#include <optional>

namespace {

/// What a type of record is for.
enum class Role { Header, Data, Count, End };

struct Shape {
    Role role;
    qsizetype addressLength; ///< in bytes
};

std::optional<Shape> shapeOf(char type) {
    switch (type) {
    case '0':
        return Shape{Role::Header, 2};
    case '1':
    case '2':
    case '3':
        return Shape{Role::Data, type - '1' + 2};
    case '5':
    case '6':
        return Shape{Role::Count, type - '5' + 2};
    case '7':
    case '8':
    case '9':
        return Shape{Role::End, '9' - type + 2};
    default: // S4 is reserved
        return std::nullopt;
    }
}

Result<void, TroubleKind> checked(RecordBytes bytes, const std::optional<Shape> &shape) {
    if (bytes.size() < 1 || bytes.size() != 1 + qsizetype(bytes[0]))
        return TroubleKind::BadCount;
    if (!shape)
        return TroubleKind::UnknownType;
    const qsizetype shortest = 1 + shape->addressLength + 1;
    const bool hasData = shape->role == Role::Header || shape->role == Role::Data;
    if (bytes.size() < shortest || (!hasData && bytes.size() > shortest))
        return TroubleKind::BadCount;
    if (bytes.sum() != maxByte)
        return TroubleKind::BadChecksum;
    return {};
}

void takeData(quint32 address, QByteArrayView data, qint64 line, DecodedRecords &decoded) {
    if (qint64(address) + data.size() > endOfAddresses)
        return decoded.troubles.add(TroubleKind::Past4GiB, line);
    ++decoded.dataRecords;
    if (decoded.bytes.put(address, data))
        decoded.troubles.add(TroubleKind::Overlap, line);
}

} // namespace

bool SRecordDecoding::take(char type, RecordBytes bytes, qint64 line, DecodedRecords &decoded) {
    const std::optional<Shape> shape = shapeOf(type);
    const auto check = checked(bytes, shape);
    if (const TroubleKind *trouble = check.failure()) {
        decoded.troubles.add(*trouble, line);
        if (losesBytes(*trouble))
            return false;
    }
    const quint32 address = bytes.number(1, shape->addressLength);
    const qsizetype dataAt = 1 + shape->addressLength;
    const QByteArrayView data = bytes.sliced(dataAt, bytes.size() - dataAt - 1);
    switch (shape->role) {
    case Role::Header:
        decoded.header = data.toByteArray();
        break;
    case Role::Data:
        takeData(address, data, line, decoded);
        break;
    case Role::Count:
        if (address != decoded.dataRecords)
            decoded.troubles.add(TroubleKind::CountDisagrees, line);
        break;
    case Role::End:
        decoded.entry = address;
        return true;
    }
    return false;
}

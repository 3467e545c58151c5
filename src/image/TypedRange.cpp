// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "image/TypedRange.h"

#include "image/TypedAddress.h"

namespace {

using Outcome = Result<ByteRange, RangeTrouble>;

Outcome upTo(const QString &last, quint64 first, quint64 cursor, quint64 count) {
    const auto typed = typedAddress(last);
    if (!typed)
        return RangeTrouble::LastUnread;
    const auto offset = typed->offset(cursor);
    if (!offset || *offset >= count)
        return RangeTrouble::LastBeyond;
    if (*offset < first)
        return RangeTrouble::LastBeforeFirst;
    return ByteRange{qint64(first), qint64(*offset - first + 1)};
}

Outcome soMany(const QString &length, quint64 first, quint64 count) {
    const auto typed = typedAddress(length);
    if (!typed || typed->from != TypedAddress::From::Start)
        return RangeTrouble::LengthUnread;
    if (typed->distance == 0)
        return RangeTrouble::LengthZero;
    if (typed->distance > count - first)
        return RangeTrouble::LengthBeyond;
    return ByteRange{qint64(first), qint64(typed->distance)};
}

} // namespace

Result<ByteRange, RangeTrouble> bytesOf(const TypedRange &typed, qint64 cursor, qint64 count) {
    if (count == 0)
        return RangeTrouble::NoBytes;
    const auto first = typedAddress(typed.first);
    if (!first)
        return RangeTrouble::FirstUnread;
    const auto offset = first->offset(quint64(cursor));
    if (!offset || *offset >= quint64(count))
        return RangeTrouble::FirstBeyond;
    return typed.until == TypedRange::Until::Address
               ? upTo(typed.end, *offset, quint64(cursor), quint64(count))
               : soMany(typed.end, *offset, quint64(count));
}

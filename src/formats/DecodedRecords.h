// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Units.h"
#include "formats/AddressedBytes.h"
#include "formats/RecordTroubles.h"

#include <optional>

/// What a text of records stands for.
struct DecodedRecords {
    AddressedBytes bytes;
    std::optional<quint32> entry; ///< where a program begins, if the text says so
    QByteArray header;            ///< of S-records, as it stands there
    qint64 dataRecords = 0;       ///< those that could be read
    RecordTroubles troubles;
};

/// A record's digits as bytes, count and checksum included.
class RecordBytes {
public:
    explicit RecordBytes(QByteArrayView bytes) : bytes_(bytes) {}

    qsizetype size() const { return bytes_.size(); }
    quint32 operator[](qsizetype at) const { return quint8(bytes_[at]); }
    /// The \a length bytes at \a at, at most four, the highest first.
    quint32 number(qsizetype at, qsizetype length) const {
        quint32 value = 0;
        for (qsizetype i = at; i < at + length; ++i)
            value = value << 8 | (*this)[i];
        return value;
    }
    QByteArrayView sliced(qsizetype at, qsizetype length) const {
        return bytes_.sliced(at, length);
    }
    /// The sum of all bytes, in eight bits.
    quint32 sum() const {
        quint32 sum = 0;
        for (const char byte : bytes_)
            sum += quint8(byte);
        return sum & maxByte;
    }

private:
    QByteArrayView bytes_;
};

/// The address behind the last one of 32 bits.
inline constexpr qint64 endOfAddresses = qint64(1) << 32;

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Units.h"
#include "formats/RecordFormat.h"

#include <QByteArray>
#include <QByteArrayView>

#include <utility>

/// How bytes are to be written as text.
struct RecordLayout {
    RecordFormat format = RecordFormat::IntelHex;
    /// Data bytes in a record, from 1 to maxRecordLength().
    int recordLength = 16;
    /// Of the first byte. That of the last one must not need more than 32 bits.
    qint64 address = 0;
    /// What the S0 record of S-records holds, at most 252 bytes.
    QByteArray header = {};
};

/// How many data bytes a record may have where \a length bytes are written from \a address on.
int maxRecordLength(RecordFormat format, qint64 address, qint64 length);
/// True if no address of \a length bytes from \a address on needs more than 32 bits.
bool fitsAddresses(qint64 address, qint64 length);

/// A length that the text of \a length bytes does not exceed, and not much above its own.
qint64 maxTextLength(const RecordLayout &layout, qint64 length);
/// The longest text that should be written: 3 GiB, enough for the largest image in usual records.
/// It is made in memory.
inline constexpr qint64 largestRecordText = 3 * gibibyte;

/// Writes bytes as text of records in as many turns as the caller likes. Lines end with LF, digits
/// are capitals. Intel HEX gets records of the upper half of the address where they are needed;
/// S-records get the shortest addresses that do for all, a count where one has room, and an end
/// that names the entry 0.
class RecordWriter {
public:
    /// Writes \a length bytes.
    RecordWriter(const RecordLayout &layout, qsizetype length);

    /// Writes on, at most \a max of \a bytes, which must be the same at each call; a record that
    /// was begun is completed. True once all have been written.
    bool advance(QByteArrayView bytes, qsizetype max);

    /// What has been written since it was taken last.
    QByteArray takeText() { return std::exchange(text_, {}); }

private:
    void begin();
    void writeRecord(QByteArrayView data);
    void end();
    qsizetype nextLength() const;

    RecordLayout layout_;
    qsizetype length_;
    int addressLength_; ///< in S-records, in bytes
    qint64 upper_ = 0;  ///< half of the address, in Intel HEX
    qsizetype at_ = 0;
    bool begun_ = false;
    bool ended_ = false;
    qint64 records_ = 0;
    QByteArray text_;
};

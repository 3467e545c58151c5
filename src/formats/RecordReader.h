// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "formats/DecodedRecords.h"
#include "formats/IntelHexDecoding.h"
#include "formats/RecordFormat.h"
#include "formats/RecordTroubles.h"
#include "formats/SRecordDecoding.h"

#include <cstddef>

/// Reads a text of records in as many turns as the caller likes. Lines end with CR, LF or both;
/// digits are of either case; blanks around a line, empty lines and a byte-order mark at the
/// beginning are passed over. A record that cannot be read is left out, one whose checksum does not
/// fit is taken: the troubles tell of both. It reads no further than to the end record, but looks
/// whether something stands behind it.
class RecordReader {
public:
    /// The most separate pieces of bytes that are kept.
    static constexpr std::size_t maxPieces = std::size_t(1) << 20;

    explicit RecordReader(RecordFormat format) : format_(format) {}

    /// Reads on through \a text, which must be the same at each call, about \a max bytes of it.
    /// True once all has been read.
    bool advance(QByteArrayView text, qsizetype max);

    RecordFormat format() const { return format_; }
    /// How many bytes of the text have been read.
    qsizetype position() const { return at_; }
    /// What came of them.
    const DecodedRecords &decoded() const { return decoded_; }

private:
    enum class State { Lines, WithinLongLine, BehindEnd, Done };

    void takeLine(QByteArrayView text);
    void takeRecord(QByteArrayView line);
    void skipLongLine(QByteArrayView text, qsizetype stop);
    void lookBehindEnd(QByteArrayView text, qsizetype stop);
    void passLineEnd(QByteArrayView text);
    void finish();
    void complain(TroubleKind kind) { decoded_.troubles.add(kind, line_); }

    RecordFormat format_;
    State state_ = State::Lines;
    qsizetype at_ = 0;
    qint64 line_ = 1;       ///< the one at the position
    qint64 lastRecord_ = 1; ///< the last line with anything in it
    IntelHexDecoding intelHex_;
    SRecordDecoding sRecord_;
    DecodedRecords decoded_;
};

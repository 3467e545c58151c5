// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "files/ByteBuffer.h"

#include <QByteArray>
#include <QString>

#include <optional>

/// An entry that was carried out.
struct CellEdit {
    /// Offset of the first byte written.
    qint64 offset = 0;
    /// Number of bytes written; 0 for a quoted text that holds nothing but quotes.
    qsizetype bytesWritten = 0;
    /// Number of bytes by which the buffer became longer.
    qsizetype grewBy = 0;
    /// The bytes that were overwritten: as many as were written, less those that were appended.
    QByteArray replaced;
    /// The entry was no value from 1 to FF: the byte was written back as it was, and the user is
    /// to hear the beep.
    bool rejected = false;

    ByteRange written() const { return {offset, bytesWritten}; }

    friend bool operator==(const CellEdit &, const CellEdit &) = default;
};

/// Nothing when the entry was abandoned: the buffer is untouched, nothing needs to be saved or
/// redisplayed, and nobody is told.
using CellEditOutcome = std::optional<CellEdit>;

/// Carries out the commit of \a entry in a cell of the data to burn: a hexadecimal byte value, or
/// a text behind a single or double quote that is written byte for byte from the cell onward (one
/// byte for each UTF-16 unit, '?' for a unit that ISO 8859-1 lacks) and may lengthen the buffer.
///
/// \a strDataLength is the length of the displayed text in UTF-16 units: cells from there on show
/// no byte and take no entry. \a columnNumber is the integer value of the column's identifier;
/// the characters column takes no entry, and the address column stands for the last byte of the
/// row above. Throws std::bad_alloc, with the buffer untouched, where there is no memory to change
/// it in.
CellEditOutcome commitEntry(QByteArray &output_data, qsizetype strDataLength, const QString &entry,
                            int columnNumber, qint64 row);

/// The translated sentence about an \a entry that was rejected.
QString rejectionRemark(const QString &entry);
/// The translated sentence about an edit for which there was no memory.
QString noMemoryForEditRemark();

/// The hexadecimal digit for \a value; empty from 16 on.
QString hexDigitFor(quint16 value);

/// The digits of \a value: that of its upper part (value / 16), then that of \a value less the
/// upper part, each empty where there is no such digit. So 0 to 15 give "00" to "0F", 16 gives
/// "1F" and 17 to 255 their upper digit alone.
QString hexValue(quint64 value);

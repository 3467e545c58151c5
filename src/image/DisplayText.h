// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "files/ByteBuffer.h"

#include <QByteArrayView>
#include <QString>

#include <vector>

/// A buffer decoded as text, for the grid's character column and as the bound of its byte cells:
/// UTF-8 if the whole buffer is valid UTF-8, else ISO 8859-1 (one character a byte). A leading
/// byte-order mark is a character like any other. Where there is no memory for the numbers that
/// UTF-8 needs, it is one character a byte as well, until it is decoded anew.
///
/// Nothing is copied: the text keeps a reference to the buffer and the length that it had when
/// it was decoded; multi-byte text is decoded when its units are asked for.
class DisplayText {
public:
    /// The empty text.
    DisplayText() = default;
    /// Decodes \a buffer (null: the empty text).
    explicit DisplayText(ByteBuffer buffer);

    /// Decodes \a buffer anew. If it is the one that was decoded before, and since then only the
    /// bytes of \a changed were edited, others appended or the last ones cut off, only these are
    /// looked at, and those around them that may belong to their characters; and further ones that
    /// nobody has looked at, where what is known of the rest does not tell enough. Returns all
    /// bytes that read otherwise than before, and perhaps some around them: one byte changes how
    /// all others read, unless there are as many characters as before.
    ByteRange update(const ByteBuffer &buffer, ByteRange changed);

    /// Length in UTF-16 code units.
    qsizetype length() const;
    /// Up to \a count units from \a position on; fewer (or none) past the end. May begin or end
    /// inside a surrogate pair. If the buffer was edited since it was decoded, the units are those
    /// of the bytes as they are now, as far as they can be told.
    QString units(qsizetype position, qsizetype count) const;
    /// Number of bytes of the buffer that were decoded.
    qsizetype byteLength() const;
    /// True if the buffer was decoded as multi-byte UTF-8: length() is less than byteLength() then,
    /// and the last bytes have no cell of their own.
    bool isMultiByte() const;

private:
    QByteArrayView decodedBytes() const;
    void decode();
    void decodeAgain(ByteRange changed);
    void forgetBlocksBehindEnd();
    void checkAgain(ByteRange changed);
    void checkOn();
    void setUnits(size_t block, quint16 units);
    void countUnits();
    ByteRange charactersAround(ByteRange changed) const;

    ByteBuffer buffer_;
    qsizetype byteLength_ = 0;
    qsizetype length_ = 0;
    /// What was found in blocks of bytes: the units that they begin, or that they are no UTF-8. All
    /// blocks if each of them is UTF-8; else there may be more, which were not looked at.
    std::vector<quint16> unitsOfBlock_;
    /// How many of those are no UTF-8.
    qsizetype spoiltBlocks_ = 0;
    /// The units of all others together.
    qsizetype units_ = 0;
    /// Multi-byte text only: the number of units that begin before each block.
    std::vector<qsizetype> unitsBeforeBlock_;
};

/// A translated remark on the bytes behind the end of \a text, which have no cell that shows them;
/// empty if there are none.
QString hiddenBytesRemark(const DisplayText &text);

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "exchange/ImportWords.h"

#include "base/NumberWords.h"
#include "exchange/FileFormats.h"
#include "files/ByteBuffer.h"
#include "formats/ImageFlattening.h"
#include "formats/RecordReader.h"
#include "formats/RecordTroubles.h"
#include "image/AddressWords.h"
#include "image/BlockWords.h"
#include "image/BytesAsText.h"

#include <QCoreApplication>

#include <algorithm>

namespace {

/// The most ranges that get a line each; a window of more would not fit on a small screen.
constexpr int maxRanges = 20;

class ImportWording {
    Q_DECLARE_TR_FUNCTIONS(ImportWords)
};

QString prefixed(const QString &digits) {
    return QStringLiteral("0x") + digits;
}

QString rangeWords(qint64 first, qint64 end) {
    return ImportWording::tr("%1 to %2, %3")
        .arg(prefixed(addressWords(first)), prefixed(addressWords(end - 1)),
             sizeWords(end - first));
}

QString pieceWords(qsizetype pieces, qint64 count) {
    return pieces < 2 ? sizeWords(count)
                      : ImportWording::tr("%1 in %2 ranges").arg(sizeWords(count), grouped(pieces));
}

QStringList rangesWords(const AddressedBytes &bytes) {
    QStringList lines;
    for (const auto &[address, piece] : bytes.pieces()) {
        if (lines.size() == maxRanges) {
            const qsizetype more = qsizetype(bytes.pieces().size()) - maxRanges;
            return lines << ImportWording::tr("Further ranges: %1").arg(grouped(more));
        }
        lines << ImportWording::tr("Range: %1").arg(rangeWords(address, address + piece.size()));
    }
    return lines;
}

QString gapsWords(const AddressedBytes &bytes) {
    const qsizetype gaps = qsizetype(bytes.pieces().size()) - 1;
    if (gaps < 1)
        return ImportWording::tr("Gaps: none");
    const qint64 length = bytes.end() - bytes.first() - bytes.count();
    return ImportWording::tr("Gaps: %1, with %2 to fill").arg(grouped(gaps), sizeWords(length));
}

QStringList troublesWords(const RecordTroubles &troubles) {
    QStringList lines;
    for (const RecordTrouble &trouble : troubles.kept())
        lines << troubleWords(trouble);
    if (const qint64 more = troubles.total() - lines.size(); more > 0)
        lines << ImportWording::tr("Further troubles: %1").arg(grouped(more));
    return lines;
}

/// What in \a header can be read; some programs put numbers and zeros into it.
QString headerWords(const QByteArray &header) {
    QString text = QString::fromLatin1(header);
    std::replace_if(
        text.begin(), text.end(), [](QChar character) { return !character.isPrint(); }, u' ');
    return text.simplified();
}

QString whatIsWrong(TroubleKind kind) {
    switch (kind) {
    case TroubleKind::BadChecksum:
        return ImportWording::tr("the checksum is wrong.");
    case TroubleKind::Overlap:
        return ImportWording::tr("an earlier record has bytes at the same addresses.");
    case TroubleKind::CountDisagrees:
        return ImportWording::tr("the number of records is another than it says.");
    case TroubleKind::MissingEnd:
        return ImportWording::tr("the file ends here without an end record.");
    case TroubleKind::DataBehindEnd:
        return ImportWording::tr("something stands behind the end record.");
    case TroubleKind::NoRecord:
        return ImportWording::tr("this is no record.");
    case TroubleKind::NoHexDigit:
        return ImportWording::tr("a character is no hexadecimal digit.");
    case TroubleKind::OddDigit:
        return ImportWording::tr("the number of digits is odd.");
    case TroubleKind::BadCount:
        return ImportWording::tr("the record is longer or shorter than it should be.");
    case TroubleKind::UnknownType:
        return ImportWording::tr("the format has no such type of record.");
    case TroubleKind::Past4GiB:
        return ImportWording::tr("the record goes past the address 0xFFFFFFFF.");
    case TroubleKind::TooManyPieces:
        return ImportWording::tr("the bytes are in more than %1 ranges; nothing further was read.")
            .arg(grouped(qint64(RecordReader::maxPieces)));
    }
    return {};
}

QString whyNot(NoImage why) {
    switch (why) {
    case NoImage::NoBytes:
        return ImportWording::tr("There are no bytes in it.");
    case NoImage::BeforeBase:
        return ImportWording::tr("Bytes lie before the base offset.");
    case NoImage::TooLarge:
        return ImportWording::tr(
                   "The binary would have more than %1; a higher base offset may help.")
            .arg(boundWords(largestImage));
    }
    return {};
}

} // namespace

QString troubleWords(const RecordTrouble &trouble) {
    return ImportWording::tr("Line %1: %2").arg(grouped(trouble.line), whatIsWrong(trouble.kind));
}

QStringList foundWords(RecordFormat format, const DecodedRecords &decoded) {
    const AddressedBytes &bytes = decoded.bytes;
    QStringList lines = troublesWords(decoded.troubles);
    lines << ImportWording::tr("Format: %1").arg(fileFormatOf(format).name);
    lines << ImportWording::tr("Bytes: %1")
                 .arg(pieceWords(qsizetype(bytes.pieces().size()), bytes.count()));
    if (!decoded.header.isEmpty())
        lines << ImportWording::tr("Header: %1").arg(headerWords(decoded.header));
    lines << rangesWords(bytes);
    if (!bytes.isEmpty())
        lines << gapsWords(bytes);
    lines << (decoded.entry ? ImportWording::tr("Entry point: %1")
                                  .arg(prefixed(addressWords(qint64(*decoded.entry))))
                            : ImportWording::tr("Entry point: none"));
    return lines;
}

QString rawWords(qint64 size) {
    return ImportWording::tr("Raw: %1, taken as they are.").arg(sizeWords(size));
}

QString imageWords(const DecodedRecords &decoded, qint64 base, quint8 fill) {
    const auto flattened = canBeFlattened(decoded.bytes, base);
    if (const NoImage *why = flattened.failure())
        return whyNot(*why);
    const qint64 length = decoded.bytes.end() - base;
    const qint64 filled = length - decoded.bytes.count();
    if (filled == 0)
        return ImportWording::tr("The binary will have %1.").arg(sizeWords(length));
    return ImportWording::tr("The binary will have %1; %2 of them filled with %3.")
        .arg(sizeWords(length), grouped(filled), prefixed(byteDigits(fill)));
}
